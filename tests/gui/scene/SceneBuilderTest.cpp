// What the drawing view draws, checked in world coordinates: survey coordinates kept to the last digit, every
// entity kind placed where it belongs, hidden layers left out, colours resolved, and damaged drawings survived.
#include "SceneTestSupport.h"

#include "host/gui/scene/Colours.h"

#include <cmath>

namespace {

using host::gui::SnapKind;
using scenetest::build;
using scenetest::drawing;
using scenetest::layer;
using scenetest::vertex;

TEST(SceneBuilder, SurveyCoordinatesKeepTheirMillimetresAndTenthsOfMillimetres) {
  // Two lines a tenth of a millimetre apart at Gauss-Krueger size.
  auto b = build(drawing(layer("0", 0, 7), "",
                         "0\nLINE\n8\n0\n10\n2561234.567\n20\n5634012.345\n30\n0\n11\n2561234.5671\n21\n5634012.3451\n"
                         "31\n0\n"));
  ASSERT_EQ(b.scene.paths.size(), 1u);
  const auto& s = b.scene;
  // Local coordinates stay small, so that a screen mapping in doubles keeps sub-millimetre steps apart.
  EXPECT_LT(std::abs(s.vertices[0].x), 1000.0);
  EXPECT_LT(std::abs(s.vertices[0].y), 1000.0);
  EXPECT_NEAR(s.vertices[1].x - s.vertices[0].x, 0.0001, 1e-9);
  EXPECT_NEAR(s.vertices[1].y - s.vertices[0].y, 0.0001, 1e-9);
  EXPECT_NEAR(vertex(s, 0, 0).x, 2561234.567, 1e-9);
  EXPECT_NEAR(vertex(s, 0, 0).y, 5634012.345, 1e-9);
  // Both ends and the middle can be snapped to.
  int ends = 0, middles = 0;
  for (const auto& p : s.snaps) (p.kind == SnapKind::Endpoint ? ends : middles) += 1;
  EXPECT_EQ(ends, 2);
  EXPECT_EQ(middles, 1);
}

TEST(SceneBuilder, FrozenAndSwitchedOffLayersAreHiddenAndColoursFollowLayerOrEntity) {
  auto b = build(drawing(layer("0", 0, 7) + layer("Frozen", 1, 3) + layer("Off", 0, -4) + layer("Red", 0, 1), "",
                         "0\nLINE\n8\nFrozen\n10\n0\n20\n0\n11\n1\n21\n1\n"
                         "0\nLINE\n8\nOff\n10\n0\n20\n0\n11\n1\n21\n1\n"
                         "0\nLINE\n8\nRed\n10\n0\n20\n0\n11\n1\n21\n1\n"
                         "0\nLINE\n8\nred\n62\n5\n10\n0\n20\n0\n11\n1\n21\n1\n"
                         "0\nLINE\n8\nRed\n420\n1193046\n10\n0\n20\n0\n11\n1\n21\n1\n"));
  ASSERT_EQ(b.scene.paths.size(), 3u);
  EXPECT_EQ(b.scene.paths[0].colour, host::gui::indexColour(1));  // by layer
  EXPECT_EQ(b.scene.paths[1].colour, host::gui::indexColour(5));  // its own index (layer name case ignored)
  EXPECT_EQ(b.scene.paths[2].colour, 0x123456u);                  // its own true colour
}

TEST(SceneBuilder, BlockReferencesPlaceScaleTurnAndColourTheirContents) {
  // Block "B": base point (1,0), a line from the base point along x, by-block colour, on layer 0.
  const std::string block = "0\nBLOCK\n8\n0\n2\nB\n70\n0\n10\n1\n20\n0\n30\n0\n3\nB\n"
                            "0\nLINE\n8\n0\n62\n0\n10\n1\n20\n0\n30\n0\n11\n3\n21\n0\n31\n0\n0\nENDBLK\n8\n0\n";
  auto b = build(drawing(layer("0", 0, 7) + layer("Green", 0, 3) + layer("Hidden", 1, 1), block,
                         // Inserted at (100,200), scaled by 2, turned 90 degrees, colour 6 handed down by block.
                         "0\nINSERT\n8\nGreen\n62\n6\n2\nB\n10\n100\n20\n200\n30\n0\n41\n2\n42\n2\n43\n2\n50\n90\n"
                         // The same block on a frozen layer: its contents inherit the hidden layer.
                         "0\nINSERT\n8\nHidden\n2\nB\n10\n0\n20\n0\n30\n0\n"
                         // A reference to a block that does not exist draws nothing and does not fail.
                         "0\nINSERT\n8\n0\n2\nMissing\n10\n5\n20\n5\n30\n0\n"));
  ASSERT_EQ(b.scene.paths.size(), 1u);
  EXPECT_EQ(b.scene.paths[0].colour, host::gui::indexColour(6));
  EXPECT_NEAR(vertex(b.scene, 0, 0).x, 100.0, 1e-9);
  EXPECT_NEAR(vertex(b.scene, 0, 0).y, 200.0, 1e-9);
  EXPECT_NEAR(vertex(b.scene, 0, 1).x, 100.0, 1e-9);
  EXPECT_NEAR(vertex(b.scene, 0, 1).y, 204.0, 1e-9);
}

TEST(SceneBuilder, ABlockThatHoldsItselfEndsAtTheNestingLimit) {
  const std::string block = "0\nBLOCK\n8\n0\n2\nLoop\n70\n0\n10\n0\n20\n0\n30\n0\n"
                            "0\nLINE\n8\n0\n10\n0\n20\n0\n11\n1\n21\n0\n"
                            "0\nINSERT\n8\n0\n2\nLoop\n10\n1\n20\n0\n30\n0\n0\nENDBLK\n8\n0\n";
  auto b = build(drawing(layer("0", 0, 7), block, "0\nINSERT\n8\n0\n2\nLoop\n10\n0\n20\n0\n30\n0\n"));
  // One line per level down to the limit, each one further along.
  EXPECT_EQ(b.scene.paths.size(), 16u);
  EXPECT_NEAR(vertex(b.scene, 15, 1).x, 16.0, 1e-9);
}

TEST(SceneBuilder, CurvesRunThroughTheirDefiningPoints) {
  auto b = build(drawing(
      layer("0", 0, 7), "",
      // A closed polyline whose first segment is a half circle to the left (bulge 1) from (0,0) to (10,0).
      "0\nLWPOLYLINE\n8\n0\n90\n3\n70\n1\n10\n0\n20\n0\n42\n1\n10\n10\n20\n0\n10\n10\n20\n-5\n"
      // A quarter arc of radius 2 about (50,50) from 0 to 90 degrees.
      "0\nARC\n8\n0\n10\n50\n20\n50\n30\n0\n40\n2\n50\n0\n51\n90\n"
      // An ellipse, major axis 4 along x, ratio 0.5.
      "0\nELLIPSE\n8\n0\n10\n0\n20\n100\n30\n0\n11\n4\n21\n0\n31\n0\n210\n0\n220\n0\n230\n1\n40\n0.5\n41\n0\n42\n"
      "6.283185307179586\n"
      // A clamped quadratic spline with control points (0,0) (1,2) (2,0): its middle is (1,1).
      "0\nSPLINE\n8\n0\n70\n8\n71\n2\n72\n6\n73\n3\n40\n0\n40\n0\n40\n0\n40\n1\n40\n1\n40\n1\n"
      "10\n0\n20\n0\n30\n0\n10\n1\n20\n2\n30\n0\n10\n2\n20\n0\n30\n0\n"));
  ASSERT_EQ(b.scene.paths.size(), 4u);
  auto passesNear = [&](std::size_t path, double x, double y, double tolerance) {
    const auto& p = b.scene.paths[path];
    for (std::uint32_t i = 0; i < p.count; ++i) {
      const auto v = vertex(b.scene, path, i);
      if (std::hypot(v.x - x, v.y - y) < tolerance) return true;
    }
    return false;
  };
  // A positive bulge turns left of the direction of travel: from (0,0) to (10,0) the arc bulges below.
  EXPECT_TRUE(passesNear(0, 5, -5, 1e-6));
  EXPECT_FALSE(passesNear(0, 5, 5, 1.0));
  EXPECT_TRUE(b.scene.paths[0].closed);
  EXPECT_TRUE(passesNear(1, 52, 50, 1e-9));
  EXPECT_TRUE(passesNear(1, 50, 52, 1e-9));
  EXPECT_TRUE(passesNear(2, 4, 100, 1e-9));
  EXPECT_TRUE(passesNear(2, 0, 102, 1e-9));
  EXPECT_TRUE(passesNear(3, 1, 1, 1e-9));
  bool centre = false;
  for (const auto& s : b.scene.snaps)
    if (s.kind == SnapKind::Centre && std::abs(b.scene.toWorld(s.at).x - 50) < 1e-9) centre = true;
  EXPECT_TRUE(centre);
}

TEST(SceneBuilder, TextsSitOnTheirBaseLineWithFormattingCodesRemoved) {
  auto b = build(drawing(layer("0", 0, 7), "",
                         "0\nTEXT\n8\n0\n10\n5\n20\n6\n30\n0\n40\n2.5\n1\n45%%d Nord\n50\n30\n"
                         "0\nMTEXT\n8\n0\n10\n0\n20\n0\n30\n0\n40\n1\n71\n7\n1\n{\\fArial|b1;Zeile}\\PZwei\n"));
  ASSERT_EQ(b.scene.labels.size(), 3u);
  EXPECT_EQ(b.scene.labels[0].text, L"45\u00B0 Nord");
  EXPECT_NEAR(b.scene.toWorld(b.scene.labels[0].at).x, 5.0, 1e-9);
  EXPECT_NEAR(b.scene.labels[0].rotation, 30.0 * M_PI / 180.0, 1e-12);
  EXPECT_EQ(b.scene.labels[1].text, L"Zeile");
  EXPECT_EQ(b.scene.labels[2].text, L"Zwei");
  // Attached bottom left: the last line stands on the insertion point, the first above it.
  EXPECT_NEAR(b.scene.toWorld(b.scene.labels[2].at).y, 0.0, 1e-9);
  EXPECT_GT(b.scene.labels[1].at.y, b.scene.labels[2].at.y);
}

TEST(SceneBuilder, FilledAreasFramesAndHatchBoundaries) {
  auto b = build(drawing(
      layer("0", 0, 7), "",
      "0\nSOLID\n8\n0\n10\n0\n20\n0\n30\n0\n11\n1\n21\n0\n31\n0\n12\n0\n22\n1\n32\n0\n13\n1\n23\n1\n33\n0\n"
      "0\nIMAGE\n8\n0\n10\n10\n20\n10\n30\n0\n11\n0.5\n21\n0\n31\n0\n12\n0\n22\n0.5\n32\n0\n13\n4\n23\n2\n"
      "0\nHATCH\n8\n0\n10\n0\n20\n0\n30\n0\n2\nSOLID\n70\n1\n91\n1\n92\n1\n93\n2\n"
      "72\n1\n10\n20\n20\n0\n11\n22\n21\n0\n72\n2\n10\n21\n20\n0\n40\n1\n50\n0\n51\n180\n73\n1\n97\n0\n75\n0\n"));
  ASSERT_EQ(b.scene.paths.size(), 3u);
  // A solid's corners come in zig-zag order; drawn round they make a square.
  EXPECT_TRUE(b.scene.paths[0].filled);
  EXPECT_NEAR(vertex(b.scene, 0, 2).x, 1.0, 1e-12);
  EXPECT_NEAR(vertex(b.scene, 0, 2).y, 1.0, 1e-12);
  // An image shows as its frame: 4 by 2 pixels of half a unit.
  EXPECT_NEAR(vertex(b.scene, 1, 2).x, 12.0, 1e-12);
  EXPECT_NEAR(vertex(b.scene, 1, 2).y, 11.0, 1e-12);
  EXPECT_TRUE(b.scene.paths[2].filled);
  EXPECT_NEAR(b.scene.paths[2].box.maxY, 1.0, 1e-9);
}

TEST(SceneBuilder, DamagedEntitiesDrawWhatTheyCanAndNeverFail) {
  auto b = build(drawing(
      layer("0", 0, 7), "",
      // Values missing, absurd counts and a degree without knots: nothing of it may crash or hang.
      "0\nLWPOLYLINE\n8\n0\n90\n99999999\n20\n5\n42\n1e300\n"
      "0\nSPLINE\n8\n0\n71\n99\n10\n0\n20\n0\n10\n1\n20\n1\n"
      "0\nHATCH\n8\n0\n91\n2147483647\n92\n0\n93\n2147483647\n72\n9\n"
      "0\nCIRCLE\n8\n0\n10\n0\n20\n0\n40\n-3\n"
      "0\nLINE\n8\n0\n10\n1e200\n20\n0\n11\n0\n21\n0\n"
      "0\nPOINT\n8\n0\n10\n7\n20\n8\n"));
  // The point survives beside the damage, and no far-away coordinate pushes the extents out.
  ASSERT_EQ(b.scene.nodes.size(), 1u);
  EXPECT_LT(b.scene.extents.maxX - b.scene.extents.minX, 1e6);
}

}  // namespace
