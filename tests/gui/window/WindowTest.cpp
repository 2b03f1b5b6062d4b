// cadhost in its window, driven by scripts through the toolkit's events on a virtual display: the same user
// story gives the same transcript and drawing as headless, picks snap, and the screenshots show the drawing
// where its geometry lies and the dialog's texts where the dialog puts them.
#include "WindowRun.h"

#include <gmock/gmock.h>

#include <cmath>
#include <fstream>

namespace windowtest {
namespace {

constexpr std::uint32_t kViewBackground = 0x212830;

// Where the drawing view's background lies in a screenshot.
Rect viewIn(const Picture& shot) { return boundsOf(shot, kViewBackground, {0, 0, shot.width - 1, shot.height - 1}); }

// A dialog over the view: its face has the colour of the main window's own face, as the status bar at the
// window's foot shows it.
Rect dialogIn(const Picture& shot, const Rect& view) {
  return boundsOf(shot, commonestColour(shot, {0, shot.height - 12, 300, shot.height - 4}), view);
}

std::string insertAfter(std::string script, const std::string& line, const std::string& added) {
  const std::size_t at = script.find(line + "\n");
  EXPECT_NE(at, std::string::npos) << line;
  if (at != std::string::npos) script.insert(at + line.size() + 1, added + "\n");
  return script;
}

TEST_F(WindowTest, TheDemoTransformationGivesTheHeadlessTranscriptAndDrawingAndShowsItsDialog) {
  const std::string demo = slurp(fs::path(VIRA_SOURCE_DIR) / "examples" / "two-pairs.txt");
  const HostRun headless = cadhost(sitePlan(), demo, "--headless", dir_ / "headless.dxf", false);
  ASSERT_EQ(headless.status, 0) << headless.err;

  std::string script = insertAfter(demo, "_ViraCoordDef", "@screenshot " + (dir_ / "empty.png").string());
  script = insertAfter(script, "@dialog 4000 dump", "@screenshot " + (dir_ / "filled.png").string());
  const HostRun window = cadhost(sitePlan(), script, "--window", dir_ / "window.dxf");
  ASSERT_EQ(window.status, 0) << window.err;
  EXPECT_EQ(window.out, headless.out);
  EXPECT_EQ(slurp(dir_ / "window.dxf"), slurp(dir_ / "headless.dxf"));

  keep(dir_ / "filled.png", "transformation-dialog.png");
  const Picture empty = picture(dir_ / "empty.png"), filled = picture(dir_ / "filled.png");
  ASSERT_GT(filled.width, 0);
  ASSERT_EQ(empty.width, filled.width);
  // The drawing view: its background spans the window's upper part; the dialog sits over its middle.
  const Rect view = viewIn(filled);
  ASSERT_FALSE(view.empty());
  const int cx = (view.left + view.right) / 2;
  const Rect dialog = dialogIn(filled, view);
  ASSERT_FALSE(dialog.empty());
  ASSERT_LT(dialog.left, cx);
  ASSERT_GT(dialog.right, cx);
  // The template is 300 x 182 dialog units; the preview text stands at (7,122)-(293,154), the column heads
  // at (20,31)-(293,39). Before a point is picked the preview is one line saying so; with two pairs it has four.
  const double ux = (dialog.right - dialog.left + 1) / 300.0, uy = (dialog.bottom - dialog.top + 1) / 182.0;
  auto area = [&](int l, int t, int r, int b) {
    return Rect{dialog.left + static_cast<int>(l * ux), dialog.top + static_cast<int>(t * uy),
                dialog.left + static_cast<int>(r * ux), dialog.top + static_cast<int>(b * uy)};
  };
  const Rect firstLine = area(7, 122, 293, 129), moreLines = area(7, 131, 293, 154), heads = area(20, 31, 293, 39);
  EXPECT_GT(darkPixels(empty, firstLine), 100);
  EXPECT_EQ(darkPixels(empty, moreLines), 0);
  EXPECT_GT(darkPixels(filled, moreLines), 300) << "the preview's shift, turn and scale";
  EXPECT_GT(darkPixels(empty, heads), 100);
  EXPECT_GT(darkPixels(filled, heads), 100);
}

TEST_F(WindowTest, APickSnapsToTheNearestPointAndF3SwitchesSnapOff) {
  const HostRun run = cadhost(sitePlan(),
                          "_ViraCoordDef\n"
                          // Five and four centimetres beside the control point P1.
                          "@pick 2561210.05,5634010.04\n"
                          "@key F3\n"
                          "@pick 2561290.05,5634012.04\n"
                          "@esc\n",
                          "--window", {});
  ASSERT_EQ(run.status, 0) << run.err;
  const std::size_t first = run.out.find("Zeichnungspunkt [Abbrechen]: 2561210,5634010,251.2\n");
  ASSERT_NE(first, std::string::npos) << run.out;
  // Without snap the pick is where the pixel lies: near P2, on the drawing's elevation, not P2 itself.
  const std::size_t second = run.out.find("Zeichnungspunkt [Abbrechen]: 25612", first + 1);
  ASSERT_NE(second, std::string::npos) << run.out;
  const std::string picked = run.out.substr(second + 29, run.out.find('\n', second) - second - 29);
  EXPECT_EQ(picked.find("2561290,5634012,252.85"), std::string::npos) << picked;
  double x = 0, y = 0;
  ASSERT_EQ(std::sscanf(picked.c_str(), "%lf,%lf", &x, &y), 2) << picked;
  EXPECT_NEAR(x, 2561290.05, 0.5);
  EXPECT_NEAR(y, 5634012.04, 0.5);
}

TEST_F(WindowTest, APointCaptureByClicksFillsTheListAsHeadlessAndShowsItsRows) {
  // Clicks on the three control points of the site plan; snapping gives each its full 3D coordinate, the same
  // text a headless script types for them.
  const std::string picks = "@pick 2561210,5634010,251.2\n@pick 2561290,5634012,252.85\n@pick 2561288,5634070,254.1\n";
  const std::string finish = "@dialog 4001 dump\n@answer file " + (dir_ / "punkte.csv").string() +
                             "\n@dialog 4001 click 4002\n@dialog 4001 click 1\n";
  const HostRun headless = cadhost(sitePlan(), "_ViraPtPick\n" + picks + finish, "--headless", {}, false);
  ASSERT_EQ(headless.status, 0) << headless.err;
  const std::string csv = slurp(dir_ / "punkte.csv");
  fs::remove(dir_ / "punkte.csv");
  const HostRun window = cadhost(sitePlan(),
                                 "_ViraPtPick\n@screenshot " + (dir_ / "none.png").string() + "\n" + picks +
                                     "@screenshot " + (dir_ / "three.png").string() + "\n" + finish,
                                 "--window", {});
  ASSERT_EQ(window.status, 0) << window.err;
  EXPECT_EQ(window.out, headless.out);
  EXPECT_THAT(window.out, ::testing::HasSubstr("row 2 \"3\" \"2561288.0000000\" \"5634070.0000000\" \"254.1000000\""));
  EXPECT_EQ(slurp(dir_ / "punkte.csv"), csv);

  // The list (template 232 x 206 dialog units, the list at (7,7)-(225,158)) shows three rows under its header.
  keep(dir_ / "three.png", "capture-dialog.png");
  const Picture none = picture(dir_ / "none.png"), three = picture(dir_ / "three.png");
  ASSERT_GT(three.width, 0);
  const Rect dialog = dialogIn(three, viewIn(three));
  ASSERT_FALSE(dialog.empty());
  const double ux = (dialog.right - dialog.left + 1) / 232.0, uy = (dialog.bottom - dialog.top + 1) / 206.0;
  const Rect rows{dialog.left + static_cast<int>(8 * ux), dialog.top + static_cast<int>(22 * uy),
                  dialog.left + static_cast<int>(224 * ux), dialog.top + static_cast<int>(60 * uy)};
  EXPECT_EQ(darkPixels(none, rows), 0) << "no rows before the first click";
  EXPECT_GT(darkPixels(three, rows), 300) << "three rows of names and coordinates";
}

TEST_F(WindowTest, TheModulesToolbarButtonsStartItsCommandsAsHeadless) {
  const std::string script = "_ViraCoordDef\n10,20\n@toolbar 40002\n@toolbar 40001\n@dialog 4000 dump\n@esc\n";
  const HostRun headless = cadhost(sitePlan(), script, "--headless", {}, false);
  const HostRun window = cadhost(sitePlan(), script + "@screenshot " + (dir_ / "bar.png").string() + "\n",
                                 "--window", {});
  ASSERT_EQ(window.status, 0) << window.err;
  EXPECT_EQ(window.out, headless.out);
  // The bar sits between the menu and the drawing view, its two buttons drawn.
  const Picture shot = picture(dir_ / "bar.png");
  ASSERT_GT(shot.width, 0);
  const Rect view = viewIn(shot);
  EXPECT_GT(darkPixels(shot, {0, view.top - 50, 400, view.top - 2}), 200);
}

TEST_F(WindowTest, TheViewDrawsTheGeometryWhereItLies) {
  // A red line and a green square at survey coordinates; nothing else, so the extents are known.
  const fs::path drawing = dir_ / "lines.dxf";
  std::ofstream(drawing) << "0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLAYER\n"
                            "0\nLAYER\n2\n0\n70\n0\n62\n7\n0\nLAYER\n2\nRot\n70\n0\n62\n1\n"
                            "0\nLAYER\n2\nGruen\n70\n0\n62\n3\n0\nENDTAB\n0\nENDSEC\n"
                            "0\nSECTION\n2\nENTITIES\n"
                            "0\nLINE\n8\nRot\n10\n2561000.0\n20\n5634000.0\n11\n2561100.0\n21\n5634050.0\n"
                            "0\nLWPOLYLINE\n8\nGruen\n90\n4\n70\n1\n10\n2561020.0\n20\n5634030.0\n"
                            "10\n2561040.0\n20\n5634030.0\n10\n2561040.0\n20\n5634045.0\n10\n2561020.0\n20\n5634045.0\n"
                            "0\nENDSEC\n0\nEOF\n";
  const HostRun run = cadhost(drawing, "@screenshot " + (dir_ / "view.png").string() + "\n", "--window", {});
  ASSERT_EQ(run.status, 0) << run.err;
  const Picture shot = picture(dir_ / "view.png");
  ASSERT_GT(shot.width, 0);
  const Rect view = viewIn(shot);
  ASSERT_FALSE(view.empty());
  // Zoomed to the extents (100 x 50 units) with a margin, centred.
  const double w = view.right - view.left + 1, h = view.bottom - view.top + 1;
  const double scale = std::min(w * 0.95 / 100.0, h * 0.95 / 50.0);
  auto screen = [&](double x, double y) {
    return std::pair<int, int>{static_cast<int>(std::lround(view.left + (x - 2561050.0) * scale + w / 2)),
                               static_cast<int>(std::lround(view.top + h / 2 - (y - 5634025.0) * scale))};
  };
  for (double t : {0.1, 0.5, 0.9}) {
    const auto [x, y] = screen(2561000.0 + 100 * t, 5634000.0 + 50 * t);
    EXPECT_TRUE(colourNear(shot, x, y, 0xFF0000)) << "line at " << t;
  }
  for (auto [px, py] : {std::pair{2561030.0, 5634030.0}, {2561040.0, 5634037.5}, {2561030.0, 5634045.0}}) {
    const auto [x, y] = screen(px, py);
    EXPECT_TRUE(colourNear(shot, x, y, 0x00FF00)) << "square at " << px << " " << py;
  }
  for (auto [px, py] : {std::pair{2561030.0, 5634037.5}, {2561080.0, 5634010.0}}) {
    const auto [x, y] = screen(px, py);
    EXPECT_FALSE(colourNear(shot, x, y, 0xFF0000, 3) || colourNear(shot, x, y, 0x00FF00, 3)) << px << " " << py;
  }
}

TEST_F(WindowTest, WithoutADisplayTheHostSaysItNeedsOneOrHeadless) {
  const HostRun bare = runShell("env -u DISPLAY -u WAYLAND_DISPLAY " + std::string(CADHOST_PATH) + " '" +
                                    sitePlan().string() + "' </dev/null",
                                dir_);
  EXPECT_EQ(bare.status, 1);
  EXPECT_NE(bare.err.find("needs a display"), std::string::npos) << bare.err;
  EXPECT_NE(bare.err.find("--headless"), std::string::npos) << bare.err;
  // A script line that only the window understands says so when run headless.
  const HostRun headless = cadhost(sitePlan(), "@screenshot " + (dir_ / "x.png").string() + "\n", "--headless", {}, false);
  EXPECT_EQ(headless.status, 1);
  EXPECT_NE(headless.err.find("needs the window (--window)"), std::string::npos) << headless.err;
}

}  // namespace
}  // namespace windowtest
