#include "geometry/KoBoundingBox2d.h"
#include "geometry/KoBoundingBox3d.h"
#include "geometry/KoGeometrySelfTest.h"
#include "geometry/KoRunningMean.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct Lines {
    std::vector<std::string> lines;
    KoTextSink Sink()
    {
        return [this](const std::string& line) { lines.push_back(line); };
    }
};

TEST(BoundingBox, EmptyBoxIsInvalidAndUnionWithItChangesNothing)
{
    KoBoundingBox3d box(5, 1, 0, 2, 4, 3);
    EXPECT_EQ(box.minX, 2.0);
    EXPECT_EQ(box.minY, 1.0);
    EXPECT_EQ(box.minZ, 0.0);
    EXPECT_EQ(box.maxX, 5.0);
    EXPECT_EQ(box.maxY, 4.0);
    EXPECT_EQ(box.maxZ, 3.0);
    EXPECT_TRUE(box.IsValid());

    KoBoundingBox3d empty;
    EXPECT_FALSE(empty.IsValid());
    const KoBoundingBox3d merged = empty + box;
    EXPECT_EQ(merged.minX, 2.0);
    EXPECT_EQ(merged.maxZ, 3.0);
    EXPECT_TRUE(merged.IsValid());
    empty.Union(box);
    EXPECT_EQ(empty.minY, 1.0);
    EXPECT_EQ(empty.maxY, 4.0);

    box.Reset();
    EXPECT_FALSE(box.IsValid());
    EXPECT_EQ(box.State(), 0);

    // A box grown from a single point is valid but flat on every axis.
    KoBoundingBox2d plane;
    plane.Add(3, -7);
    EXPECT_TRUE(plane.IsValid());
    EXPECT_EQ(plane.Area(), 0.0);
}

TEST(BoundingBox, ExtentsAndVolume)
{
    const KoBoundingBox3d box(0, 0, 0, 2, 5, 3);
    EXPECT_EQ(box.MaxExtent(), 5.0);
    EXPECT_EQ(box.MinExtent(), 2.0);
    EXPECT_EQ(box.Volume(), 30.0);
    const KoBoundingBox2d flat(1, 1, 4, 3);
    EXPECT_EQ(flat.MaxExtent(), 3.0);
    EXPECT_EQ(flat.MinExtent(), 2.0);
    EXPECT_EQ(flat.Area(), 6.0);
}

TEST(BoundingBox, EnclosureTestIsFalseOnlyForStrictEnclosure)
{
    const KoBoundingBox3d outer(0, 0, 0, 10, 10, 10);
    EXPECT_FALSE(outer.DoesNotStrictlyEnclose(KoBoundingBox3d(1, 1, 1, 9, 9, 9)));
    EXPECT_TRUE(outer.DoesNotStrictlyEnclose(outer));                               // equal minima count
    EXPECT_TRUE(outer.DoesNotStrictlyEnclose(KoBoundingBox3d(1, 1, 1, 9, 9, 10)));   // one shared face
    EXPECT_TRUE(KoBoundingBox3d(1, 1, 1, 9, 9, 9).DoesNotStrictlyEnclose(outer));

    const KoBoundingBox2d square(0, 0, 10, 10);
    EXPECT_FALSE(square.DoesNotStrictlyEnclose(KoBoundingBox2d(1, 1, 9, 9)));
    EXPECT_TRUE(square.DoesNotStrictlyEnclose(square));
    EXPECT_TRUE(square.DoesNotStrictlyEnclose(KoBoundingBox2d(0, 1, 9, 9)));
}

TEST(BoundingBox, OverlapDistinguishesTouchingFromSharedVolume)
{
    const KoBoundingBox2d square(0, 0, 1, 1);
    EXPECT_TRUE(square.Overlaps(KoBoundingBox2d(1, 0, 2, 1), true));
    EXPECT_FALSE(square.Overlaps(KoBoundingBox2d(1, 0, 2, 1), false));
    EXPECT_TRUE(square.Overlaps(KoBoundingBox2d(0.2, 0.2, 0.3, 0.3), false));  // contained
    EXPECT_FALSE(square.Overlaps(KoBoundingBox2d(0, 2, 1, 3), true));
    EXPECT_FALSE(square.Overlaps(KoBoundingBox2d(), true));

    const KoBoundingBox3d cube(0, 0, 0, 1, 1, 1);
    // Overlapping in x and y but apart in z.
    EXPECT_FALSE(cube.Overlaps(KoBoundingBox3d(0.5, 0.5, 1.5, 2, 2, 2), true));
    EXPECT_TRUE(cube.Overlaps(KoBoundingBox3d(0.5, 0.5, 0.5, 2, 2, 2), false));
}

TEST(BoundingBox, TextForm)
{
    Lines out;
    KoBoundingBox3d().Print(out.Sink(), "Box");
    KoBoundingBox3d(0, 0, 0, 1, 2, 3).Print(out.Sink());
    KoBoundingBox2d().Print(out.Sink());
    KoBoundingBox2d(-1, 0.5, 2, 4).Print(out.Sink(), "area");
    const std::vector<std::string> expected = {
        "KoBoundingBox3d Box",
        " invalid",
        "KoBoundingBox3d ",
        "xyz min: 0.000000 0.000000 0.000000; max: 1.000000 2.000000 3.000000",
        "x*y*z:  1.000000 2.000000 3.000000",
        "KoBoundingBox2d ",
        " invalid",
        "KoBoundingBox2d area",
        "xy min: -1.000000 0.500000; max: 2.000000 4.000000",
        "x*y:  3.000000 3.500000",
    };
    EXPECT_EQ(out.lines, expected);

    // Extreme but valid coordinates print in full rather than being cut off.
    Lines huge;
    KoBoundingBox2d(-1e300, -1e300, 1e300, 1e300).Print(huge.Sink());
    ASSERT_EQ(huge.lines.size(), 3u);
    EXPECT_GT(huge.lines[1].size(), 1200u);
    EXPECT_EQ(huge.lines[1].substr(huge.lines[1].size() - 7), ".000000");
}

TEST(RunningMean, AveragesPointsAddedOneByOne)
{
    KoRunningMean mean;
    mean.Add(0, 0, 0);
    mean.Add(2, 4, 6);
    EXPECT_DOUBLE_EQ(mean.x, 1.0);
    EXPECT_DOUBLE_EQ(mean.y, 2.0);
    EXPECT_DOUBLE_EQ(mean.z, 3.0);
    EXPECT_EQ(mean.count, 2);

    // A position set directly is overwritten completely by the first point added after it.
    mean.Set(100, 100, 100);
    mean.Add(1, 2, 3);
    EXPECT_EQ(mean.x, 1.0);
    EXPECT_EQ(mean.z, 3.0);
    EXPECT_EQ(mean.count, 1);
}

TEST(GeometrySelfTest, PrintsItsExactLines)
{
    Lines out;
    EXPECT_TRUE(Selftest_Ko3d(out.Sink()));
    const std::vector<std::string> expected = {
        std::string(40, '*'),
        "* Selftest_Ko3d",
        "2d Overlap test | false, true | 0 1",
        "3D Overlap Test: | true true true true     | 1 1 1 1",
        "Ohne Neighbour",
        "3D Overlap Test: | false false false false | 0 0 0 0",
    };
    EXPECT_EQ(out.lines, expected);
}

}  // namespace
