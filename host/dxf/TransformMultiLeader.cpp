// Multileaders: the context data (content base point, text or block content, the leaders' plane, each
// leader with its dogleg and leader lines) and the multileader's own copies of sizes and the block's
// rotation and scale. Arrows, landing gaps and text heights are sizes in the drawing: they grow with it, so
// only a similarity keeps them meaningful.
#include "host/dxf/TransformTypes.h"

#include <string_view>

namespace dxf::xform {

namespace {

using S = TransformStatus;

enum class Level { Entity, Context, Leader, LeaderLine };

class MultiLeaderPlan {
 public:
  MultiLeaderPlan(TagList& t, const Context& c) : t_(t), c_(c) {}

  S run(std::size_t from) {
    if (!readNormals(from)) return S::InvalidData;
    Level level = Level::Entity;
    for (std::size_t i = from; i < t_.size() && t_.code(i) < 1000; ++i) {
      const int code = t_.code(i);
      if (code >= 300 && code <= 305) {
        level = next(level, code);
        continue;
      }
      const std::size_t used = level == Level::Context    ? context(i)
                               : level == Level::Leader   ? leader(i)
                               : level == Level::LeaderLine ? leaderLine(i)
                                                           : entity(i);
      if (used == 0) return S::InvalidData;
      i += used - 1;
    }
    return S::Ok;
  }

 private:
  // The brackets of the nested data; the same codes carry texts elsewhere (302 an attribute's value).
  static Level next(Level level, int code) {
    if (level == Level::Entity && code == 300) return Level::Context;        // CONTEXT_DATA{
    if (level == Level::Context && code == 301) return Level::Entity;        // }
    if (level == Level::Context && code == 302) return Level::Leader;        // LEADER{
    if (level == Level::Leader && code == 303) return Level::Context;        // }
    if (level == Level::Leader && code == 304) return Level::LeaderLine;     // LEADER_LINE{
    if (level == Level::LeaderLine && code == 305) return Level::Leader;     // }
    return level;
  }

  // The text's and the block's normals, needed before their rotations are met.
  bool readNormals(std::size_t from) {
    Level level = Level::Entity;
    for (std::size_t i = from; i < t_.size() && t_.code(i) < 1000; ++i) {
      const int code = t_.code(i);
      if (code >= 300 && code <= 305) level = next(level, code);
      if (level != Level::Context || (code != 11 && code != 14)) continue;
      bool hasZ = false;
      Vec3& n = code == 11 ? textNormal_ : blockNormal_;
      if (!readPoint(t_, i, n, hasZ) || n.lengthSquared() == 0.0) return false;
      hasBlock_ = hasBlock_ || code == 14;
    }
    return true;
  }

  std::size_t point(std::size_t i) {
    Vec3 p;
    bool hasZ = false;
    if (!readPoint(t_, i, p, hasZ)) return 0;
    c_.edits.setPoint(t_, i, c_.m.point(p), hasZ);
    return hasZ ? 3 : 2;
  }
  std::size_t direction(std::size_t i) {
    Vec3 d;
    bool hasZ = false;
    if (!readPoint(t_, i, d, hasZ)) return 0;
    c_.edits.setPoint(t_, i, c_.m.direction(d).normalized(), hasZ);
    return hasZ ? 3 : 2;
  }
  std::size_t normal(std::size_t i, const Vec3& n) {
    c_.edits.setPoint(t_, i, OcsTransform(c_.m, n).newExtrusion(), pointHasZ(t_, i));
    return pointHasZ(t_, i) ? 3 : 2;
  }
  std::size_t scaled(std::size_t i) {
    double v = 0.0;
    if (!readNumber(t_, i, v)) return 0;
    c_.edits.set(t_, i, v * c_.kind.scale);
    return 1;
  }
  std::size_t angle(std::size_t i, const Vec3& n) {
    double a = 0.0;
    if (!readNumber(t_, i, a)) return 0;
    c_.edits.set(t_, i, OcsTransform(c_.m, n).angleRad(a));
    return 1;
  }
  std::size_t scaleVector(std::size_t i) {
    Vec3 v;
    bool hasZ = false;
    if (!readPoint(t_, i, v, hasZ)) return 0;
    c_.edits.setPoint(t_, i, v * c_.kind.scale, hasZ);
    return hasZ ? 3 : 2;
  }

  std::size_t context(std::size_t i) {
    switch (t_.code(i)) {
      case 10: case 12: case 15: case 110: return point(i);  // base point, text and block location, plane origin
      case 13: case 111: case 112: return direction(i);       // text direction, the plane's axes
      case 11: return normal(i, textNormal_);
      case 14: return normal(i, blockNormal_);
      case 16: return scaleVector(i);
      case 42: return angle(i, textNormal_);
      case 46: return angle(i, blockNormal_);
      // Overall scale, text height, arrow size, landing gap, text width and height, columns.
      case 40: case 41: case 140: case 145: case 43: case 44: case 142: case 143: case 144: return scaled(i);
      case 47: return blockMatrix(i);
      case 297: {  // the plane is seen from below
        const long long reversed = t_.integer(i).value_or(0);
        if (mirrors(c_.m)) c_.edits.set(t_, i, reversed != 0 ? 0.0 : 1.0);
        return 1;
      }
      default: return 1;
    }
  }

  std::size_t leader(std::size_t i) {
    switch (t_.code(i)) {
      case 10: case 12: case 13: return point(i);  // last leader point, breaks
      case 11: return direction(i);                // dogleg
      case 40: return scaled(i);                   // dogleg length
      default: return 1;
    }
  }

  std::size_t leaderLine(std::size_t i) {
    switch (t_.code(i)) {
      case 10: case 11: case 12: return point(i);  // vertices, breaks
      default: return 1;
    }
  }

  std::size_t entity(std::size_t i) {
    switch (t_.code(i)) {
      case 41: case 42: case 45: return scaled(i);  // dogleg length, arrow size, overall scale
      case 10: return hasBlock_ ? scaleVector(i) : (pointHasZ(t_, i) ? 3 : 2);  // block scale
      case 43: return hasBlock_ ? angle(i, blockNormal_) : 1;                  // block rotation
      default: return 1;
    }
  }

  // The block content's own 4x4 matrix, written row by row with its translation in the last row (the
  // transpose of ours): the drawing's matrix goes after it.
  std::size_t blockMatrix(std::size_t i) {
    if (i + 16 > t_.size()) return 0;
    double b[4][4];
    for (int k = 0; k < 16; ++k)
      if (t_.code(i + k) != 47 || !readNumber(t_, i + k, b[k / 4][k % 4])) return 0;
    double m[4][4] = {};
    for (int r = 0; r < 3; ++r) {
      for (int col = 0; col < 3; ++col) m[r][col] = c_.m.l[r][col];
      m[r][3] = c_.m.t[r];
    }
    m[3][3] = 1.0;
    for (int r = 0; r < 4; ++r)
      for (int col = 0; col < 4; ++col) {
        double v = 0.0;
        for (int k = 0; k < 4; ++k) v += b[r][k] * m[col][k];
        c_.edits.set(t_, i + static_cast<std::size_t>(r * 4 + col), v);
      }
    return 16;
  }

  TagList& t_;
  const Context& c_;
  Vec3 textNormal_ = kWorldZ, blockNormal_ = kWorldZ;
  bool hasBlock_ = false;
};

}  // namespace

TransformStatus transformMultiLeader(Entity& e, const Context& c) {
  if (!c.kind.similarity) return S::CannotScaleNonUniformly;
  const std::size_t own = subclassMarker(e.tags, "AcDbMLeader");
  if (own == kNone) return S::InvalidData;
  return MultiLeaderPlan(e.tags, c).run(own + 1);
}

}  // namespace dxf::xform
