#include "geometry/KoPolygon.h"

#include <gtest/gtest.h>

namespace {

// An L-shaped parcel, counter-clockwise; the notch makes it concave.
KoPolygon LShape(double ox = 0.0, double oy = 0.0)
{
    return KoPolygon({{ox, oy}, {ox + 4, oy}, {ox + 4, oy + 1}, {ox + 1, oy + 1}, {ox + 1, oy + 3}, {ox, oy + 3}});
}

TEST(Polygon, AreaAndCentroidKeepTheirDigitsAtSurveyCoordinates)
{
    KoPolygon p = LShape();
    EXPECT_DOUBLE_EQ(p.SignedArea(), 6.0);
    EXPECT_DOUBLE_EQ(p.Perimeter(), 14.0);
    p.Reverse();
    EXPECT_DOUBLE_EQ(p.SignedArea(), -6.0);

    // Gauss-Krueger coordinates: a plain shoelace sum of products of 10^6 values loses the parcel's area.
    const KoPolygon far = LShape(4'512'345.678, 5'432'109.876);
    EXPECT_NEAR(far.Area(), 6.0, 1e-6);
    double cx = 0;
    double cy = 0;
    ASSERT_TRUE(far.Centroid(cx, cy));
    EXPECT_NEAR(cx - 4'512'345.678, 1.5, 1e-6);
    EXPECT_NEAR(cy - 5'432'109.876, 1.0, 1e-6);

    const KoPolygon line({{0, 0}, {1, 1}, {2, 2}});
    EXPECT_FALSE(line.Centroid(cx, cy));
    EXPECT_TRUE(line.Contains(1.5, 1.5));
    EXPECT_FALSE(KoPolygon().Contains(0, 0));
}

TEST(Polygon, ContainmentCountsTheOutlineAndRaysThroughVertices)
{
    const KoPolygon p = LShape();
    EXPECT_TRUE(p.Contains(0.5, 2.5));
    EXPECT_FALSE(p.Contains(2, 2));   // in the notch
    EXPECT_TRUE(p.Contains(4, 0.5));  // on an edge
    EXPECT_TRUE(p.Contains(1, 1));    // on the reflex vertex
    EXPECT_FALSE(p.Contains(5, 1));   // ray along the edge y = 1
    EXPECT_FALSE(p.Contains(-1, 1));  // ray through the reflex vertex
    EXPECT_TRUE(p.Contains(0.5, 1));
    EXPECT_FALSE(p.Contains(-0.5, 3));

    const KoPolygon diamond({{0, -1}, {1, 0}, {0, 1}, {-1, 0}});
    EXPECT_TRUE(diamond.Contains(0, 0));
    EXPECT_FALSE(diamond.Contains(-2, 0));  // ray through two vertices
}

}  // namespace
