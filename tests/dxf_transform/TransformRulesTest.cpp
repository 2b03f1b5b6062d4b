// The host's own rules around the transformation: refusal of unusable matrices and data without a trace,
// survey-size numbers that keep every digit, and tags that must be added in the right place.
#include "host/dxf/Transform.h"
#include "tests/dxf_transform/Matrices.h"

#include <gtest/gtest.h>

#include <limits>
#include <list>
#include <string>
#include <utility>
#include <vector>

namespace dxf {
namespace {

using testing::identity;
using testing::operator*;
using testing::rotation;
using testing::scaling;
using testing::shift;

// Builds entities as the reader does: texts owned elsewhere, nothing marked as changed.
class Builder {
 public:
  Entity make(std::string type, const std::vector<std::pair<int, std::string>>& tags) {
    Entity e;
    e.type = type;
    for (const auto& [code, text] : tags) e.tags.appendRaw(code, {}, keep(text));
    return e;
  }

 private:
  std::string_view keep(const std::string& s) { return texts_.emplace_back(s); }
  std::list<std::string> texts_;
};

std::string dump(const Entity& e) {
  std::string s;
  for (const Tag& t : e.tags) s.append(std::to_string(t.code)).append("=").append(t.text).append(" ");
  for (const Entity& c : e.children) s += "| " + dump(c);
  return s;
}

std::vector<int> codes(const Entity& e) {
  std::vector<int> out;
  for (const Tag& t : e.tags) out.push_back(t.code);
  return out;
}

std::string text(const Entity& e, int code, int nth = 0) {
  for (const Tag& t : e.tags)
    if (t.code == code && nth-- == 0) return std::string(t.text);
  return "<none>";
}

double number(const Entity& e, int code) { return std::stod(text(e, code)); }

TEST(TransformRules, UnusableMatricesAndUnknownTypesLeaveTheEntityAlone) {
  Builder b;
  Entity line = b.make("LINE", {{8, "0"}, {10, "1.5"}, {20, "2.5"}, {30, "0.0"}, {11, "3"}, {21, "4"}, {31, "0"}});
  const std::string before = dump(line);

  Matrix44 nan = identity();
  nan.m[1][3] = std::numeric_limits<double>::quiet_NaN();
  Matrix44 perspective = identity();
  perspective.m[3][2] = 0.5;
  Matrix44 flat = scaling(1.0, 1.0, 0.0);  // squashes everything into a plane
  for (const Matrix44& m : {nan, perspective, flat}) {
    EXPECT_EQ(transformEntity(line, m), TransformStatus::InvalidData);
    EXPECT_EQ(dump(line), before);
    EXPECT_FALSE(line.modified());
  }

  // A proxy's geometry is the private business of the application that made it.
  Entity proxy = b.make("ACAD_PROXY_ENTITY", {{90, "498"}, {10, "1.0"}, {20, "2.0"}, {30, "0.0"}});
  EXPECT_EQ(transformEntity(proxy, shift(1, 2, 3)), TransformStatus::NotSupported);
  EXPECT_FALSE(proxy.modified());
  // An image without its pixel axes cannot be placed at all.
  Entity image = b.make("IMAGE", {{10, "1.0"}, {20, "2.0"}, {30, "0.0"}});
  EXPECT_EQ(transformEntity(image, shift(1, 2, 3)), TransformStatus::InvalidData);
  EXPECT_FALSE(image.modified());
}

TEST(TransformRules, GarbageAnywhereInTheEntityStopsItBeforeAnythingIsWritten) {
  Builder b;
  // The start point is fine; the end point is not a number: the start point must not move either.
  Entity line = b.make("LINE", {{10, "1.0"}, {20, "2.0"}, {30, "0.0"}, {11, "3.0"}, {21, "x4"}, {31, "0.0"}});
  // A y coordinate that never comes.
  Entity circle = b.make("CIRCLE", {{10, "1.0"}, {40, "2.0"}});

  // A block reference whose second attribute is broken keeps its own insertion point and its first attribute.
  Entity ref = b.make("INSERT", {{66, "1"}, {2, "MARK"}, {10, "5.0"}, {20, "5.0"}, {30, "0.0"}});
  ref.children.push_back(b.make("ATTRIB", {{10, "5.5"}, {20, "5.0"}, {30, "0.0"}, {40, "0.3"}, {1, "17"}}));
  ref.children.push_back(b.make("ATTRIB", {{10, "5.5"}, {20, "nan"}, {30, "0.0"}, {40, "0.3"}, {1, "18"}}));
  ref.children.push_back(b.make("SEQEND", {}));

  // Extended data is part of the entity too.
  Entity point = b.make("POINT", {{10, "1.0"}, {20, "2.0"}, {30, "0.0"}, {1001, "APP"}, {1011, "1.0"}, {1021, "?"},
                                  {1031, "0.0"}});
  for (Entity* e : {&line, &circle, &ref, &point}) {
    EXPECT_EQ(transformEntity(*e, shift(10, 0, 0)), TransformStatus::InvalidData) << e->type;
    EXPECT_FALSE(e->modified()) << e->type;
  }
}

TEST(TransformRules, SurveyCoordinatesKeepEveryDigit) {
  Builder b;
  Entity line = b.make("LINE", {{10, "2561234.567"}, {20, "5634012.345"}, {30, "312.25"}, {11, "2561299.001"},
                                {21, "5634099.999"}, {31, "0.0"}});
  ASSERT_EQ(transformEntity(line, shift(1000.0, -12.0, 0.5)), TransformStatus::Ok);
  EXPECT_EQ(dump(line), "10=2562234.567 20=5634000.345 30=312.75 11=2562299.001 21=5634087.999 31=0.5 ");

  // A quarter turn written with exact zeros and ones swaps the coordinates without rounding them.
  Matrix44 quarter = identity();
  quarter.m[0][0] = 0.0;
  quarter.m[0][1] = -1.0;
  quarter.m[1][0] = 1.0;
  quarter.m[1][1] = 0.0;
  Entity arc = b.make("ARC", {{10, "2561234.567"}, {20, "5634012.345"}, {30, "0.0"}, {40, "12.5"}, {50, "10.0"},
                              {51, "100.0"}});
  ASSERT_EQ(transformEntity(arc, quarter), TransformStatus::Ok);
  EXPECT_EQ(text(arc, 10), "-5634012.345");
  EXPECT_EQ(text(arc, 20), "2561234.567");
  EXPECT_EQ(text(arc, 40), "12.5");
  EXPECT_DOUBLE_EQ(number(arc, 50), 100.0);
  EXPECT_DOUBLE_EQ(number(arc, 51), 190.0);  // angles stay in [0, 360)
  EXPECT_EQ(codes(arc).size(), 6u);  // still in plan: no extrusion added
}

TEST(TransformRules, TagsThatBecomeNecessaryAreAddedWhereReadersLookForThem) {
  Builder b;
  const Matrix44 tilt = rotation(1, 0, 0, 90.0);

  // The extrusion of an arc belongs to its circle data, ahead of the arc subclass with the angles.
  Entity arc = b.make("ARC", {{100, "AcDbEntity"}, {8, "0"}, {100, "AcDbCircle"}, {10, "1.0"}, {20, "2.0"},
                              {30, "0.0"}, {40, "3.0"}, {100, "AcDbArc"}, {50, "0.0"}, {51, "90.0"}});
  ASSERT_EQ(transformEntity(arc, tilt), TransformStatus::Ok);
  EXPECT_EQ(codes(arc), (std::vector<int>{100, 8, 100, 10, 20, 30, 40, 210, 220, 230, 100, 50, 51}));
  EXPECT_NEAR(number(arc, 220), -1.0, 1e-15);

  // Text: into the first text subclass, not after the alignment subclass.
  Entity txt = b.make("TEXT", {{100, "AcDbEntity"}, {100, "AcDbText"}, {10, "1.0"}, {20, "2.0"}, {30, "0.0"},
                               {40, "0.5"}, {1, "P1"}, {100, "AcDbText"}, {73, "0"}});
  ASSERT_EQ(transformEntity(txt, tilt), TransformStatus::Ok);
  EXPECT_EQ(codes(txt), (std::vector<int>{100, 100, 10, 20, 30, 40, 1, 210, 220, 230, 100, 73}));

  // A line from an old file without z values that is lifted gets its z right behind its y.
  Entity line = b.make("LINE", {{8, "0"}, {10, "1.0"}, {20, "2.0"}, {11, "3.0"}, {21, "4.0"}});
  ASSERT_EQ(transformEntity(line, shift(0, 0, 5)), TransformStatus::Ok);
  EXPECT_EQ(codes(line), (std::vector<int>{8, 10, 20, 30, 11, 21, 31}));
  EXPECT_EQ(text(line, 31), "5.0");

  // A block reference turned and scaled gains the scale and rotation it left out as defaults; extended data
  // after it stays last.
  Entity ref = b.make("INSERT", {{2, "MARK"}, {10, "0.0"}, {20, "0.0"}, {30, "0.0"}, {1001, "APP"}, {1041, "2.0"}});
  ASSERT_EQ(transformEntity(ref, rotation(0, 0, 1, 30.0) * scaling(2, 2, 2)), TransformStatus::Ok);
  EXPECT_EQ(codes(ref), (std::vector<int>{2, 10, 20, 30, 41, 42, 43, 50, 1001, 1041}));
  EXPECT_DOUBLE_EQ(number(ref, 41), 2.0);
  EXPECT_NEAR(number(ref, 50), 30.0, 1e-12);
  EXPECT_DOUBLE_EQ(number(ref, 1041), 4.0);
}

TEST(TransformRules, MultiLineAttributeMovesItsEmbeddedTextAlong) {
  Builder b;
  // The attribute's own placement, then its text as an embedded multi-line text after the 101 marker: the
  // embedded 10 and 11 are a world point and a direction, not a second insertion and alignment point.
  Entity attrib = b.make("ATTRIB", {{100, "AcDbText"}, {10, "1.0"}, {20, "0.0"}, {30, "0.0"}, {40, "0.5"},
                                    {1, "A"}, {100, "AcDbAttribute"}, {2, "NR"}, {101, "Embedded Object"},
                                    {10, "1.0"}, {20, "0.0"}, {30, "0.0"}, {40, "0.5"}, {41, "4.0"},
                                    {11, "1.0"}, {21, "0.0"}, {31, "0.0"}, {1001, "APP"}});
  ASSERT_EQ(transformEntity(attrib, shift(10, 0, 0) * rotation(0, 0, 1, 90.0) * scaling(2, 2, 2)),
            TransformStatus::Ok);
  for (int nth : {0, 1}) {  // both insertion points land on (10, 2)
    EXPECT_NEAR(std::stod(text(attrib, 10, nth)), 10.0, 1e-12);
    EXPECT_NEAR(std::stod(text(attrib, 20, nth)), 2.0, 1e-12);
    EXPECT_DOUBLE_EQ(std::stod(text(attrib, 40, nth)), 1.0);
  }
  EXPECT_NEAR(number(attrib, 50), 90.0, 1e-12);  // the attribute's rotation, added
  EXPECT_NEAR(std::stod(text(attrib, 11)), 0.0, 1e-12);  // the embedded direction, turned and still a unit
  EXPECT_NEAR(std::stod(text(attrib, 21)), 1.0, 1e-12);
  EXPECT_DOUBLE_EQ(number(attrib, 41), 8.0);
  EXPECT_EQ(attrib.tags.code(attrib.tags.size() - 1), 1001);
}

}  // namespace
}  // namespace dxf

namespace dxf {
namespace {

TEST(TransformRules, HugeSizesStayFiniteAndAnOverflowingResultLeavesTheEntity) {
  Builder b;
  // Sizes whose squares overflow a double: every one must come out as its finite image.
  const Matrix44 turnAndGrow = rotation(0, 0, 1, 30.0) * scaling(1.5, 1.5, 1.5);
  Entity circle = b.make("CIRCLE", {{10, "0.0"}, {20, "0.0"}, {30, "0.0"}, {40, "1e200"}});
  ASSERT_EQ(transformEntity(circle, turnAndGrow), TransformStatus::Ok);
  EXPECT_DOUBLE_EQ(number(circle, 40), 1.5e200);

  Entity mtext = b.make("MTEXT", {{10, "1.0"}, {20, "2.0"}, {30, "0.0"}, {40, "3e180"}, {41, "1e170"}, {1, "A"}});
  ASSERT_EQ(transformEntity(mtext, turnAndGrow), TransformStatus::Ok);
  EXPECT_DOUBLE_EQ(number(mtext, 40), 4.5e180);

  Entity polyline = b.make("LWPOLYLINE", {{90, "2"}, {70, "0"}, {43, "2e160"}, {10, "0.0"}, {20, "0.0"},
                                          {10, "5.0"}, {20, "0.0"}});
  ASSERT_EQ(transformEntity(polyline, turnAndGrow), TransformStatus::Ok);
  EXPECT_DOUBLE_EQ(number(polyline, 43), 3e160);

  Entity hatch = b.make("HATCH", {{10, "0.0"}, {20, "0.0"}, {30, "0.0"}, {2, "SOLID"}, {70, "1"}, {71, "0"},
                                  {91, "1"}, {92, "1"}, {93, "1"}, {72, "2"}, {10, "0.0"}, {20, "0.0"},
                                  {40, "1e250"}, {50, "0.0"}, {51, "90.0"}, {73, "1"}, {97, "0"}, {75, "1"},
                                  {76, "1"}, {98, "0"}});
  ASSERT_EQ(transformEntity(hatch, turnAndGrow), TransformStatus::Ok);
  EXPECT_DOUBLE_EQ(number(hatch, 40), 1.5e250);

  // Coordinates near the largest double cannot be scaled: nothing is written, and no "inf" ever.
  for (const Matrix44& m : {scaling(10, 10, 10), shift(1.7e308, 0, 0)}) {
    Entity line = b.make("LINE", {{10, "1.7e308"}, {20, "0.0"}, {30, "0.0"}, {11, "1.0"}, {21, "1.0"}, {31, "0.0"}});
    const std::string before = dump(line);
    EXPECT_EQ(transformEntity(line, m), TransformStatus::NotFinite);
    EXPECT_EQ(dump(line), before);
    EXPECT_FALSE(line.modified());
  }
}

}  // namespace
}  // namespace dxf
