#include "host/gui/scene/Raster.h"

#include <algorithm>
#include <cmath>

namespace host::gui {

Raster::Raster(int width, int height, Rgb background)
    : width_(std::max(1, width)), height_(std::max(1, height)),
      pixels_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_), background) {}

void Raster::line(Vec2 a, Vec2 b, Rgb colour) {
  // Liang-Barsky clipping against the raster (plus a pixel) in doubles, before anything becomes an integer.
  const double xmin = -1, ymin = -1, xmax = width_, ymax = height_;
  double t0 = 0.0, t1 = 1.0;
  const double dx = b.x - a.x, dy = b.y - a.y;
  const double p[] = {-dx, dx, -dy, dy};
  const double q[] = {a.x - xmin, xmax - a.x, a.y - ymin, ymax - a.y};
  for (int i = 0; i < 4; ++i) {
    if (p[i] == 0.0) {
      if (q[i] < 0) return;
      continue;
    }
    const double r = q[i] / p[i];
    if (p[i] < 0) {
      if (r > t1) return;
      t0 = std::max(t0, r);
    } else {
      if (r < t0) return;
      t1 = std::min(t1, r);
    }
  }
  if (!(t0 <= t1)) return;
  int x0 = static_cast<int>(std::lround(a.x + t0 * dx)), y0 = static_cast<int>(std::lround(a.y + t0 * dy));
  const int x1 = static_cast<int>(std::lround(a.x + t1 * dx)), y1 = static_cast<int>(std::lround(a.y + t1 * dy));
  const int sx = x0 < x1 ? 1 : -1, sy = y0 < y1 ? 1 : -1;
  const int ex = std::abs(x1 - x0), ey = -std::abs(y1 - y0);
  int err = ex + ey;
  for (;;) {
    plot(x0, y0, colour);
    if (x0 == x1 && y0 == y1) break;
    const int e2 = 2 * err;
    if (e2 >= ey) {
      err += ey;
      x0 += sx;
    }
    if (e2 <= ex) {
      err += ex;
      y0 += sy;
    }
  }
}

void Raster::fill(const std::vector<Vec2>& outline, Rgb colour) {
  if (outline.size() < 3) return;
  double top = outline[0].y, bottom = outline[0].y;
  for (const Vec2& p : outline) {
    top = std::min(top, p.y);
    bottom = std::max(bottom, p.y);
  }
  const int y0 = static_cast<int>(std::max(0.0, std::ceil(top - 0.5)));
  const int y1 = static_cast<int>(std::min(height_ - 1.0, std::floor(bottom - 0.5)));
  std::vector<double> crossings;
  for (int y = y0; y <= y1; ++y) {
    const double cy = y + 0.5;
    crossings.clear();
    for (std::size_t i = 0, j = outline.size() - 1; i < outline.size(); j = i++) {
      const Vec2 &a = outline[j], &b = outline[i];
      if ((a.y <= cy) != (b.y <= cy)) crossings.push_back(a.x + (cy - a.y) / (b.y - a.y) * (b.x - a.x));
    }
    std::sort(crossings.begin(), crossings.end());
    // Even-odd rule: the islands of a hatch stay open.
    for (std::size_t k = 0; k + 1 < crossings.size(); k += 2) {
      const int xa = static_cast<int>(std::max(0.0, std::ceil(crossings[k] - 0.5)));
      const int xb = static_cast<int>(std::min(width_ - 1.0, std::floor(crossings[k + 1] - 0.5)));
      for (int x = xa; x <= xb; ++x) pixels_[static_cast<std::size_t>(y) * width_ + x] = colour;
    }
  }
}

void Raster::cross(Vec2 at, int arm, Rgb colour) {
  if (!(at.x > -arm - 1 && at.y > -arm - 1 && at.x < width_ + arm && at.y < height_ + arm)) return;
  const int x = static_cast<int>(std::lround(at.x)), y = static_cast<int>(std::lround(at.y));
  for (int d = -arm; d <= arm; ++d) {
    plot(x + d, y, colour);
    plot(x, y + d, colour);
  }
}

std::vector<const Label*> drawScene(const Scene& scene, const ViewTransform& view, Raster& raster) {
  const Box visible = view.visible();
  std::vector<Vec2> screen;
  for (const Path& path : scene.paths) {
    if (!path.box.overlaps(visible)) continue;
    const Vec2* v = scene.vertices.data() + path.first;
    // A path smaller than a pixel is a dot: no need to walk its vertices.
    const double span = std::max(path.box.maxX - path.box.minX, path.box.maxY - path.box.minY) * view.scale();
    if (span < 1.0) {
      const Vec2 p = view.toScreen(v[0]);
      raster.line(p, p, path.colour);
      continue;
    }
    if (path.filled) {
      screen.clear();
      for (std::uint32_t i = 0; i < path.count; ++i) screen.push_back(view.toScreen(v[i]));
      raster.fill(screen, path.colour);
    }
    Vec2 previous = view.toScreen(v[0]);
    for (std::uint32_t i = 1; i < path.count; ++i) {
      const Vec2 next = view.toScreen(v[i]);
      raster.line(previous, next, path.colour);
      previous = next;
    }
    if (path.closed) raster.line(previous, view.toScreen(v[0]), path.colour);
  }
  for (const Node& node : scene.nodes) {
    const Vec2 p = view.toScreen(node.at);
    raster.cross(p, 2, node.colour);
  }
  std::vector<const Label*> readable;
  for (const Label& label : scene.labels) {
    if (!label.box.overlaps(visible)) continue;
    const double pixels = label.height * view.scale();
    if (pixels >= kReadableTextPixels) {
      readable.push_back(&label);
      continue;
    }
    const double length = 0.6 * label.height * static_cast<double>(label.text.size());
    const Vec2 end{label.at.x + length * std::cos(label.rotation), label.at.y + length * std::sin(label.rotation)};
    raster.line(view.toScreen(label.at), view.toScreen(end), label.colour);
  }
  return readable;
}

}  // namespace host::gui
