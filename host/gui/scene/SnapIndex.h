// Finds the snap point nearest to the cursor among the hundreds of thousands a survey drawing has: the points
// are sorted into a uniform grid over the drawing, and a query looks at the cells within its radius only,
// nearest ring first.
#pragma once

#include "host/gui/scene/Scene.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace host::gui {

class SnapIndex {
 public:
  SnapIndex() = default;
  explicit SnapIndex(const std::vector<SnapPoint>& points);

  // The point nearest to `at` within `radius` (drawing units), or nothing.
  std::optional<SnapPoint> nearest(Vec2 at, double radius) const;
  std::size_t size() const { return points_.size(); }

 private:
  std::vector<SnapPoint> points_;  // sorted by cell
  std::vector<std::uint32_t> cellStart_;  // cells_ + 1 entries into points_
  Box box_;
  double cell_ = 1.0;
  int columns_ = 0, rows_ = 0;
};

}  // namespace host::gui
