#include "host/gui/scene/ViewTransform.h"

#include <algorithm>
#include <cmath>

namespace host::gui {
namespace {

// Beyond these scales a double no longer tells neighbouring pixels apart (or a whole continent is a pixel).
constexpr double kMinScale = 1e-9, kMaxScale = 1e9;

}  // namespace

void ViewTransform::setSize(int width, int height) {
  width_ = std::max(1, width);
  height_ = std::max(1, height);
}

Box ViewTransform::visible() const {
  Box b;
  b.add(toLocal({0, 0}));
  b.add(toLocal({static_cast<double>(width_), static_cast<double>(height_)}));
  return b;
}

void ViewTransform::zoomTo(const Box& box) {
  if (box.empty()) {
    centre_ = {};
    scale_ = 1.0;
    return;
  }
  centre_ = {(box.minX + box.maxX) / 2, (box.minY + box.maxY) / 2};
  const double w = box.maxX - box.minX, h = box.maxY - box.minY;
  if (w <= 0 && h <= 0) {
    scale_ = 1.0;  // one point: shown at one pixel per unit around it
    return;
  }
  const double margin = 0.95;
  const double sx = w > 0 ? width_ * margin / w : kMaxScale, sy = h > 0 ? height_ * margin / h : kMaxScale;
  scale_ = std::clamp(std::min(sx, sy), kMinScale, kMaxScale);
}

void ViewTransform::zoomAbout(Vec2 anchor, double factor) {
  if (!(factor > 0) || !std::isfinite(factor)) return;
  const Vec2 fixed = toLocal(anchor);
  scale_ = std::clamp(scale_ * factor, kMinScale, kMaxScale);
  // Move the centre so that `fixed` lands on `anchor` again.
  centre_ = {fixed.x - (anchor.x - width_ / 2.0) / scale_, fixed.y + (anchor.y - height_ / 2.0) / scale_};
}

void ViewTransform::panPixels(double dx, double dy) {
  centre_.x -= dx / scale_;
  centre_.y += dy / scale_;
}

}  // namespace host::gui
