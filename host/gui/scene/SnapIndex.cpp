#include "host/gui/scene/SnapIndex.h"

#include <algorithm>
#include <cmath>

namespace host::gui {
namespace {

// Cells hold a handful of points each on average; the grid never exceeds this many cells.
constexpr double kPointsPerCell = 4.0;
constexpr double kMaxCells = 4.0e6;

}  // namespace

SnapIndex::SnapIndex(const std::vector<SnapPoint>& points) {
  for (const SnapPoint& p : points) box_.add(p.at);
  if (box_.empty()) return;
  const double w = std::max(box_.maxX - box_.minX, 1e-9), h = std::max(box_.maxY - box_.minY, 1e-9);
  const double cells = std::clamp(static_cast<double>(points.size()) / kPointsPerCell, 1.0, kMaxCells);
  cell_ = std::max(std::sqrt(w * h / cells), std::max(w, h) / 2048.0);
  columns_ = static_cast<int>(std::min(2048.0, std::floor(w / cell_) + 1));
  rows_ = static_cast<int>(std::min(2048.0, std::floor(h / cell_) + 1));
  auto cellOf = [&](const SnapPoint& p) {
    const int cx = std::clamp(static_cast<int>((p.at.x - box_.minX) / cell_), 0, columns_ - 1);
    const int cy = std::clamp(static_cast<int>((p.at.y - box_.minY) / cell_), 0, rows_ - 1);
    return static_cast<std::size_t>(cy) * static_cast<std::size_t>(columns_) + static_cast<std::size_t>(cx);
  };
  // Counting sort by cell.
  const std::size_t cellCount = static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_);
  cellStart_.assign(cellCount + 1, 0);
  for (const SnapPoint& p : points) ++cellStart_[cellOf(p) + 1];
  for (std::size_t i = 1; i <= cellCount; ++i) cellStart_[i] += cellStart_[i - 1];
  points_.resize(points.size());
  std::vector<std::uint32_t> fill(cellStart_.begin(), cellStart_.end() - 1);
  for (const SnapPoint& p : points) points_[fill[cellOf(p)]++] = p;
}

std::optional<SnapPoint> SnapIndex::nearest(Vec2 at, double radius) const {
  if (points_.empty() || !(radius > 0) || !std::isfinite(at.x) || !std::isfinite(at.y)) return std::nullopt;
  const double x = (at.x - box_.minX) / cell_, y = (at.y - box_.minY) / cell_;
  const double reach = radius / cell_;
  // Clamped as doubles first: a cursor far outside the grid must not overflow the cell numbers.
  auto low = [](double v, int n) { return static_cast<int>(std::clamp(std::floor(v), 0.0, static_cast<double>(n))); };
  auto high = [](double v, int n) {
    return static_cast<int>(std::clamp(std::floor(v), -1.0, static_cast<double>(n - 1)));
  };
  const int x0 = low(x - reach, columns_), x1 = high(x + reach, columns_);
  const int y0 = low(y - reach, rows_), y1 = high(y + reach, rows_);
  const SnapPoint* best = nullptr;
  double bestDistance = radius * radius;
  for (int cy = y0; cy <= y1; ++cy) {
    for (int cx = x0; cx <= x1; ++cx) {
      const std::size_t cell = static_cast<std::size_t>(cy) * static_cast<std::size_t>(columns_) +
                               static_cast<std::size_t>(cx);
      for (std::uint32_t i = cellStart_[cell]; i < cellStart_[cell + 1]; ++i) {
        const SnapPoint& p = points_[i];
        const double d = (p.at.x - at.x) * (p.at.x - at.x) + (p.at.y - at.y) * (p.at.y - at.y);
        // At equal distance a point of a drawing (node) or an end wins over a midpoint.
        if (d < bestDistance || (d == bestDistance && best != nullptr && p.kind > best->kind)) {
          best = &p;
          bestDistance = d;
        }
      }
    }
  }
  if (best == nullptr) return std::nullopt;
  return *best;
}

}  // namespace host::gui
