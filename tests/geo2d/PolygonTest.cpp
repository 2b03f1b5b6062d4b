#include "geometry/KoPolygon.h"

#include <gtest/gtest.h>

namespace {

// An L-shaped parcel, counter-clockwise: the notch makes it concave.
KoPolygon LShape(double ox = 0.0, double oy = 0.0)
{
    KoPolygon p;
    p.Add(ox + 0, oy + 0);
    p.Add(ox + 4, oy + 0);
    p.Add(ox + 4, oy + 1);
    p.Add(ox + 1, oy + 1);
    p.Add(ox + 1, oy + 3);
    p.Add(ox + 0, oy + 3);
    return p;
}

TEST(Polygon, AreaOrientationPerimeterAndCentroid)
{
    KoPolygon p = LShape();
    EXPECT_DOUBLE_EQ(p.SignedArea(), 6.0);
    EXPECT_DOUBLE_EQ(p.Perimeter(), 14.0);
    double cx = 0;
    double cy = 0;
    ASSERT_TRUE(p.Centroid(cx, cy));
    // Union of [0,4]x[0,1] (area 4, centre 2/0.5) and [0,1]x[1,3] (area 2, centre 0.5/2).
    EXPECT_DOUBLE_EQ(cx, (4 * 2.0 + 2 * 0.5) / 6);
    EXPECT_DOUBLE_EQ(cy, (4 * 0.5 + 2 * 2.0) / 6);

    p.Reverse();
    EXPECT_DOUBLE_EQ(p.SignedArea(), -6.0);
    EXPECT_DOUBLE_EQ(p.Area(), 6.0);
    ASSERT_TRUE(p.Centroid(cx, cy));
    EXPECT_DOUBLE_EQ(cx, 1.5);

    const KoBoundingBox2d box = p.BoundingBox();
    EXPECT_EQ(box.minX, 0.0);
    EXPECT_EQ(box.maxX, 4.0);
    EXPECT_EQ(box.maxY, 3.0);
}

TEST(Polygon, AreaKeepsItsDigitsAtSurveyCoordinates)
{
    // Gauss-Krueger coordinates: a naive shoelace sum of products of 10^6..10^7 values loses the
    // centimetres of a 6 square metre parcel.
    const KoPolygon p = LShape(4'512'345.678, 5'432'109.876);
    EXPECT_NEAR(p.Area(), 6.0, 1e-6);
    double cx = 0;
    double cy = 0;
    ASSERT_TRUE(p.Centroid(cx, cy));
    EXPECT_NEAR(cx - 4'512'345.678, 1.5, 1e-6);
    EXPECT_NEAR(cy - 5'432'109.876, 1.0, 1e-6);
}

TEST(Polygon, DegeneratePolygonsHaveNoAreaAndNoCentroid)
{
    KoPolygon p;
    EXPECT_EQ(p.Area(), 0.0);
    EXPECT_EQ(p.Perimeter(), 0.0);
    EXPECT_FALSE(p.Contains(0, 0));
    EXPECT_FALSE(p.BoundingBox().IsValid());
    p.Add(0, 0);
    p.Add(1, 1);
    p.Add(2, 2);  // collinear
    EXPECT_EQ(p.Area(), 0.0);
    double cx = -7;
    double cy = -7;
    EXPECT_FALSE(p.Centroid(cx, cy));
    EXPECT_EQ(cx, -7.0);
    EXPECT_TRUE(p.Contains(1.5, 1.5));  // on the outline
    EXPECT_THROW(p[3], std::out_of_range);
}

TEST(Polygon, ContainmentCountsBoundaryAndHandlesConcaveCornersAndVertexRays)
{
    const KoPolygon p = LShape();
    EXPECT_TRUE(p.Contains(0.5, 2.5));
    EXPECT_TRUE(p.Contains(3.5, 0.5));
    EXPECT_FALSE(p.Contains(2, 2));    // in the notch
    EXPECT_TRUE(p.Contains(4, 0.5));   // on an edge
    EXPECT_TRUE(p.Contains(1, 1));     // on the reflex vertex
    EXPECT_TRUE(p.Contains(2.5, 1));   // on the notch's lower edge
    EXPECT_FALSE(p.Contains(5, 1));    // ray along the edge y = 1 from outside
    EXPECT_FALSE(p.Contains(-1, 1));   // ray through the vertex (1, 1) and along an edge
    EXPECT_TRUE(p.Contains(0.5, 1));   // ray passing the reflex vertex from inside
    EXPECT_FALSE(p.Contains(-0.5, 3)); // ray through the top left vertex

    KoPolygon diamond({{0, -1}, {1, 0}, {0, 1}, {-1, 0}});
    EXPECT_TRUE(diamond.Contains(0, 0));
    EXPECT_FALSE(diamond.Contains(-2, 0));  // ray through two vertices
    EXPECT_FALSE(diamond.Contains(0.6, 0.6));
}

}  // namespace
