// Tables: a block reference to their anonymous block ("*T3", drawn in the table's own coordinates) and the
// table data with row heights, column widths, margins and the text heights of cells. The table moves and
// turns as a block reference; its sizes grow with the drawing, and the document scales the block's
// drawing alike (see TransformDrawing.cpp). Text in cells stays readable, so a mirror has no table.
#include "host/dxf/TransformTypes.h"

namespace dxf::xform {

namespace {

using S = TransformStatus;

}  // namespace

TransformStatus transformTable(Entity& e, const Context& c) {
  if (!c.kind.similarity) return S::CannotScaleNonUniformly;
  if (mirrors(c.m)) return S::NotSupported;
  TagList& t = e.tags;
  const std::size_t table = subclassMarker(t, "AcDbTable");
  if (table == kNone) return S::InvalidData;
  const CodeIndex ref(t, 0, table);
  Vec3 extrusion, insert, direction;
  bool insertZ = false;
  if (!readExtrusion(t, ref, extrusion)) return S::InvalidData;
  if (ref.has(10) && !readPoint(t, ref[10], insert, insertZ)) return S::InvalidData;
  const CodeIndex idx(t, table + 1);
  if (!readOptionalVector(t, idx[11], {1.0, 0.0, 0.0}, direction) || direction.lengthSquared() == 0.0)
    return S::InvalidData;

  // The insertion point lies in the plane of the extrusion, as a block reference's does.
  const Ocs old(extrusion);
  const OcsTransform ocs(c.m, extrusion, c.m.direction(old.uz()));
  if (ref.has(10)) c.edits.setPoint(t, ref[10], ocs.vertex(insert), insertZ);
  planExtrusion(t, ref[210], ref.has(10) ? sectionEnd(t, ref[10]) : table, ocs.newExtrusion(), c.edits);
  const Vec3 newDirection = c.m.direction(direction).normalized();
  if (idx.has(11))
    c.edits.setPoint(t, idx[11], newDirection, pointHasZ(t, idx[11]));
  else if ((newDirection - Vec3{1.0, 0.0, 0.0}).length() > 1e-12)
    c.edits.insertPoint(t, table + 1, 11, newDirection);
  // Row heights, column widths, cell margins and text heights are lengths on the sheet; the values of
  // cells (between CELL_VALUE and ACVALUE_END, a number there is 140 too) are what the user typed.
  bool inValue = false;
  for (std::size_t i = table + 1; i < idx.end(); ++i) {
    const int code = t.code(i);
    if (code == 301 || code == 304) inValue = code == 301;
    if (inValue || (code != 141 && code != 142 && code != 140 && code != 40 && code != 41)) continue;
    double v = 0.0;
    if (!readNumber(t, i, v)) return S::InvalidData;
    c.edits.set(t, i, v * c.kind.scale);
  }
  return S::Ok;
}

}  // namespace dxf::xform
