// A surveyor's drawing is never left half-moved: a command whose result cannot be written is taken back
// whole and the run fails without saving; entities that stayed behind are named; U gives the drawing back.
#include "CadhostRun.h"

#include <fstream>

namespace e2e {
namespace {

using ::testing::HasSubstr;

// Two pairs that grow the drawing tenfold about the origin.
const std::string kTenfold =
    "_ViraCoordDef\n"
    "0,0,0\n"
    "@dialog 4000 set 4006 0 0 0\n"
    "1,0,0\n"
    "@dialog 4000 set 4008 10 0 0\n"
    "@dialog 4000 check 4015 1\n"
    "@dialog 4000 click 1\n";

// An R12 drawing with a line, a circle and one more line given by `extraLine` (DXF tags after "0 LINE").
std::string drawingWith(const std::string& extraLine) {
  return "  0\nSECTION\n  2\nENTITIES\n"
         "  0\nLINE\n  8\n0\n 10\n1.0\n 20\n2.0\n 30\n0.0\n 11\n3.0\n 21\n4.0\n 31\n0.0\n"
         "  0\nCIRCLE\n  8\n0\n 10\n5.0\n 20\n5.0\n 30\n0.0\n 40\n2.5\n"
         "  0\nLINE\n  8\n0\n" + extraLine +
         "  0\nENDSEC\n  0\nEOF\n";
}

TEST_F(CadhostTest, AResultThatIsNotFiniteTakesTheCommandBackAndTheRunFailsWithoutSaving) {
  const fs::path drawing = dir_ / "huge.dxf";
  const std::string original = drawingWith(" 10\n1.7e308\n 20\n0.0\n 30\n0.0\n 11\n1.0\n 21\n1.0\n 31\n0.0\n");
  std::ofstream(drawing, std::ios::binary) << original;
  std::ofstream(saved(), std::ios::binary) << "what was saved before";

  const HostRun run = cadhostOn(drawing, kTenfold + "@save " + (dir_ / "after.dxf").string() + "\n");
  EXPECT_EQ(run.status, 1) << run.err;
  EXPECT_THAT(after(run.out, "3 Zeichenelemente transformiert"),
              HasSubstr("1 entity stayed where it was: 1 LINE (result not finite)\n"
                        "Command _ViraCoordDef failed (a result is not finite): the drawing is restored as it "
                        "was before the command.\n"));
  EXPECT_THAT(run.err, HasSubstr("not saved"));
  EXPECT_EQ(slurp(saved()), "what was saved before");
  // What the script saved after the failure is the drawing as it was.
  EXPECT_EQ(slurp(dir_ / "after.dxf"), original);

  // A line without its y coordinate stays behind and is named; the others move, and the run succeeds.
  std::ofstream(drawing, std::ios::binary) << drawingWith(" 10\n1.0\n 30\n0.0\n 11\n1.0\n 21\n1.0\n 31\n0.0\n");
  const HostRun partial = cadhostOn(drawing, kTenfold);
  EXPECT_EQ(partial.status, 0) << partial.err;
  EXPECT_THAT(partial.out, HasSubstr("1 entity stayed where it was: 1 LINE (numbers missing or unreadable)\n"));
  EXPECT_THAT(slurp(saved()), HasSubstr(" 40\n25.0\n"));
}

TEST_F(CadhostTest, EntitiesThatCannotFollowAMatrixAreNamedByTypeAndReason) {
  // Three pairs without scale: the matrix is no similarity, and shapes that need one stay as they are.
  std::string script = slurp(fs::path(VIRA_SOURCE_DIR) / "examples" / "three-pairs.txt");
  script.erase(script.find("@dialog 4000 check 4015 1\n"), 26);
  const HostRun run = cadhost(script);
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_THAT(after(run.out, "14 Zeichenelemente transformiert"),
              HasSubstr("8 entities stayed where they were: 4 TEXT (cannot scale non-uniformly), 3 CIRCLE "
                        "(cannot scale non-uniformly), 1 ARC (cannot scale non-uniformly)\n"));
}

TEST_F(CadhostTest, UndoGivesTheDrawingBackByteForByte) {
  const std::string twoPairs = slurp(fs::path(VIRA_SOURCE_DIR) / "examples" / "two-pairs.txt");
  const HostRun run = cadhost(twoPairs + "_U\nU\n");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_THAT(run.out, HasSubstr("Command: _U\nUndone: _ViraCoordDef\nCommand: U\nNothing to undo.\n"));
  EXPECT_EQ(slurp(saved()), slurp(sitePlan()));

  // Two transformations, one undone: the drawing is the one after the first.
  const std::string onePair = slurp(fs::path(VIRA_SOURCE_DIR) / "examples" / "one-pair.txt");
  ASSERT_EQ(cadhost(onePair).status, 0);
  const std::string afterFirst = slurp(saved());
  ASSERT_EQ(cadhost(onePair + twoPairs + "U\n").status, 0);
  EXPECT_EQ(slurp(saved()), afterFirst);
}

}  // namespace
}  // namespace e2e
