// Polylines, ellipses, splines and hatch boundaries as runs of points.
#include "host/gui/scene/SceneWriter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace host::gui {
namespace {

constexpr double kTwoPi = 2.0 * std::numbers::pi;

// The vertices of a run with their bulges, closed or not, tessellated; snap points on the way.
void writeBulgedRun(SceneWriter& out, const std::vector<Vec3>& vertices, const std::vector<double>& bulges,
                    bool closed, const Affine& within) {
  if (vertices.empty()) return;
  std::vector<Vec3> points;
  const std::size_t n = vertices.size();
  const std::size_t segments = closed ? n : n - 1;
  for (std::size_t i = 0; i < n; ++i) {
    out.snap(vertices[i], SnapKind::Endpoint, within);
    if (i < segments) {
      const Vec3& a = vertices[i];
      const Vec3& b = vertices[(i + 1) % n];
      const double bulge = i < bulges.size() ? bulges[i] : 0.0;
      appendBulge(points, a, b, bulge);
      if (bulge == 0.0) out.snap((a + b) * 0.5, SnapKind::Midpoint, within);
    } else {
      points.push_back(vertices[i]);
    }
  }
  out.path(points, closed, within);
}

double angleParameter(double a) { return std::isfinite(a) ? a : 0.0; }

}  // namespace

void writeLightPolyline(SceneWriter& out, const dxf::Entity& e) {
  const Affine ocs = objectSystem(extrusion(e));
  const double elevation = number(e, 38, 0.0);
  std::vector<Vec3> vertices;
  std::vector<double> bulges;
  for (std::size_t i = 0; i < e.tags.size(); ++i) {
    const int code = e.tags.code(i);
    const double v = e.tags.number(i).value_or(0.0);
    if (code == 10) {
      vertices.push_back({v, 0.0, elevation});
      bulges.push_back(0.0);
    } else if (code == 20 && !vertices.empty()) {
      vertices.back().y = v;
    } else if (code == 42 && !bulges.empty()) {
      bulges.back() = v;
    }
  }
  const bool closed = (static_cast<long long>(number(e, 70, 0)) & 1) != 0;
  writeBulgedRun(out, vertices, bulges, closed, ocs);
}

void writePolyline(SceneWriter& out, const dxf::Entity& e) {
  const long long flags = static_cast<long long>(number(e, 70, 0));
  const bool spatial = (flags & (8 | 16 | 64)) != 0;  // 3D polyline, mesh or polyface: world coordinates
  const Affine system = spatial ? Affine{} : objectSystem(extrusion(e));
  std::vector<Vec3> vertices;
  std::vector<double> bulges;
  std::vector<const dxf::Entity*> faces;
  for (const dxf::Entity& v : e.children) {
    if (v.type != "VERTEX") continue;
    const long long vflags = static_cast<long long>(number(v, 70, 0));
    if ((vflags & 128) != 0 && (vflags & 64) == 0) {
      faces.push_back(&v);  // a polyface's face record: indexes into the vertices
      continue;
    }
    if ((vflags & 16) != 0) continue;  // the frame of a spline-fit polyline is not drawn
    vertices.push_back(point(v, 10));
    bulges.push_back(number(v, 42, 0.0));
  }
  if ((flags & 64) != 0) {
    for (const dxf::Entity* f : faces) {
      std::vector<Vec3> edge;
      for (int code : {71, 72, 73, 74}) {
        const long long index = std::llabs(static_cast<long long>(number(*f, code, 0)));
        if (index >= 1 && index <= static_cast<long long>(vertices.size()))
          edge.push_back(vertices[static_cast<std::size_t>(index - 1)]);
      }
      out.path(edge, true, system);
    }
    for (const Vec3& v : vertices) out.snap(v, SnapKind::Endpoint, system);
    return;
  }
  if ((flags & 16) != 0) {
    // A mesh: M rows of N vertices, drawn as its rows and columns.
    const long long m = static_cast<long long>(number(e, 71, 0)), n = static_cast<long long>(number(e, 72, 0));
    if (m > 0 && n > 0 && static_cast<std::size_t>(m * n) <= vertices.size()) {
      for (long long r = 0; r < m; ++r)
        out.path({vertices.begin() + r * n, vertices.begin() + (r + 1) * n}, (flags & 32) != 0, system);
      for (long long c = 0; c < n; ++c) {
        std::vector<Vec3> column;
        for (long long r = 0; r < m; ++r) column.push_back(vertices[static_cast<std::size_t>(r * n + c)]);
        out.path(column, (flags & 1) != 0, system);
      }
      return;
    }
  }
  if (!spatial) {
    const double elevation = point(e, 10).z;
    for (Vec3& v : vertices) v.z = elevation;
  }
  writeBulgedRun(out, vertices, spatial ? std::vector<double>{} : bulges, (flags & 1) != 0, system);
}

void writeEllipse(SceneWriter& out, const dxf::Entity& e) {
  const Vec3 centre = point(e, 10);
  const Vec3 major = point(e, 11, Vec3{1, 0, 0});
  const Vec3 normal = normalised(extrusion(e), Vec3{0, 0, 1});
  const double ratio = number(e, 40, 1.0);
  const Vec3 minor = cross(normal, major) * ratio;
  double t0 = angleParameter(number(e, 41, 0.0)), t1 = angleParameter(number(e, 42, kTwoPi));
  while (t1 <= t0) t1 += kTwoPi;
  if (t1 - t0 > kTwoPi) t1 = t0 + kTwoPi;
  const int steps = std::clamp(static_cast<int>(std::ceil((t1 - t0) / (kTwoPi / 72.0))), 2, 720);
  std::vector<Vec3> points;
  for (int i = 0; i <= steps; ++i) {
    const double t = t0 + (t1 - t0) * i / steps;
    points.push_back(centre + major * std::cos(t) + minor * std::sin(t));
  }
  const bool full = t1 - t0 >= kTwoPi - 1e-9;
  out.path(points, full, Affine{});
  out.snap(centre, SnapKind::Centre, Affine{});
  if (!full) {
    out.snap(points.front(), SnapKind::Endpoint, Affine{});
    out.snap(points.back(), SnapKind::Endpoint, Affine{});
  }
}

namespace {

// A point of the NURBS curve at parameter u (de Boor in homogeneous coordinates).
Vec3 deBoor(int degree, const std::vector<double>& knots, const std::vector<Vec3>& control,
            const std::vector<double>& weights, double u) {
  const int n = static_cast<int>(control.size());
  int span = degree;
  while (span < n - 1 && u >= knots[static_cast<std::size_t>(span + 1)]) ++span;
  struct H {
    double x, y, z, w;
  };
  std::vector<H> d(static_cast<std::size_t>(degree + 1));
  for (int j = 0; j <= degree; ++j) {
    const auto& p = control[static_cast<std::size_t>(span - degree + j)];
    const double w = weights[static_cast<std::size_t>(span - degree + j)];
    d[static_cast<std::size_t>(j)] = {p.x * w, p.y * w, p.z * w, w};
  }
  for (int r = 1; r <= degree; ++r) {
    for (int j = degree; j >= r; --j) {
      const double left = knots[static_cast<std::size_t>(span - degree + j)];
      const double right = knots[static_cast<std::size_t>(span + 1 + j - r)];
      const double alpha = right - left > 0 ? (u - left) / (right - left) : 0.0;
      H& a = d[static_cast<std::size_t>(j)];
      const H& b = d[static_cast<std::size_t>(j - 1)];
      a = {b.x + alpha * (a.x - b.x), b.y + alpha * (a.y - b.y), b.z + alpha * (a.z - b.z), b.w + alpha * (a.w - b.w)};
    }
  }
  const H& h = d[static_cast<std::size_t>(degree)];
  return h.w != 0.0 ? Vec3{h.x / h.w, h.y / h.w, h.z / h.w} : Vec3{h.x, h.y, h.z};
}

}  // namespace

void writeSpline(SceneWriter& out, const dxf::Entity& e) {
  std::vector<double> knots, weights;
  std::vector<Vec3> control, fit;
  for (std::size_t i = 0; i < e.tags.size(); ++i) {
    const int code = e.tags.code(i);
    const double v = e.tags.number(i).value_or(0.0);
    if (code == 40) knots.push_back(v);
    if (code == 41) weights.push_back(v);
    if (code == 10) control.push_back({v, 0, 0});
    if (code == 20 && !control.empty()) control.back().y = v;
    if (code == 30 && !control.empty()) control.back().z = v;
    if (code == 11) fit.push_back({v, 0, 0});
    if (code == 21 && !fit.empty()) fit.back().y = v;
    if (code == 31 && !fit.empty()) fit.back().z = v;
  }
  const int degree = static_cast<int>(number(e, 71, 3));
  const bool closed = (static_cast<long long>(number(e, 70, 0)) & 1) != 0;
  const std::size_t n = control.size();
  const bool valid = degree >= 1 && degree <= 11 && n > static_cast<std::size_t>(degree) &&
                     knots.size() == n + static_cast<std::size_t>(degree) + 1 &&
                     std::is_sorted(knots.begin(), knots.end());
  if (!valid) {
    // Without a usable definition the fit points (or the frame) show where the curve runs.
    const std::vector<Vec3>& run = fit.size() >= 2 ? fit : control;
    out.path(run, closed, Affine{});
    if (!run.empty()) {
      out.snap(run.front(), SnapKind::Endpoint, Affine{});
      out.snap(run.back(), SnapKind::Endpoint, Affine{});
    }
    return;
  }
  if (weights.size() != n) weights.assign(n, 1.0);
  const double u0 = knots[static_cast<std::size_t>(degree)], u1 = knots[n];
  const int steps = static_cast<int>(std::min<std::size_t>(4000, std::max<std::size_t>(16, n * 8)));
  std::vector<Vec3> points;
  for (int i = 0; i <= steps; ++i) points.push_back(deBoor(degree, knots, control, weights, u0 + (u1 - u0) * i / steps));
  out.path(points, closed, Affine{});
  out.snap(points.front(), SnapKind::Endpoint, Affine{});
  out.snap(points.back(), SnapKind::Endpoint, Affine{});
}

namespace {

// Walks a hatch's tags in order, as its boundary data is a sequence whose meaning depends on what came before.
class HatchReader {
 public:
  explicit HatchReader(const dxf::Entity& e) : e_(e) {}
  bool seek(int code) {
    while (i_ < e_.tags.size() && e_.tags.code(i_) != code) ++i_;
    return i_ < e_.tags.size();
  }
  // The value of the next tag if it has this code.
  bool take(int code, double& value) {
    if (i_ >= e_.tags.size() || e_.tags.code(i_) != code) return false;
    value = e_.tags.number(i_).value_or(0.0);
    ++i_;
    return true;
  }
  double need(int code) {
    double v = 0.0;
    // A value out of order: look ahead a little rather than give up on the whole boundary.
    for (int tries = 0; tries < 4 && !take(code, v); ++tries) ++i_;
    return v;
  }
  bool atEnd() const { return i_ >= e_.tags.size(); }

 private:
  const dxf::Entity& e_;
  std::size_t i_ = 0;
};

constexpr double kDegree = std::numbers::pi / 180.0;

}  // namespace

void writeHatch(SceneWriter& out, const dxf::Entity& e) {
  const Affine ocs = objectSystem(extrusion(e));
  const double elevation = point(e, 10).z;
  const bool solid = number(e, 70, 0) == 1.0;
  HatchReader r(e);
  if (!r.seek(91)) return;
  const long long paths = static_cast<long long>(r.need(91));
  for (long long p = 0; p < paths && p < 100000 && !r.atEnd(); ++p) {
    const long long type = static_cast<long long>(r.need(92));
    std::vector<Vec3> points;
    if ((type & 2) != 0) {
      const bool hasBulge = r.need(72) != 0.0;
      const bool closed = r.need(73) != 0.0;
      (void)closed;
      const long long count = static_cast<long long>(r.need(93));
      std::vector<Vec3> vertices;
      std::vector<double> bulges;
      for (long long v = 0; v < count && v < 1000000 && !r.atEnd(); ++v) {
        const double x = r.need(10), y = r.need(20);
        double b = 0.0;
        if (hasBulge) r.take(42, b);
        vertices.push_back({x, y, elevation});
        bulges.push_back(b);
      }
      for (std::size_t v = 0; v < vertices.size(); ++v)
        appendBulge(points, vertices[v], vertices[(v + 1) % vertices.size()], bulges[v]);
    } else {
      const long long edges = static_cast<long long>(r.need(93));
      for (long long k = 0; k < edges && k < 1000000 && !r.atEnd(); ++k) {
        const int edge = static_cast<int>(r.need(72));
        if (edge == 1) {
          const double x0 = r.need(10), y0 = r.need(20), x1 = r.need(11), y1 = r.need(21);
          points.push_back({x0, y0, elevation});
          points.push_back({x1, y1, elevation});
        } else if (edge == 2 || edge == 3) {
          const double cx = r.need(10), cy = r.need(20);
          double mx = 0, my = 0;
          if (edge == 3) {
            mx = r.need(11);
            my = r.need(21);
          }
          const double radiusOrRatio = r.need(40);
          double a0 = r.need(50) * kDegree, a1 = r.need(51) * kDegree;
          const bool ccw = r.need(73) != 0.0;
          if (!ccw) {
            // Clockwise edges store their angles mirrored.
            std::swap(a0, a1);
            a0 = -a0;
            a1 = -a1;
          }
          while (a1 <= a0) a1 += kTwoPi;
          std::vector<Vec3> arc;
          if (edge == 2) {
            appendArc(arc, {cx, cy, elevation}, radiusOrRatio, a0, a1);
          } else {
            const double major = std::hypot(mx, my), turn = std::atan2(my, mx);
            for (int s = 0; s <= 72; ++s) {
              const double t = a0 + (a1 - a0) * s / 72;
              const double lx = major * std::cos(t), ly = major * radiusOrRatio * std::sin(t);
              arc.push_back({cx + lx * std::cos(turn) - ly * std::sin(turn),
                             cy + lx * std::sin(turn) + ly * std::cos(turn), elevation});
            }
          }
          if (!ccw) std::reverse(arc.begin(), arc.end());
          points.insert(points.end(), arc.begin(), arc.end());
        } else if (edge == 4) {
          // A spline edge: its control points stand for the curve.
          r.need(94);
          double ignored = 0;
          r.take(73, ignored);
          r.take(74, ignored);
          const long long knots = static_cast<long long>(r.need(95)), ctrl = static_cast<long long>(r.need(96));
          for (long long j = 0; j < knots && j < 100000; ++j) r.need(40);
          for (long long j = 0; j < ctrl && j < 100000; ++j) {
            const double x = r.need(10), y = r.need(20);
            points.push_back({x, y, elevation});
            double w = 0;
            r.take(42, w);
          }
        } else {
          break;  // an edge type this reader does not know: the rest of this boundary cannot be read
        }
      }
    }
    double sources = 0;
    if (r.take(97, sources))
      for (long long s = 0; s < static_cast<long long>(sources) && s < 100000; ++s) r.need(330);
    out.path(points, true, ocs, solid);
  }
}

}  // namespace host::gui
