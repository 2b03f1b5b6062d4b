// Draws the scene into a plain pixel buffer: lines clipped to the view and stepped pixel by pixel, filled areas
// by scan lines, points as small crosses. Whatever lies outside the view is skipped by its box first, so a
// redraw costs what is visible, not what the drawing holds. Texts large enough to read are left to the caller,
// who has a font; smaller ones show as their base line.
#pragma once

#include "host/gui/scene/Scene.h"
#include "host/gui/scene/ViewTransform.h"

#include <cstdint>
#include <vector>

namespace host::gui {

class Raster {
 public:
  Raster(int width, int height, Rgb background);
  int width() const { return width_; }
  int height() const { return height_; }
  Rgb at(int x, int y) const { return pixels_[static_cast<std::size_t>(y) * width_ + x]; }
  const std::vector<Rgb>& pixels() const { return pixels_; }

  void line(Vec2 a, Vec2 b, Rgb colour);
  void fill(const std::vector<Vec2>& outline, Rgb colour);
  void cross(Vec2 at, int arm, Rgb colour);

 private:
  void plot(int x, int y, Rgb colour) {
    if (x >= 0 && y >= 0 && x < width_ && y < height_) pixels_[static_cast<std::size_t>(y) * width_ + x] = colour;
  }
  int width_, height_;
  std::vector<Rgb> pixels_;
};

// Texts from this height in pixels on are drawn with the font.
inline constexpr double kReadableTextPixels = 6.0;

// Draws what of the scene the view shows; returns the texts to be drawn with a font.
std::vector<const Label*> drawScene(const Scene& scene, const ViewTransform& view, Raster& raster);

}  // namespace host::gui
