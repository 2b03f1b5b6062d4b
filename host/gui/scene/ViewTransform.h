// The mapping between the drawing (local coordinates of the scene) and the pixels of the view: a centre and a
// scale, y pointing up in the drawing and down on the screen. Zooming keeps the point under the cursor in place.
#pragma once

#include "host/gui/scene/Scene.h"

namespace host::gui {

class ViewTransform {
 public:
  void setSize(int width, int height);
  int width() const { return width_; }
  int height() const { return height_; }
  double scale() const { return scale_; }  // pixels per drawing unit
  Vec2 centre() const { return centre_; }

  Vec2 toScreen(Vec2 local) const {
    return {(local.x - centre_.x) * scale_ + width_ / 2.0, height_ / 2.0 - (local.y - centre_.y) * scale_};
  }
  Vec2 toLocal(Vec2 screen) const {
    return {centre_.x + (screen.x - width_ / 2.0) / scale_, centre_.y - (screen.y - height_ / 2.0) / scale_};
  }
  // The part of the drawing the view shows.
  Box visible() const;

  // Shows all of `box` with a margin; an empty or degenerate box is shown at a scale that makes sense.
  void zoomTo(const Box& box);
  // Scales by `factor` (>1 enlarges) keeping the drawing point under screen point `anchor` where it is.
  void zoomAbout(Vec2 anchor, double factor);
  void panPixels(double dx, double dy);
  void centreOn(Vec2 local) { centre_ = local; }

 private:
  int width_ = 1, height_ = 1;
  double scale_ = 1.0;
  Vec2 centre_;
};

}  // namespace host::gui
