// Hatches: boundary paths (polylines and edges: lines, arcs, ellipses, splines), seed points, the pattern
// lines and the gradient angle, all in the hatch's object coordinate system at its elevation.
#include "host/dxf/TransformTypes.h"

namespace dxf::xform {

namespace {

using S = TransformStatus;

enum Edge : long long { kNoEdge = 0, kLineEdge = 1, kArcEdge = 2, kEllipseEdge = 3, kSplineEdge = 4 };
constexpr long long kPolylinePath = 2;

class HatchPlan {
 public:
  HatchPlan(TagList& t, const Context& c, const OcsTransform& ocs, double elevation)
      : t_(t), c_(c), ocs_(ocs), elevation_(elevation) {}

  // Walks the tags from `from` to `end`: boundary paths first, then style, pattern, seeds and gradient.
  bool run(std::size_t from, std::size_t end) {
    for (std::size_t i = from; i < end; ++i) {
      const int code = t_.code(i);
      if (code == 75) inBoundary_ = false;  // hatch style: the boundary data is over
      if (inBoundary_) {
        if (!boundaryTag(i, end)) return false;
      } else if (!afterBoundaryTag(i)) {
        return false;
      }
    }
    return true;
  }

 private:
  bool boundaryTag(std::size_t& i, std::size_t end) {
    const int code = t_.code(i);
    if (code == 92) {
      const long long flags = t_.integer(i).value_or(0);
      polylinePath_ = (flags & kPolylinePath) != 0;
      edge_ = kNoEdge;
      return true;
    }
    if (code == 72 && !polylinePath_) {
      edge_ = t_.integer(i).value_or(kNoEdge);
      if (edge_ == kArcEdge) return arcEdge(i, end);
      return true;
    }
    if (code == 10 && (polylinePath_ || edge_ == kLineEdge || edge_ == kEllipseEdge || edge_ == kSplineEdge))
      return vertex(i);
    if (code == 11 && edge_ == kEllipseEdge && !polylinePath_) return direction(i);  // major axis end point
    if (code == 11 && (edge_ == kLineEdge || edge_ == kSplineEdge) && !polylinePath_) return vertex(i);
    if ((code == 12 || code == 13) && edge_ == kSplineEdge && !polylinePath_) return direction(i);  // tangents
    return true;
  }

  bool afterBoundaryTag(std::size_t& i) {
    switch (t_.code(i)) {
      case 52:  // pattern angle
      case 53:  // angle of one pattern line
        return angle(i);
      case 41:  // pattern scale
      case 49:  // dash length
        return scaled(i);
      case 43:  // pattern line base point (43, 44)
        return patternPair(i, true);
      case 45:  // pattern line offset (45, 46)
        return patternPair(i, false);
      case 10:  // seed point
        return vertex(i);
      case 460: {  // gradient angle, in radians
        double a = 0.0;
        if (!readNumber(t_, i, a)) return false;
        c_.edits.set(t_, i, ocs_.angleRad(a));
        return true;
      }
      default:
        return true;
    }
  }

  bool vertex(std::size_t& i) {
    Vec3 p;
    bool hasZ = false;
    if (!readPoint(t_, i, p, hasZ)) return false;
    p.z = elevation_;
    c_.edits.setPoint2d(t_, i, ocs_.vertex(p));
    ++i;
    return true;
  }

  bool direction(std::size_t& i) {
    Vec3 d;
    bool hasZ = false;
    if (!readPoint(t_, i, d, hasZ)) return false;
    d.z = 0.0;
    c_.edits.setPoint2d(t_, i, ocs_.direction(d));
    ++i;
    return true;
  }

  bool angle(std::size_t i) {
    double a = 0.0;
    if (!readNumber(t_, i, a)) return false;
    c_.edits.set(t_, i, ocs_.angleDeg(a));
    return true;
  }

  bool scaled(std::size_t i) {
    double v = 0.0;
    if (!readNumber(t_, i, v)) return false;
    c_.edits.set(t_, i, v * c_.kind.scale);
    return true;
  }

  // Pattern base points and offsets are stored as two single values (43/44, 45/46), not as a point.
  bool patternPair(std::size_t& i, bool isPoint) {
    if (i + 1 >= t_.size() || t_.code(i + 1) != t_.code(i) + 1) return false;
    Vec3 v;
    if (!readNumber(t_, i, v.x) || !readNumber(t_, i + 1, v.y)) return false;
    Vec3 r;
    if (isPoint) {
      v.z = elevation_;
      r = ocs_.vertex(v);
    } else {
      r = ocs_.direction(v);
    }
    c_.edits.set(t_, i, r.x);
    c_.edits.set(t_, i + 1, r.y);
    ++i;
    return true;
  }

  // Arc edge: 10/20 center, 40 radius, 50/51 angles, 73 counter-clockwise flag. A clockwise edge stores its
  // angles mirrored; they are turned as the counter-clockwise arc they describe.
  bool arcEdge(std::size_t& i, std::size_t end) {
    std::size_t center = kNone, radius = kNone, start = kNone, stop = kNone, ccwAt = kNone;
    std::size_t j = i + 1;
    for (; j < end; ++j) {
      const int code = t_.code(j);
      if (code == 72 || code == 92 || code == 97 || code == 75) break;
      if (code == 10 && center == kNone) center = j;
      if (code == 40 && radius == kNone) radius = j;
      if (code == 50 && start == kNone) start = j;
      if (code == 51 && stop == kNone) stop = j;
      if (code == 73 && ccwAt == kNone) ccwAt = j;
    }
    double r = 0.0, s = 0.0, e = 0.0;
    if (!readOptional(t_, radius, 0.0, r) || !readOptional(t_, start, 0.0, s) || !readOptional(t_, stop, 360.0, e))
      return false;
    const bool ccw = ccwAt == kNone || t_.integer(ccwAt).value_or(1) != 0;
    if (center != kNone) {
      std::size_t k = center;
      if (!vertex(k)) return false;
    }
    if (radius != kNone) c_.edits.set(t_, radius, ocs_.length({r, 0.0, 0.0}));
    double a = ccw ? s : 360.0 - e, b = ccw ? e : 360.0 - s;
    const double span = b - a;
    const bool full = std::fabs(std::fabs(span) - 360.0) <= 1e-9 || (std::fabs(span) >= 360.0);
    a = ocs_.angleDeg(a);
    b = ocs_.angleDeg(b);
    double newStart = ccw ? a : 360.0 - b, newEnd = ccw ? b : 360.0 - a;
    // A full circle keeps its span; only its seam turns.
    newStart = wrapDeg(full ? (ccw ? a : -a) : newStart);
    newEnd = full ? newStart + 360.0 : wrapDeg(newEnd);
    if (start != kNone) c_.edits.set(t_, start, newStart);
    if (stop != kNone) c_.edits.set(t_, stop, newEnd);
    i = j - 1;
    return true;
  }

  TagList& t_;
  const Context& c_;
  const OcsTransform& ocs_;
  double elevation_;
  bool inBoundary_ = true;
  bool polylinePath_ = false;
  long long edge_ = kNoEdge;
};

// Which hatches survive a matrix that is not a similarity: lines, splines and straight polyline paths with a
// solid fill. Arcs, ellipses, bulges and pattern lines would need a different kind of geometry.
S nonUniformAnswer(const TagList& t, const CodeIndex& idx) {
  if (!idx.has(70) || t.integer(idx[70]).value_or(0) != 1) return S::CannotScaleNonUniformly;
  bool polyline = false;
  for (std::size_t i = 0; i < idx.end(); ++i) {
    const int code = t.code(i);
    if (code == 75) break;
    if (code == 92) polyline = (t.integer(i).value_or(0) & kPolylinePath) != 0;
    if (code == 72 && !polyline) {
      const long long edge = t.integer(i).value_or(0);
      if (edge == kArcEdge || edge == kEllipseEdge) return S::CannotScaleNonUniformly;
    }
    if (code == 42 && polyline) {
      double b = 0.0;
      if (!readNumber(t, i, b)) return S::InvalidData;
      if (b != 0.0) return S::CannotScaleNonUniformly;
    }
  }
  return S::Ok;
}

}  // namespace

TransformStatus transformHatch(Entity& e, const Context& c) {
  TagList& t = e.tags;
  const CodeIndex idx(t);
  if (!c.kind.similarity)
    if (const S s = nonUniformAnswer(t, idx); s != S::Ok) return s;
  Vec3 extrusion, level;
  bool levelZ = false;
  if (!readExtrusion(t, idx, extrusion)) return S::InvalidData;
  if (idx.has(10) && !readPoint(t, idx[10], level, levelZ)) return S::InvalidData;
  const OcsTransform ocs(c.m, extrusion);
  const double elevation = level.z;
  // The boundary starts with the path count; everything before it is the hatch's own header.
  const std::size_t paths = idx.has(91) ? idx[91] + 1 : idx.end();
  HatchPlan plan(t, c, ocs, elevation);
  if (!plan.run(paths, idx.end())) return S::InvalidData;
  if (idx.has(10) && idx[10] < paths)
    c.edits.setPoint(t, idx[10], {0.0, 0.0, ocs.vertex({0.0, 0.0, elevation}).z}, levelZ);
  const std::size_t afterLevel = idx.has(10) ? idx[10] + (levelZ ? 3 : 2) : idx.end();
  planExtrusion(t, idx[210], afterLevel, ocs.newExtrusion(), c.edits);
  return S::Ok;
}

}  // namespace dxf::xform
