// Lightweight polylines and the classic POLYLINE with its VERTEX records. 2D polylines live in their object
// coordinate system with one elevation; 3D polylines, meshes and polyface meshes have world vertices.
#include "host/dxf/TransformTypes.h"

namespace dxf::xform {

namespace {

using S = TransformStatus;

// A bulge turns a segment into a circular arc, which a matrix that is not a similarity would make elliptic.
bool hasBulge(const TagList& t, std::size_t from, std::size_t end, bool& bad) {
  for (std::size_t i = from; i < end; ++i) {
    if (t.code(i) != 42) continue;
    double b = 0.0;
    if (!readNumber(t, i, b)) {
      bad = true;
      return false;
    }
    if (b != 0.0) return true;
  }
  return false;
}

bool planWidth(TagList& t, std::size_t i, const OcsTransform& ocs, Edits& edits) {
  if (i == kNone) return true;
  double w = 0.0;
  if (!readNumber(t, i, w)) return false;
  edits.set(t, i, ocs.width(w));
  return true;
}

bool readPlane(const TagList& t, const CodeIndex& idx, Vec3& extrusion, double& thickness) {
  return readExtrusion(t, idx, extrusion) && readOptional(t, idx[39], 0.0, thickness);
}

}  // namespace

TransformStatus transformLwPolyline(Entity& e, const Context& c) {
  TagList& t = e.tags;
  const CodeIndex idx(t);
  Vec3 extrusion;
  double thickness = 0.0, elevation = 0.0;
  if (!readPlane(t, idx, extrusion, thickness) || !readOptional(t, idx[38], 0.0, elevation)) return S::InvalidData;
  bool bad = false;
  if (!c.kind.similarity && hasBulge(t, 0, idx.end(), bad)) return S::CannotScaleNonUniformly;
  if (bad) return S::InvalidData;
  const OcsTransform ocs(c.m, extrusion);

  // Every vertex of the plane lands at the same new elevation; the first one tells it.
  double newElevation = ocs.vertex({0.0, 0.0, elevation}).z;
  bool first = true;
  for (std::size_t i = 0; i < idx.end(); ++i) {
    const int code = t.code(i);
    if (code == 10) {
      Vec3 p;
      bool hasZ = false;
      if (!readPoint(t, i, p, hasZ, elevation)) return S::InvalidData;
      p.z = elevation;
      const Vec3 r = ocs.vertex(p);
      if (first) newElevation = r.z;
      first = false;
      c.edits.setPoint2d(t, i, r);
      ++i;
    } else if ((code == 40 || code == 41 || code == 43) && !planWidth(t, i, ocs, c.edits)) {
      return S::InvalidData;
    }
  }
  if (idx.has(38))
    c.edits.set(t, idx[38], newElevation);
  else if (newElevation != 0.0)
    c.edits.insert(t, idx.has(10) ? idx[10] : idx.end(), 38, newElevation);
  if (idx.has(39)) c.edits.set(t, idx[39], ocs.thickness(thickness));
  planExtrusion(t, idx[210], idx.end(), ocs.newExtrusion(), c.edits);
  return S::Ok;
}

namespace {

constexpr long long kPolyline3d = 8, kPolygonMesh = 16, kPolyfaceMesh = 64;
constexpr long long kVertexFaceRecord = 128;

long long flags(const TagList& t, const CodeIndex& idx) {
  if (!idx.has(70)) return 0;
  return t.integer(idx[70]).value_or(0);
}

TransformStatus transform3dVertices(Entity& e, const Context& c) {
  for (Entity& v : e.children) {
    if (v.type != "VERTEX") continue;
    const CodeIndex idx(v.tags);
    const long long f = flags(v.tags, idx);
    // A polyface face record only names vertices; its location is a dummy.
    if ((f & kVertexFaceRecord) && !(f & kPolyfaceMesh)) continue;
    if (!idx.has(10)) continue;
    Vec3 p;
    bool hasZ = false;
    if (!readPoint(v.tags, idx[10], p, hasZ)) return S::InvalidData;
    c.edits.setPoint(v.tags, idx[10], c.m.point(p), hasZ);
  }
  return S::Ok;
}

}  // namespace

TransformStatus transformPolyline(Entity& e, const Context& c) {
  TagList& t = e.tags;
  const CodeIndex idx(t);
  if (flags(t, idx) & (kPolyline3d | kPolygonMesh | kPolyfaceMesh)) return transform3dVertices(e, c);

  Vec3 extrusion, origin;
  double thickness = 0.0;
  bool originZ = false;
  if (!readPlane(t, idx, extrusion, thickness)) return S::InvalidData;
  // The polyline's own point carries the elevation of all its vertices (0, 0, elevation).
  const bool hasElevation = idx.has(10);
  if (hasElevation && !readPoint(t, idx[10], origin, originZ)) return S::InvalidData;
  if (!c.kind.similarity) {
    bool bad = false;
    for (const Entity& v : e.children) {
      if (v.type == "VERTEX" && hasBulge(v.tags, 0, v.tags.size(), bad)) return S::CannotScaleNonUniformly;
      if (bad) return S::InvalidData;
    }
  }
  const OcsTransform ocs(c.m, extrusion);
  double newElevation = ocs.vertex({0.0, 0.0, origin.z}).z;
  bool first = true;
  for (Entity& v : e.children) {
    if (v.type != "VERTEX") continue;
    TagList& vt = v.tags;
    const CodeIndex vi(vt);
    if (vi.has(10)) {
      Vec3 p;
      bool hasZ = false;
      if (!readPoint(vt, vi[10], p, hasZ)) return S::InvalidData;
      // Old writers may leave the vertex z out; the polyline's elevation is the one that counts.
      if (hasElevation) p.z = origin.z;
      const Vec3 r = ocs.vertex(p);
      if (first) newElevation = r.z;
      first = false;
      c.edits.setPoint2d(vt, vi[10], r);
      if (hasZ) c.edits.set(vt, vi[10] + 2, r.z);
    }
    if (!planWidth(vt, vi[40], ocs, c.edits) || !planWidth(vt, vi[41], ocs, c.edits)) return S::InvalidData;
    if (vi.has(50)) {  // curve-fit tangent direction
      double a = 0.0;
      if (!readNumber(vt, vi[50], a)) return S::InvalidData;
      c.edits.set(vt, vi[50], ocs.angleDeg(a));
    }
  }
  if (hasElevation)
    c.edits.setPoint(t, idx[10], {0.0, 0.0, newElevation}, originZ);
  else if (newElevation != 0.0)
    c.edits.insertPoint(t, idx.has(70) ? sectionEnd(t, idx[70]) : idx.end(), 10, {0.0, 0.0, newElevation});
  if (!planWidth(t, idx[40], ocs, c.edits) || !planWidth(t, idx[41], ocs, c.edits)) return S::InvalidData;
  if (idx.has(39)) c.edits.set(t, idx[39], ocs.thickness(thickness));
  planExtrusion(t, idx[210], idx.end(), ocs.newExtrusion(), c.edits);
  return S::Ok;
}

}  // namespace dxf::xform
