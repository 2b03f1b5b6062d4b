// What the host database does with a drawing: layers, header variables, blocks, model space, appending and
// erasing entities. Every change is saved and read back by the independent reader, which must find the
// drawing sound (audit clean) and see the change.
#include "DxfTestSupport.h"

#include "host/dxf/Document.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

std::vector<std::string> linesStartingWith(const std::string& text, const std::string& prefix) {
  std::vector<std::string> out;
  std::size_t pos = 0;
  while (pos < text.size()) {
    std::size_t end = text.find('\n', pos);
    if (end == std::string::npos) end = text.size();
    const std::string line = text.substr(pos, end - pos);
    if (line.rfind(prefix, 0) == 0) out.push_back(line.substr(prefix.size()));
    pos = end + 1;
  }
  return out;
}

TEST(DxfDocument, ReadsLayersHeaderBlocksAndSpaces) {
  for (const fs::path& file : dxftest::corpus()) {
    SCOPED_TRACE(file.filename().string());
    std::string error;
    auto doc = dxf::Document::load(file, error);
    ASSERT_TRUE(doc) << error;

    // Names are compared ignoring case and come out as UTF-8 whatever the file's encoding.
    auto frozen = doc->findLayer("frozen");
    auto off = doc->findLayer("Off");
    auto locked = doc->findLayer("LOCKED");
    auto umlaut = doc->findLayer("VERMESSUNG_äPFEL");
    ASSERT_TRUE(frozen && off && locked);
    EXPECT_TRUE(frozen->frozen() && !frozen->off() && !frozen->locked());
    EXPECT_TRUE(off->off() && !off->frozen() && !off->locked());
    EXPECT_EQ(off->color(), 4);  // the sign that marks "off" is not part of the colour
    EXPECT_TRUE(locked->locked() && !locked->frozen() && !locked->off());
    EXPECT_FALSE(umlaut) << "only ASCII letters fold";
    ASSERT_TRUE(doc->findLayer("vermessung_Äpfel"));
    EXPECT_EQ(doc->layerName(*doc->findLayer("vermessung_Äpfel")), "Vermessung_Äpfel");
    EXPECT_EQ(doc->headerText("$CLAYER"), "Vermessung_Äpfel");
    EXPECT_TRUE(doc->findLinetype("continuous"));
    EXPECT_FALSE(doc->findLinetype("NO_SUCH"));

    const auto blocks = doc->blocks();
    auto block = [&](std::string_view name) {
      return std::find_if(blocks.begin(), blocks.end(), [&](const dxf::BlockInfo& b) { return b.name == name; });
    };
    ASSERT_NE(block("GRENZSTEIN"), blocks.end());
    EXPECT_FALSE(block("GRENZSTEIN")->isLayout);
    const auto layouts = std::count_if(blocks.begin(), blocks.end(), [](const dxf::BlockInfo& b) { return b.isLayout; });
    EXPECT_GE(layouts, 2);

    // Model space as the independent reader sees it, in the same order; paper space apart.
    std::string described;
    ASSERT_EQ(dxftest::checkDrawing({"describe", file.string()}, described), 0) << described;
    const auto expected = linesStartingWith(described, "entity ");
    const auto model = doc->modelSpace();
    ASSERT_EQ(model.size(), expected.size());
    for (std::size_t i = 0; i < model.size(); ++i) {
      EXPECT_THAT(expected[i], ::testing::StartsWith(std::string(model[i]->type.view()) + "|" + std::string(dxf::Document::handleOf(*model[i]))));
      EXPECT_THAT(expected[i], HasSubstr("|" + doc->layerOf(*model[i]) + "|"));
    }
    EXPECT_EQ(doc->paperSpace().size(), 1u);
    // Text outside the code page was written as \U+ escapes before R2007 and as UTF-8 after.
    const auto text = std::find_if(model.begin(), model.end(), [](dxf::Entity* e) { return e->type == "TEXT"; });
    ASSERT_NE(text, model.end());
    EXPECT_EQ(doc->decode((*text)->value(1)), "Grenzstein Nr. 7 Straße ½° Ω Ж");
    const auto polyline = std::find_if(model.begin(), model.end(), [](dxf::Entity* e) { return e->type == "POLYLINE"; });
    ASSERT_NE(polyline, model.end());
    EXPECT_EQ((*polyline)->children.back().type, "SEQEND");
  }
}

TEST(DxfDocument, ChangesAreSavedSoundlyForTheIndependentReader) {
  const fs::path out = dxftest::scratchDir("api");
  for (const fs::path& file : dxftest::corpus()) {
    SCOPED_TRACE(file.filename().string());
    std::string error;
    auto doc = dxf::Document::load(file, error);
    ASSERT_TRUE(doc) << error;
    doc->findLayer("FROZEN")->setFrozen(false);
    doc->findLayer("OFF")->setOff(false);
    doc->findLayer("LOCKED")->setLocked(false);
    auto zero = doc->findLayer("0");
    zero->setOff(true);
    zero->setColor(2);  // stays off
    zero->setLocked(true);
    auto added = doc->addLayer("TRELLANOVA_KoVira", 6, "CONTINUOUS", error);
    ASSERT_TRUE(added) << error;
    EXPECT_FALSE(doc->addLayer("trellanova_kovira", 1, "", error));
    EXPECT_THAT(error, HasSubstr("exists"));
    EXPECT_FALSE(doc->addLayer("Messpunkte", 1, "NO_SUCH_LINETYPE", error));
    EXPECT_FALSE(doc->addLayer("a<b", 1, "", error));
    EXPECT_FALSE(doc->findLayer("Messpunkte")) << "a refused layer leaves no record behind";
    ASSERT_TRUE(doc->addLayer("Höhen ½", 3, "", error)) << error;
    const std::string seed(*doc->rawHeader("$HANDSEED"));
    doc->setHeaderText("$CLAYER", "TRELLANOVA_KoVira");

    // Erase the circle, append a line and a point with survey coordinates.
    auto model = doc->modelSpace();
    const auto circle = std::find_if(model.begin(), model.end(), [](dxf::Entity* e) { return e->type == "CIRCLE"; });
    ASSERT_NE(circle, model.end());
    const std::string erasedHandle(dxf::Document::handleOf(**circle));
    doc->erase(**circle);
    dxf::TagList line;
    line.append(8, "TRELLANOVA_KoVira");
    line.append(100, "AcDbLine");
    for (auto [code, value] : {std::pair{10, 2561300.125}, {20, 5634100.5}, {30, 0.0},
                               {11, 2561310.0}, {21, 5634110.0}, {31, 0.0}})
      line.insertNumber(line.size(), code, value);
    dxf::Entity& appended = doc->appendToModelSpace("LINE", line);
    dxf::TagList point;
    point.append(100, "AcDbPoint");
    point.append(10, "2561234.567");
    point.append(20, "5634012.345");
    point.append(30, "0.0");
    dxf::Entity& appendedPoint = doc->appendToModelSpace("POINT", point);
    EXPECT_EQ(dxf::Document::handleOf(appended), seed);
    EXPECT_NE(dxf::Document::handleOf(appendedPoint), seed);
    EXPECT_EQ(doc->modelSpace().size(), model.size() + 1);
    EXPECT_EQ(doc->modelSpace().back(), &appendedPoint);
    EXPECT_EQ(doc->layerOf(appendedPoint), "0");

    const fs::path saved = out / file.filename();
    ASSERT_TRUE(doc->save(saved, error)) << error;
    std::string report;
    EXPECT_EQ(dxftest::checkDrawing({"audit", saved.string()}, report), 0) << report;
    ASSERT_EQ(dxftest::checkDrawing({"describe", saved.string()}, report), 0) << report;

    EXPECT_THAT(linesStartingWith(report, "layer "),
                ::testing::IsSupersetOf({"FROZEN|0|0|0|3|Continuous", "OFF|0|0|0|4|Continuous",
                                         "LOCKED|0|0|0|5|Continuous", "0|0|1|1|2|Continuous",
                                         "TRELLANOVA_KoVira|0|0|0|6|Continuous", "Höhen ½|0|0|0|3|Continuous"}));
    EXPECT_THAT(report, HasSubstr("clayer TRELLANOVA_KoVira\n"));
    EXPECT_THAT(report, ::testing::Not(HasSubstr("CIRCLE|" + erasedHandle + "|")));
    const auto entities = linesStartingWith(report, "entity ");
    ASSERT_GE(entities.size(), 2u);
    EXPECT_THAT(entities[entities.size() - 2], ::testing::StartsWith("LINE|" + seed + "|TRELLANOVA_KoVira|"));
    EXPECT_THAT(entities.back(), ::testing::StartsWith("POINT|"));

    // The handle seed moved past every handle handed out, and the saved drawing loads again unchanged.
    auto again = dxf::Document::load(saved, error);
    ASSERT_TRUE(again) << error;
    EXPECT_EQ(again->bytes(), dxftest::readFile(saved));
    const std::string next = again->newHandle();
    EXPECT_GT(std::stoull(next, nullptr, 16), std::stoull(std::string(dxf::Document::handleOf(appendedPoint)), nullptr, 16));
  }
}

}  // namespace

namespace {

TEST(DxfDocument, AMinimalDrawingGetsTheSectionsItLacks) {
  // An R12 drawing with nothing but an empty BLOCKS section: adding a layer, appending an entity and setting
  // a header variable add the TABLES (with the linetype CONTINUOUS and the layer 0 that every drawing has),
  // ENTITIES and HEADER sections where a drawing file has them.
  const std::string minimal = "  0\nSECTION\n  2\nBLOCKS\n  0\nENDSEC\n  0\nEOF\n";
  std::string error;
  auto doc = dxf::Document::parse(minimal, "minimal.dxf", error);
  ASSERT_TRUE(doc) << error;
  EXPECT_EQ(doc->version(), dxf::Version::R12);
  EXPECT_FALSE(doc->hasHandles());
  EXPECT_TRUE(doc->modelSpace().empty());
  EXPECT_TRUE(doc->addLayer("A", 1, "", error)) << error;
  EXPECT_FALSE(doc->addLayer("B", 1, "DASHED", error));
  EXPECT_THAT(error, HasSubstr("the linetype \"DASHED\" does not exist"));

  dxf::TagList tags;
  tags.append(100, "AcDbPoint");  // R12 has no subclass markers: dropped
  tags.append(10, "1.5");
  tags.append(20, "2.5");
  tags.append(30, "0.0");
  doc->appendToModelSpace("POINT", tags);
  doc->setHeaderText("$CLAYER", "0");
  EXPECT_EQ(doc->bytes(),
            "  0\nSECTION\n  2\nHEADER\n  9\n$CLAYER\n  8\n0\n  0\nENDSEC\n"
            "  0\nSECTION\n  2\nTABLES\n"
            "  0\nTABLE\n  2\nLTYPE\n 70\n1\n"
            "  0\nLTYPE\n  2\nCONTINUOUS\n 70\n0\n  3\nSolid line\n 72\n65\n 73\n0\n 40\n0.0\n  0\nENDTAB\n"
            "  0\nTABLE\n  2\nLAYER\n 70\n2\n"
            "  0\nLAYER\n  2\n0\n 70\n0\n 62\n7\n  6\nCONTINUOUS\n"
            "  0\nLAYER\n  2\nA\n 70\n0\n 62\n1\n  6\nCONTINUOUS\n  0\nENDTAB\n  0\nENDSEC\n"
            "  0\nSECTION\n  2\nBLOCKS\n  0\nENDSEC\n"
            "  0\nSECTION\n  2\nENTITIES\n  0\nPOINT\n  8\n0\n 10\n1.5\n 20\n2.5\n 30\n0.0\n  0\nENDSEC\n"
            "  0\nEOF\n");
}

}  // namespace

namespace {

TEST(DxfDocument, AHeaderVariableTakesTheKindOfValueItIsGiven) {
  // A damaged header holds $HANDSEED as a point; handing out a handle must not write a handle into a
  // coordinate (which no reader would accept), and must not reuse a handle in use.
  const std::string drawing =
      "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1015\n  9\n$HANDSEED\n 10\n5.0\n 20\n5.0\n 30\n0.0\n"
      "  9\n$CLAYER\n  8\n0\n  0\nENDSEC\n"
      "  0\nSECTION\n  2\nENTITIES\n  0\nPOINT\n  5\n2A\n100\nAcDbEntity\n  8\n0\n100\nAcDbPoint\n"
      " 10\n1.0\n 20\n2.0\n 30\n0.0\n  0\nENDSEC\n  0\nEOF\n";
  std::string error;
  auto doc = dxf::Document::parse(drawing, "damaged.dxf", error);
  ASSERT_TRUE(doc) << error;
  EXPECT_EQ(doc->newHandle(), "2B");
  EXPECT_EQ(doc->rawHeader("$HANDSEED"), "2C");
  const std::string saved = doc->bytes();
  EXPECT_NE(saved.find("  9\n$HANDSEED\n  5\n2C\n  9\n$CLAYER\n"), std::string::npos) << saved;
  ASSERT_TRUE(dxf::Document::parse(saved, "saved.dxf", error)) << error;
}

}  // namespace
