// transformBy on the entities of a real drawing, compared with ezdxf transforming the same file.
#include "DrawingFixture.h"
#include "ModelSpace.h"

#include "sdk/AcDbEntities.h"
#include "sdk/AcDbOpen.h"

#include <cmath>
#include <sstream>

namespace {

// Turns by 30 degrees about Z, scales by 1.5 and moves into another survey frame: what a three-point
// transformation with scale produces.
AcGeMatrix3d similarity() {
  const double a = 30.0 * 3.141592653589793 / 180.0, s = 1.5;
  AcGeMatrix3d m;
  m.entry[0][0] = s * std::cos(a);
  m.entry[0][1] = -s * std::sin(a);
  m.entry[1][0] = s * std::sin(a);
  m.entry[1][1] = s * std::cos(a);
  m.entry[2][2] = s;
  m.entry[0][3] = -2100000.25;
  m.entry[1][3] = 731000.5;
  m.entry[2][3] = 12.0;
  return m;
}

std::string matrixArgs(const AcGeMatrix3d& m) {
  std::ostringstream out;
  out.precision(17);
  for (const auto& row : m.entry)
    for (double v : row) out << ' ' << v;
  return out.str();
}

}  // namespace

TEST_F(DrawingTest, TransformedDrawingAgreesWithEzdxf) {
  for (const char* version : {"R12", "R2000"}) {
    SCOPED_TRACE(version);
    openSample(version);
    std::string original = host::drawingPath();
    const AcGeMatrix3d m = similarity();
    int transformed = 0;
    for (AcDbObjectId id : modelSpaceIds(db())) {
      AcDbEntity* entity = nullptr;
      ASSERT_EQ(acdbOpenAcDbEntity(entity, id, AcDb::kForWrite), Acad::eOk);
      EXPECT_EQ(entity->transformBy(m), Acad::eOk);
      entity->close();
      ++transformed;
    }
    EXPECT_EQ(transformed, 7);
    std::string path = save(std::string("moved-") + version + ".dxf");
    expectAuditClean(path);

    std::string out = python(R"(
import sys, ezdxf
from ezdxf.math import Matrix44
ours = ezdxf.readfile(sys.argv[1])
theirs = ezdxf.readfile(sys.argv[2])
v = [float(x) for x in sys.argv[3:]]
m = Matrix44([v[c * 1 + r * 4] for c in range(4) for r in range(4)])  # ezdxf rows are our columns
for e in theirs.modelspace():
    e.transform(m)

def close(a, b):
    return abs(a - b) <= 1e-6 * max(1.0, abs(a), abs(b))

def facts(e):
    t = e.dxftype()
    if t == "POINT": return list(e.dxf.location)
    if t == "LINE": return list(e.dxf.start) + list(e.dxf.end)
    if t == "CIRCLE": return list(e.dxf.center) + [e.dxf.radius]
    if t == "LWPOLYLINE": return [c for p in e.get_points("xy") for c in p] + [e.dxf.elevation]
    if t == "POLYLINE": return [c for v in e.vertices for c in v.dxf.location]
    if t == "TEXT": return list(e.dxf.insert) + [e.dxf.height, e.dxf.rotation]
    return []

a, b = list(ours.modelspace()), list(theirs.modelspace())
print(len(a), len(b))
for x, y in zip(a, b):
    fx, fy = facts(x), facts(y)
    if x.dxftype() != y.dxftype() or len(fx) != len(fy) or not all(close(p, q) for p, q in zip(fx, fy)):
        print("differs:", x.dxftype(), fx, fy)
print(list(ours.layouts.active_layout())[0].dxf.end)
)",
                             "'" + path + "' '" + original + "'" + matrixArgs(m));
    EXPECT_EQ(out, "7 7\n(1.0, 1.0, 0.0)\n");
  }
}

TEST_F(DrawingTest, NonUniformScaleLeavesCurvesUnchangedButMovesLines) {
  openSample();
  AcGeMatrix3d stretch;
  stretch.entry[0][0] = 2.0;  // X doubled, Y kept: no circle stays a circle
  bool sawCircle = false;
  for (AcDbObjectId id : modelSpaceIds(db())) {
    AcDbEntity* entity = nullptr;
    ASSERT_EQ(acdbOpenAcDbEntity(entity, id, AcDb::kForWrite), Acad::eOk);
    Acad::ErrorStatus es = entity->transformBy(stretch);
    if (auto* line = dynamic_cast<AcDbLine*>(entity)) {
      EXPECT_EQ(es, Acad::eOk);
      EXPECT_EQ(line->endPoint(), AcGePoint3d(20, 0, 0));
    } else if (auto* point = dynamic_cast<AcDbPoint*>(entity)) {
      EXPECT_EQ(es, Acad::eOk);
      EXPECT_EQ(point->position().x, 2 * 2561234.567);
    } else if (es == Acad::eCannotScaleNonUniformly) {
      sawCircle = true;
    }
    entity->close();
  }
  EXPECT_TRUE(sawCircle);
  std::string out = python(R"(
import sys, ezdxf
doc = ezdxf.readfile(sys.argv[1])
c = doc.modelspace().query("CIRCLE")[0]
print(tuple(c.dxf.center), c.dxf.radius)
)",
                           "'" + save("stretched.dxf") + "'");
  EXPECT_EQ(out, "(5.0, 5.0, 0.0) 2.0\n");
}
