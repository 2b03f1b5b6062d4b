// Text, attributes, multi-line text and block references. All of them keep their shape only under a
// similarity: a stretched glyph or block has no representation in these entities.
#include "host/dxf/TransformTypes.h"

namespace dxf::xform {

namespace {

using S = TransformStatus;

// Writes a value that the entity may leave out when it has its default: a missing tag is added only when the
// new value really differs from that default.
void planOptional(TagList& t, std::size_t i, std::size_t insertAt, int code, double value, double fallback,
                  Edits& edits) {
  if (i != kNone)
    edits.set(t, i, value);
  else if (std::fabs(value - fallback) > 1e-12 * std::fmax(1.0, std::fabs(fallback)))
    edits.insert(t, insertAt, code, value);
}

double scaled(const TagList& t, std::size_t i, double factor, bool& ok) {
  double v = 0.0;
  ok = ok && readNumber(t, i, v);
  return v * factor;
}

}  // namespace

TransformStatus planText(TagList& t, const Context& c) {
  const CodeIndex idx(t);
  Vec3 extrusion;
  double rotation = 0.0, height = 0.0, thickness = 0.0;
  if (!readExtrusion(t, idx, extrusion) ||
      !readOptional(t, idx[50], 0.0, rotation) || !readOptional(t, idx[40], 0.0, height) ||
      !readOptional(t, idx[39], 0.0, thickness))
    return S::InvalidData;
  const OcsTransform ocs(c.m, extrusion);
  for (int code : {10, 11}) {
    if (!idx.has(code)) continue;
    Vec3 p;
    bool hasZ = false;
    if (!readPoint(t, idx[code], p, hasZ)) return S::InvalidData;
    c.edits.setPoint(t, idx[code], ocs.vertex(p), hasZ);
  }
  // The text's own data ends with the first text section (before the alignment or attribute subclass).
  const std::size_t ownEnd = idx.has(10) ? sectionEnd(t, idx[10]) : idx.end();
  if (idx.has(40)) c.edits.set(t, idx[40], height * ocs.length(fromAngleDeg(rotation + 90.0)));
  planOptional(t, idx[50], ownEnd, 50, ocs.angleDeg(rotation), 0.0, c.edits);
  if (idx.has(39)) c.edits.set(t, idx[39], ocs.thickness(thickness));
  planExtrusion(t, idx[210], ownEnd, ocs.newExtrusion(), c.edits);

  // A multi-line attribute carries its text as an embedded MTEXT after the 101 marker.
  if (idx.end() < t.size() && t.code(idx.end()) == 101) return planMText(t, idx.end() + 1, c);
  return S::Ok;
}

TransformStatus transformText(Entity& e, const Context& c) {
  if (!c.kind.similarity) return S::CannotScaleNonUniformly;
  return planText(e.tags, c);
}

TransformStatus planMText(TagList& t, std::size_t from, const Context& c) {
  const CodeIndex idx(t, from);
  Vec3 extrusion, insert, direction;
  bool insertZ = false;
  double rotation = 0.0, height = 0.0;
  if (!readExtrusion(t, idx, extrusion) ||
      !readOptional(t, idx[50], 0.0, rotation) || !readOptional(t, idx[40], 0.0, height))
    return S::InvalidData;
  if (idx.has(10) && !readPoint(t, idx[10], insert, insertZ)) return S::InvalidData;
  const OcsTransform ocs(c.m, extrusion);
  // The direction vector wins over the rotation angle; the angle is measured in the text's plane.
  if (idx.has(11)) {
    bool z = false;
    if (!readPoint(t, idx[11], direction, z)) return S::InvalidData;
  } else if (idx.has(50)) {
    direction = ocs.oldOcs().toWcs(fromAngleDeg(rotation));
  } else {
    direction = mtextDefaultDirection(extrusion);
  }
  if (direction.lengthSquared() == 0.0) return S::InvalidData;
  const Vec3 newDirection = c.m.direction(direction);
  const Vec3 vertical = extrusion.normalized().cross(direction).normalized();
  // Character height is measured across the writing direction, whatever a matrix does to the two.
  const Vec3 newVertical = c.m.direction(vertical * height);
  const double cosAngle =
      newVertical.lengthSquared() > 0.0
          ? newDirection.normalized().dot(newVertical.normalized())
          : 0.0;
  const double newHeight = newVertical.length() * std::sqrt(std::fmax(0.0, 1.0 - cosAngle * cosAngle));

  const std::size_t ownEnd = idx.has(10) ? sectionEnd(t, idx[10]) : idx.end();
  if (idx.has(10)) c.edits.setPoint(t, idx[10], c.m.point(insert), insertZ);
  if (idx.has(40)) c.edits.set(t, idx[40], newHeight);
  const Vec3 unitDirection = newDirection.normalized();
  if (idx.has(11)) c.edits.setPoint(t, idx[11], unitDirection, pointHasZ(t, idx[11]));
  if (idx.has(50)) c.edits.set(t, idx[50], ocs.angleDeg(rotation));
  // A text without direction and angle runs along the world x axis laid into its plane, which some readers
  // take for the x axis of the plane: unless the turned text runs along both, its direction is written out.
  if (!idx.has(11) && !idx.has(50) &&
      ((unitDirection - ocs.newOcs().ux()).length() > 1e-12 ||
       (unitDirection - mtextDefaultDirection(ocs.newExtrusion())).length() > 1e-12))
    c.edits.insertPoint(t, ownEnd, 11, unitDirection);
  // Reference width, defined height, extents and column sizes are lengths in the text's plane.
  bool ok = true;
  const double along = c.m.direction(direction.normalized()).length();
  if (idx.has(41)) c.edits.set(t, idx[41], scaled(t, idx[41], along, ok));
  for (int code : {42, 43, 46, 48, 49})
    if (idx.has(code)) c.edits.set(t, idx[code], scaled(t, idx[code], c.kind.scale, ok));
  if (!ok) return S::InvalidData;
  planExtrusion(t, idx[210], ownEnd, ocs.newExtrusion(), c.edits);
  // The column and extents data of newer files repeats the position and direction.
  if (idx.end() < t.size() && t.code(idx.end()) == 101) return planMTextEmbedded(t, idx.end(), c);
  return S::Ok;
}

TransformStatus transformMText(Entity& e, const Context& c) {
  if (!c.kind.similarity) return S::CannotScaleNonUniformly;
  return planMText(e.tags, 0, c);
}

TransformStatus transformInsert(Entity& e, const Context& c) {
  if (!c.kind.similarity) return S::CannotScaleNonUniformly;
  TagList& t = e.tags;
  const CodeIndex idx(t);
  Vec3 extrusion, insert;
  bool insertZ = false;
  double sx = 1.0, sy = 1.0, sz = 1.0, rotation = 0.0;
  if (!readExtrusion(t, idx, extrusion) ||
      !readOptional(t, idx[41], 1.0, sx) || !readOptional(t, idx[42], 1.0, sy) ||
      !readOptional(t, idx[43], 1.0, sz) || !readOptional(t, idx[50], 0.0, rotation))
    return S::InvalidData;
  if (idx.has(10) && !readPoint(t, idx[10], insert, insertZ)) return S::InvalidData;

  // The block's axes follow the matrix; a mirror shows as a negative y scale, as a CAD host writes it.
  const Ocs old(extrusion);
  const Vec3 ux = c.m.direction(old.ux()), uy = c.m.direction(old.uy()), uz = c.m.direction(old.uz());
  const double xs = ux.length() * sx, zs = uz.length() * sz;
  double ys = uy.length() * sy;
  const Vec3 nx = ux.normalized(), ny = uy.normalized(), nz = uz.normalized();
  const Vec3 expected = nz.cross(nx);
  const bool mirrored = (expected - ny).length() > 1e-9;
  if (mirrored) ys = -ys;
  const OcsTransform ocs(c.m, extrusion, nz);

  const std::size_t after = idx.has(10) ? idx[10] + (insertZ ? 3 : 2) : idx.end();
  if (idx.has(10)) c.edits.setPoint(t, idx[10], ocs.vertex(insert), insertZ);
  planOptional(t, idx[41], after, 41, xs, 1.0, c.edits);
  planOptional(t, idx[42], after, 42, ys, 1.0, c.edits);
  planOptional(t, idx[43], after, 43, zs, 1.0, c.edits);
  planOptional(t, idx[50], after, 50, ocs.angleDeg(rotation), 0.0, c.edits);
  // Column and row spacing of a multiple insert grow with the block; rows follow a mirrored y axis.
  bool ok = true;
  if (idx.has(44)) c.edits.set(t, idx[44], scaled(t, idx[44], ux.length(), ok));
  if (idx.has(45)) c.edits.set(t, idx[45], scaled(t, idx[45], mirrored ? -uy.length() : uy.length(), ok));
  if (!ok) return S::InvalidData;
  planExtrusion(t, idx[210], idx.end(), ocs.newExtrusion(), c.edits);

  for (Entity& child : e.children) {
    if (child.type != "ATTRIB") continue;
    if (const S s = planText(child.tags, c); s != S::Ok) return s;
  }
  return S::Ok;
}

}  // namespace dxf::xform
