// Transformations that reach into the rest of the drawing: a dimension's and a table's anonymous block, and
// the ACIS data of a solid. Either the entity and everything it draws move, or nothing changes.
#include "host/dxf/Document.h"
#include "host/dxf/TransformDrawing.h"
#include "tests/dxf_transform/CompareRun.h"
#include "tests/dxf_transform/Matrices.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace dxf {
namespace {

using testing::operator*;
using testing::snapshot;

// Tags written one per line pair, "code value" separated by the first blank.
std::string dxfText(const std::vector<std::string>& lines) {
  std::string s;
  for (const std::string& l : lines) {
    const auto blank = l.find(' ');
    s += l.substr(0, blank) + "\n" + (blank == std::string::npos ? "" : l.substr(blank + 1)) + "\n";
  }
  return s;
}

std::vector<std::string> block(const std::string& name, const std::vector<std::string>& entities) {
  std::vector<std::string> out = {"0 BLOCK", "8 0", "2 " + name, "70 1", "10 0", "20 0", "30 0", "3 " + name};
  out.insert(out.end(), entities.begin(), entities.end());
  out.insert(out.end(), {"0 ENDBLK", "8 0"});
  return out;
}

std::vector<std::string> line(double x1, double y1, double x2, double y2) {
  return {"0 LINE",  "8 0", "10 " + std::to_string(x1), "20 " + std::to_string(y1), "30 0",
          "11 " + std::to_string(x2), "21 " + std::to_string(y2), "31 0"};
}

std::vector<std::string> dimension(const std::string& blockName) {
  return {"0 DIMENSION", "8 0", "100 AcDbEntity", "100 AcDbDimension", "2 " + blockName, "10 10", "20 5",
          "30 0", "11 5", "21 6", "31 0", "70 33", "100 AcDbAlignedDimension", "13 0", "23 0", "33 0",
          "14 10", "24 0", "34 0"};
}

std::unique_ptr<Document> drawing(const std::vector<std::vector<std::string>>& blocks,
                                  const std::vector<std::vector<std::string>>& entities) {
  std::vector<std::string> all = {"0 SECTION", "2 HEADER", "9 $ACADVER", "1 AC1015", "0 ENDSEC", "0 SECTION",
                                  "2 BLOCKS"};
  for (const auto& b : blocks) all.insert(all.end(), b.begin(), b.end());
  all.insert(all.end(), {"0 ENDSEC", "0 SECTION", "2 ENTITIES"});
  for (const auto& e : entities) all.insert(all.end(), e.begin(), e.end());
  all.insert(all.end(), {"0 ENDSEC", "0 EOF"});
  std::string error;
  auto doc = Document::parse(dxfText(all), "test.dxf", error);
  EXPECT_TRUE(doc) << error;
  return doc;
}

// Turned a quarter, doubled, shifted: every number of the result is exact.
Matrix44 quarterDoubled() { return {{{0, -2, 0, 10}, {2, 0, 0, 20}, {0, 0, 2, 0}, {0, 0, 0, 1}}}; }

double number(const Entity& e, int code) { return *e.tags.number(*e.tags.find(code)); }

TEST(DrawingTransform, DimensionTakesItsOwnBlockAlongOrNothingMoves) {
  // The second entity of *D2 is one the host cannot move.
  auto doc = drawing({block("*D1", line(0, 0, 10, 0)), block("*D2", [&] {
                        auto v = line(0, 0, 5, 0);
                        v.insert(v.end(), {"0 ACAD_PROXY_ENTITY", "8 0", "90 498"});
                        return v;
                      }()),
                      block("*D3", line(1, 1, 2, 2)), block("ARROW", line(0, 0, 1, 0))},
                     {dimension("*D1"), dimension("*D2"), dimension("*D3"), dimension("*D3"), dimension("ARROW")});
  ASSERT_TRUE(doc);
  const std::vector<Entity*> dims = doc->modelSpace();
  const std::string original = doc->bytes();

  // Undo must bring the block back with the dimension (the host journals the entities it opens).
  doc->journal().beginStep("transform");
  for (Entity* d : dims) doc->journal().recordChange(*d);
  ASSERT_EQ(transformInDrawing(*doc, *dims[0], quarterDoubled()), TransformStatus::Ok);
  const Entity& drawn = doc->blockEntities("*d1")->front();  // block names ignore case
  EXPECT_EQ(number(drawn, 11), 10.0);  // (10, 0) turned, doubled and shifted
  EXPECT_EQ(number(drawn, 21), 40.0);
  EXPECT_EQ(number(*dims[0], 13), 10.0);  // the definition point went the same way
  EXPECT_EQ(number(*dims[0], 23), 20.0);

  // A block entity that cannot move stops the dimension and the entities of the block moved before it.
  const std::string before2 = snapshot(*dims[1]) + snapshot(doc->blockEntities("*D2")->front());
  EXPECT_EQ(transformInDrawing(*doc, *dims[1], quarterDoubled()), TransformStatus::NotSupported);
  EXPECT_EQ(snapshot(*dims[1]) + snapshot(doc->blockEntities("*D2")->front()), before2);

  // A block drawn by two dimensions would move twice; a named block belongs to the user.
  EXPECT_EQ(doc->blockReferences("*D3"), 2u);
  EXPECT_EQ(transformInDrawing(*doc, *dims[2], quarterDoubled()), TransformStatus::NotSupported);
  EXPECT_EQ(transformInDrawing(*doc, *dims[4], quarterDoubled()), TransformStatus::Ok);
  EXPECT_EQ(number(doc->blockEntities("ARROW")->front(), 11), 1.0);

  doc->journal().rollbackStep({[](Entity&) {}, [](Entity&) {}});
  EXPECT_EQ(doc->bytes(), original);
}

TEST(DrawingTransform, TableGrowsItsBlockInItsOwnCoordinatesAndKeepsCellValues) {
  const std::vector<std::string> table = {
      "0 ACAD_TABLE", "8 0", "100 AcDbEntity", "100 AcDbBlockReference", "2 *T1", "10 100", "20 200", "30 0",
      "100 AcDbTable", "11 1", "21 0", "31 0", "141 5", "142 20", "301 CELL_VALUE", "93 2", "90 2",
      "140 7.0", "304 ACVALUE_END", "140 2.5"};
  auto doc = drawing({block("*T1", line(0, 0, 20, -5))}, {table});
  ASSERT_TRUE(doc);
  Entity& t = *doc->modelSpace().front();
  const std::string before = doc->bytes();
  // A mirror would show the cells' text from behind.
  EXPECT_EQ(transformInDrawing(*doc, t, testing::scaling(-1, 1, 1)), TransformStatus::NotSupported);
  EXPECT_EQ(doc->bytes(), before);

  ASSERT_EQ(transformInDrawing(*doc, t, quarterDoubled()), TransformStatus::Ok);
  EXPECT_EQ(number(t, 10), -390.0);  // (100, 200) turned, doubled, shifted
  EXPECT_EQ(number(t, 20), 220.0);
  EXPECT_NEAR(number(t, 11), 0.0, 1e-15);
  EXPECT_EQ(number(t, 21), 1.0);
  std::vector<double> heights;
  for (std::size_t i = 0; i < t.tags.size(); ++i)
    if (t.tags.code(i) == 140 || t.tags.code(i) == 141 || t.tags.code(i) == 142) heights.push_back(*t.tags.number(i));
  EXPECT_EQ(heights, (std::vector<double>{10.0, 40.0, 7.0, 5.0}));  // the typed cell value stays
  const Entity& drawn = doc->blockEntities("*T1")->front();
  EXPECT_EQ(number(drawn, 11), 40.0);  // only grown: the table places and turns it
  EXPECT_EQ(number(drawn, 21), -10.0);
}

// SAT text as a drawing stores it: every character c as 159 - c, then caret escapes.
std::string encodeSat(const std::string& plain) {
  std::string out;
  for (char c : plain) {
    if (c == ' ') {
      out += ' ';
      continue;
    }
    const int e = 159 - static_cast<unsigned char>(c);
    out += e == '^' ? std::string("^ ") : std::string(1, static_cast<char>(e));
  }
  return out;
}

std::string decodeSat(std::string_view raw) {
  std::string out;
  for (std::size_t i = 0; i < raw.size(); ++i) {
    int c = static_cast<unsigned char>(raw[i]);
    if (c == '^') c = raw[++i] == ' ' ? '^' : raw[i] - 64;
    out += c == ' ' ? ' ' : static_cast<char>(159 - c);
  }
  return out;
}

std::vector<std::string> solid(const std::vector<std::string>& sat) {
  std::vector<std::string> out = {"0 3DSOLID", "8 0", "100 AcDbEntity", "100 AcDbModelerGeometry", "70 1"};
  for (const std::string& l : sat) out.push_back("1 " + encodeSat(l));
  return out;
}

// The SAT lines of the entity, group 3 continuations joined to their line.
std::vector<std::string> satLines(const Entity& e) {
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < e.tags.size(); ++i) {
    if (e.tags.code(i) == 1) lines.push_back(decodeSat(e.tags.text(i)));
    if (e.tags.code(i) == 3) lines.back() += decodeSat(e.tags.text(i));
  }
  return lines;
}

TEST(DrawingTransform, AcisBodiesGetAPlacementOrStayWhereTheirDataCannotBeRead) {
  // ACIS 1.6 has no product and unit lines; a body without placement gets a new record at the end.
  auto doc = drawing({}, {solid({"106 3 1 0", "body $-1 $1 $-1 $-1 #", "lump $-1 $-1 $2 $0 #",
                                 "shell $-1 $-1 $-1 $-1 $1 #"}),
                          solid({"700 0 1 0", "@4 test @12 ACIS 32.0 NT @24 Mon Nov 23 10:00:00 2026",
                                 "1 9.9999999999999995e-007 1e-010", "body $-1 -1 $-1 $2 $-1 $1 #",
                                 "transform $-1 -1 1 0 0 0 1 0 0 0 1 3 4 5 1 no_rotate no_reflect no_shear #",
                                 "lump $-1 -1 $-1 $-1 $-1 $0 #", "End-of-ACIS-data"}),
                          {"0 3DSOLID", "8 0", "100 AcDbEntity", "100 AcDbModelerGeometry", "290 1",
                           "2 {00000000-0000-0000-0000-000000000000}"}});
  ASSERT_TRUE(doc);
  const std::vector<Entity*> solids = doc->modelSpace();
  ASSERT_EQ(transformInDrawing(*doc, *solids[0], quarterDoubled()), TransformStatus::Ok);
  EXPECT_EQ(satLines(*solids[0]),
            (std::vector<std::string>{"106 4 1 0", "body $-1 $1 $-1 $3 #", "lump $-1 $-1 $2 $0 #",
                                      "shell $-1 $-1 $-1 $-1 $1 #",
                                      "transform $-1 0 1 0 -1 0 0 0 0 1 10 20 0 2 rotate no_reflect no_shear #"}));

  // An existing placement is followed by the matrix: (3, 4, 5) goes to (2, 26, 10).
  ASSERT_EQ(transformInDrawing(*doc, *solids[1], quarterDoubled()), TransformStatus::Ok);
  EXPECT_EQ(satLines(*solids[1])[4],
            "transform $-1 -1 0 1 0 -1 0 0 0 0 1 2 26 10 2 rotate no_reflect no_shear #");

  // Binary data kept elsewhere, and a stretch that no placement can carry, leave the solid as it is.
  const std::string before = doc->bytes();
  EXPECT_EQ(transformInDrawing(*doc, *solids[2], quarterDoubled()), TransformStatus::NotSupported);
  EXPECT_EQ(transformInDrawing(*doc, *solids[1], testing::scaling(1, 2, 1)), TransformStatus::CannotScaleNonUniformly);
  EXPECT_EQ(doc->bytes(), before);
}

}  // namespace
}  // namespace dxf
