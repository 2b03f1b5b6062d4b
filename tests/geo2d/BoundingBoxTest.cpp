#include "geometry/KoBoundingBox2d.h"
#include "geometry/KoBoundingBox3d.h"
#include "geometry/KoGeometrySelfTest.h"
#include "geometry/KoRectangle.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;
KoTextSink Into(Lines& lines)
{
    return [&lines](const std::string& line) { lines.push_back(line); };
}

TEST(BoundingBox, CornersUnionWithEmptyAndEnclosure)
{
    const KoBoundingBox3d merged = KoBoundingBox3d() + KoBoundingBox3d(5, 1, 0, 2, 4, 3);
    EXPECT_TRUE(merged.IsValid());
    EXPECT_EQ(merged.minX + merged.minY + merged.minZ, 3.0);  // (2, 1, 0)
    EXPECT_EQ(merged.maxX + merged.maxY + merged.maxZ, 12.0);  // (5, 4, 3)

    // False only for strict enclosure on every axis; equal bounds do not enclose.
    const KoBoundingBox3d outer(0, 0, 0, 10, 10, 10);
    EXPECT_FALSE(outer.DoesNotStrictlyEnclose(KoBoundingBox3d(1, 1, 1, 9, 9, 9)));
    EXPECT_TRUE(outer.DoesNotStrictlyEnclose(outer));
    EXPECT_TRUE(outer.DoesNotStrictlyEnclose(KoBoundingBox3d(1, 1, 1, 9, 9, 10)));
    EXPECT_FALSE(KoBoundingBox2d(0, 0, 9, 9).Overlaps(KoBoundingBox2d(), true));  // nothing overlaps an empty box
}

TEST(BoundingBox, TextFormAndSelfTestLines)
{
    Lines out;
    KoBoundingBox3d().Print(Into(out), "Box");
    KoBoundingBox3d(0, 0, 0, 1, 2, 3).Print(Into(out));
    KoBoundingBox2d(-1, 0.5, 2, 4).Print(Into(out), "area");
    EXPECT_TRUE(Selftest_Ko3d(Into(out)));
    const Lines expected = {
        "KoBoundingBox3d Box", " invalid", "KoBoundingBox3d ",
        "xyz min: 0.000000 0.000000 0.000000; max: 1.000000 2.000000 3.000000", "x*y*z:  1.000000 2.000000 3.000000",
        "KoBoundingBox2d area", "xy min: -1.000000 0.500000; max: 2.000000 4.000000", "x*y:  3.000000 3.500000",
        std::string(40, '*'), "* Selftest_Ko3d", "2d Overlap test | false, true | 0 1",
        "3D Overlap Test: | true true true true     | 1 1 1 1", "Ohne Neighbour",
        "3D Overlap Test: | false false false false | 0 0 0 0"};
    EXPECT_EQ(out, expected);

    Lines huge;  // extreme but valid coordinates are printed in full, not cut off
    KoBoundingBox2d(-1e300, -1e300, 1e300, 1e300).Print(Into(huge));
    EXPECT_GT(huge.at(1).size(), 1200u);
}

TEST(Rectangle, CountsTheBoundaryAsInsideWhateverTheCornerOrder)
{
    const KoRectangle r(5, 1, 2, 4);
    EXPECT_TRUE(r.Contains(2, 4));    // a corner
    EXPECT_TRUE(r.Contains(5, 2.5));  // an edge
    EXPECT_FALSE(r.Contains(5.000001, 2.5));

    KoRectangle set(0, 0, 0, 0);  // corners set directly, the larger first
    set.corner1.x = set.corner1.y = 10;
    set.corner2.x = set.corner2.y = -10;
    EXPECT_TRUE(set.Contains(KoPoint(1, -10, 3, 99, 0)));
}

}  // namespace
