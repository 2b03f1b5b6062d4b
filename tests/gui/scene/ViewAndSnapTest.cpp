// The view mapping, the snap index against a plain search, and the rasteriser at the edges of the view.
#include "host/gui/scene/Raster.h"
#include "host/gui/scene/SnapIndex.h"
#include "host/gui/scene/ViewTransform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

using host::gui::Box;
using host::gui::Raster;
using host::gui::SnapIndex;
using host::gui::SnapKind;
using host::gui::SnapPoint;
using host::gui::Vec2;
using host::gui::ViewTransform;

TEST(ViewTransform, ZoomKeepsThePointUnderTheCursorAndExtentsFitTheView) {
  ViewTransform v;
  v.setSize(800, 600);
  Box box;
  box.add(Vec2{-100, -50});
  box.add(Vec2{300, 250});
  v.zoomTo(box);
  const Box shown = v.visible();
  EXPECT_LE(shown.minX, -100);
  EXPECT_GE(shown.maxX, 300);
  EXPECT_LE(shown.minY, -50);
  EXPECT_GE(shown.maxY, 250);
  // Screen y grows downwards, drawing y upwards.
  EXPECT_LT(v.toScreen({0, 100}).y, v.toScreen({0, 0}).y);

  const Vec2 anchor{123, 456};
  const Vec2 before = v.toLocal(anchor);
  for (double factor : {1.25, 1.25, 0.8, 1000.0, 1e-6}) {
    v.zoomAbout(anchor, factor);
    const Vec2 after = v.toLocal(anchor);
    EXPECT_NEAR(after.x, before.x, 1e-9 * (1 + std::abs(before.x)));
    EXPECT_NEAR(after.y, before.y, 1e-9 * (1 + std::abs(before.y)));
  }
  // Screen and drawing coordinates map back and forth.
  const Vec2 p{17.25, -3.5};
  const Vec2 back = v.toLocal(v.toScreen(p));
  EXPECT_NEAR(back.x, p.x, 1e-9);
  EXPECT_NEAR(back.y, p.y, 1e-9);
  // A single point or an empty drawing still gives a usable view.
  Box point;
  point.add(Vec2{5, 5});
  v.zoomTo(point);
  EXPECT_TRUE(std::isfinite(v.scale()) && v.scale() > 0);
  v.zoomTo(Box{});
  EXPECT_TRUE(std::isfinite(v.scale()) && v.scale() > 0);
}

TEST(SnapIndex, FindsWhatAPlainSearchFindsWithinTheRadius) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> coordinate(0, 5000);
  std::vector<SnapPoint> points;
  for (int i = 0; i < 20000; ++i)
    points.push_back({{coordinate(random), coordinate(random)}, 0.0, static_cast<SnapKind>(i % 5)});
  // A cluster of points at one spot, as survey points stacked on top of each other.
  for (int i = 0; i < 500; ++i) points.push_back({{2500, 2500}, static_cast<double>(i), SnapKind::Node});
  const SnapIndex index(points);
  for (int q = 0; q < 500; ++q) {
    const Vec2 at{coordinate(random) * 1.1 - 250, coordinate(random) * 1.1 - 250};
    const double radius = q % 2 == 0 ? 5.0 : 60.0;
    double best = radius * radius;
    bool any = false;
    for (const SnapPoint& p : points) {
      const double d = (p.at.x - at.x) * (p.at.x - at.x) + (p.at.y - at.y) * (p.at.y - at.y);
      if (d < best) {
        best = d;
        any = true;
      }
    }
    const auto found = index.nearest(at, radius);
    ASSERT_EQ(found.has_value(), any) << at.x << " " << at.y;
    if (found) {
      const double dx = found->at.x - at.x, dy = found->at.y - at.y;
      EXPECT_DOUBLE_EQ(dx * dx + dy * dy, best);
    }
  }
  EXPECT_TRUE(index.nearest({2500.5, 2500}, 1.0).has_value());
  // Garbage cursors find nothing and do not fail.
  EXPECT_FALSE(index.nearest({1e300, -1e300}, 10).has_value());
  EXPECT_FALSE(index.nearest({NAN, 0}, 10).has_value());
  EXPECT_FALSE(SnapIndex().nearest({0, 0}, 10).has_value());
}

TEST(Raster, LinesAreClippedToTheViewAndAreasFilledInside) {
  Raster r(40, 30, 0x000000);
  // A line from far outside across the view, and one wholly outside.
  r.line({-1e12, 10}, {1e12, 10}, 0xFF0000);
  r.line({-50, -50}, {-10, -60}, 0x00FF00);
  for (int x = 0; x < 40; ++x) EXPECT_EQ(r.at(x, 10), 0xFF0000u) << x;
  EXPECT_EQ(r.at(5, 11), 0u);
  for (host::gui::Rgb p : r.pixels()) EXPECT_NE(p, 0x00FF00u);
  // A square with a square hole: even-odd filling leaves the hole open.
  r.fill({{20, 15}, {36, 15}, {36, 29}, {20, 29}, {20, 15}, {24, 19}, {32, 19}, {32, 25}, {24, 25}, {24, 19}}, 0x0000FF);
  EXPECT_EQ(r.at(21, 16), 0x0000FFu);
  EXPECT_EQ(r.at(28, 22), 0u);
  EXPECT_EQ(r.at(10, 20), 0u);
}

}  // namespace
