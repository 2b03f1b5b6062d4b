// ViraCoordDef from the surveyor's side: picks and typed targets in, preview and moved drawing out.
#include "CadhostRun.h"

namespace e2e {
namespace {

// The control points P1-P3 of the site plan in the old grid and in UTM.
constexpr std::array<double, 3> kP1{2561210, 5634010, 251.2};
constexpr std::array<double, 3> kP2{2561290, 5634012, 252.85};
constexpr std::array<double, 3> kP1Utm{561010.412, 5632158.733, 251.327};
constexpr std::array<double, 3> kP2Utm{561090.401, 5632159.544, 252.977};


// 14 entities move; the locked, the frozen and the switched-off layer keep 4 in place.
const std::string kAllMapped = "mapped 14 kept 4";

std::string preview(const std::string& transcript) {
  const std::string marker = "4014 static \"";
  const std::size_t at = transcript.rfind(marker);
  if (at == std::string::npos) return {};
  const std::size_t start = at + marker.size();
  return transcript.substr(start, transcript.find("\"\n", start) - start);
}

TEST_F(CadhostTest, TwoControlPointsMoveTurnAndScaleEverythingButHiddenLayers) {
  HostRun run = example("two-pairs.txt");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out,
            "Command: _ViraCoordDef\n"
            "Zeichnungspunkt [Abbrechen]: 2561210,5634010,251.2\n"
            "Zeichnungspunkt [Abbrechen]: 2561290,5634012,252.85\n"
            "dialog 4000 \"Ganze Zeichnung verschieben und drehen\"\n"
            "-1 static \"Picken Sie Punkte in der Zeichnung und  geben Sie die Koordinaten ein wohin diese Punkte "
            "transformiert werden sollen. \"\n"
            "-1 static \"Ist-Kooridnaten Zeichnungspunkt\"\n"
            "-1 static \"Soll- Koordinaten\"\n"
            "4011 checkbox \"\" checked\n"
            "4005 edit \"2561210.0000  5634010.0000  251.2000 \" readonly\n"
            "4006 edit \"561010.412 5632158.733 251.327\"\n"
            "4012 checkbox \"\" checked\n"
            "4007 edit \"2561290.0000  5634012.0000  252.8500 \" readonly\n"
            "4008 edit \"561090.401 5632159.544 252.977\"\n"
            "4013 checkbox \"\"\n"
            "4009 edit \"\" readonly\n"
            "4010 edit \"\"\n"
            "4015 checkbox \"Zeichnung skalieren falls Sollkoordinaten  einen Maßstabsfaktor ergeben.\" checked\n"
            "-1 line \"\"\n"
            "-1 static \"Transformation die durchgeführt werden wird:\"\n"
            "4014 static \"2½D Transformation\\nVerschiebung um -2000199.588 -1851.267 0.127\\n"
            "Drehung in XY um -0.85°\\nSkalierungsfaktor 0.999602\"\n"
            "2 button \"Abbrechen\"\n"
            "1 button \"OK\"\n"
            "\n"
            "Zeichnung transformieren:\n"
            "14 Zeichenelemente transformiert\n"
            "Zeichnungspunkt [Abbrechen]: cancel\n");
  EXPECT_EQ(checkDrawing(planarSimilarity(kP1, kP2, kP1Utm, kP2Utm, true)), kAllMapped);
}

TEST_F(CadhostTest, OneControlPointShiftsEverythingButHiddenLayers) {
  HostRun run = example("one-pair.txt");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(preview(run.out), "Verschiebung um -2000199.588 -1851.267 0.127");
  EXPECT_NE(run.out.find("\n14 Zeichenelemente transformiert\n"), std::string::npos) << run.out;
  EXPECT_EQ(checkDrawing({1, 0, 0, kP1Utm[0] - kP1[0], 0, 1, 0, kP1Utm[1] - kP1[1], 0, 0, 1, kP1Utm[2] - kP1[2], 0, 0,
                          0, 1}),
            kAllMapped);
}

TEST_F(CadhostTest, ThreeControlPointsGiveTheSpatialSolutionWithItsErrors) {
  HostRun run = example("three-pairs.txt", "--trace");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(preview(run.out),
            "3D Transformation\\nZeichnung Skalieren 0.999599\\nMittlere Fehler: x: 0.000 y: 0.000 z: 0.000");
  EXPECT_NE(run.out.find("\n14 Zeichenelemente transformiert\n"), std::string::npos) << run.out;
  EXPECT_NE(run.err.find("CalcTrafo 3"), std::string::npos);
}

TEST_F(CadhostTest, AbbrechenAndEscapeLeaveTheDrawingByteForByte) {
  HostRun run = cadhost("_ViraCoordDef\n2561210,5634010,251.2\n@dialog 4000 set 4006 561010.412 5632158.733 251.327\n"
                    "2561290,5634012,252.85\n@dialog 4000 click 2\n"
                    "_ViraCoordDef\n2561210,5634010,251.2\n@dialog 4000 set 4006 1 2 3\n@esc\n"
                    "# a new dialog starts empty at pair 1\n"
                    "_ViraCoordDef\n@dialog 4000 dump\n@esc\n");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out.find("Zeichnung transformieren"), std::string::npos) << run.out;
  EXPECT_EQ(slurp(saved()), slurp(sitePlan()));
  const std::string lastDialog = after(run.out, "dialog 4000");
  EXPECT_THAT(lastDialog, ::testing::HasSubstr("4011 checkbox \"\"\n4005 edit \"\" readonly\n4006 edit \"\"\n"));
  EXPECT_THAT(lastDialog, ::testing::HasSubstr("Es ist noch keine Transformation definiert\"\n2 button \"Abbrechen\"\n"
                                               "1 button \"OK\" disabled\n"));
}

TEST_F(CadhostTest, AnIdentityIsConfirmedWithoutAWordOrAChange) {
  // One pick without a typed target: the target is the picked point itself.
  HostRun run = cadhost("_ViraCoordDef\n2561210,5634010,251.2\n@dialog 4000 click 1\n", "--trace");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out,
            "Command: _ViraCoordDef\n"
            "Zeichnungspunkt [Abbrechen]: 2561210,5634010,251.2\n"
            "Zeichnungspunkt [Abbrechen]: cancel\n");
  EXPECT_NE(run.err.find("Ident Matrix"), std::string::npos);
  EXPECT_EQ(slurp(saved()), slurp(sitePlan()));
}

TEST_F(CadhostTest, BadTargetsAreReadAsTheNumericConversionReadsThem) {
  // "abc" reads as 0, "12x" as 12, the missing height comes from the picked point.
  HostRun run = cadhost("_ViraCoordDef\n2561210,5634010,251.2\n@dialog 4000 set 4006 abc 12x\n@dialog 4000 dump\n"
                    "@dialog 4000 click 2\n");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(preview(run.out), "Verschiebung um -2561210.000 -5633998.000 0.000");

  // Three control points on one line fix no rotation: OK stays disabled, Abbrechen still works.
  run = cadhost("_ViraCoordDef\n0,0,0\n@dialog 4000 set 4006 10 0 0\n1,0,0\n@dialog 4000 set 4008 11 0 0\n"
                "2,0,0\n@dialog 4000 set 4010 12 0 0\n@dialog 4000 dump\n@dialog 4000 click 2\n");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(preview(run.out), "Berechnung der Transformation nicht möglich");
  EXPECT_NE(run.out.find("1 button \"OK\" disabled\n"), std::string::npos) << run.out;
  EXPECT_EQ(slurp(saved()), slurp(sitePlan()));
}

TEST_F(CadhostTest, CoincidentTargetsTurnAndShiftWithoutScaling) {
  // Both targets on one spot: the factor is 1 / (|A1A2| / 0); unscaled, the matrix still turns and shifts.
  HostRun run = cadhost("_ViraCoordDef\n2561210,5634010,251.2\n@dialog 4000 set 4006 100 200 300\n"
                    "2561290,5634012,252.85\n@dialog 4000 set 4008 100 200 300\n@dialog 4000 dump\n"
                    "@dialog 4000 click 1\n");
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(after(preview(run.out), "Keine"), "Keine Skalierung. (Skalierungsfaktor wäre 0.000000)");
  EXPECT_NE(run.out.find("\n14 Zeichenelemente transformiert\n"), std::string::npos) << run.out;
  EXPECT_EQ(checkDrawing(planarSimilarity(kP1, kP2, {100, 200, 300}, {100, 200, 300}, false)), kAllMapped);
}

}  // namespace
}  // namespace e2e
