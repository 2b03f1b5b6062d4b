// The drawing view: shows the working drawing's model space, pans (middle drag, arrow keys) and zooms (wheel
// about the cursor, extents, window, previous), and takes picks: a crosshair, the rubber band from a prompt's
// base point and object snap with a visible marker (F3 switches snap on and off).
//
// The picture is drawn once into a bitmap and kept; moving the mouse only draws the crosshair over it, dragging
// moves the bitmap, and the drawing is drawn again when the drag ends or the zoom changes.
#pragma once

#include "host/gui/scene/Scene.h"
#include "host/gui/scene/SnapIndex.h"
#include "host/gui/scene/ViewTransform.h"

#include <wx/bitmap.h>
#include <wx/window.h>

#include <functional>
#include <optional>
#include <vector>

namespace host::gui {

class DrawingCanvas : public wxWindow {
 public:
  explicit DrawingCanvas(wxWindow* parent);

  // A new scene (another drawing, or the drawing after a command changed it); `keepView` keeps the zoom.
  void setScene(Scene scene, bool keepView);
  const Scene& scene() const { return scene_; }
  const ViewTransform& view() const { return view_; }

  // What the waiting prompt wants: a point (with a rubber band from `base` when given) or none.
  void setPointPrompt(bool wanted, const double* base);
  // Called with the world point a click answers (already snapped).
  std::function<void(const double point[3])> onPick;
  // Called with the cursor's world position for the status bar.
  std::function<void(double x, double y)> onCursor;

  void zoomExtents();
  void startZoomWindow();
  void zoomPrevious();
  void panBy(double dx, double dy);
  bool snapOn() const { return snapOn_; }
  void setSnapOn(bool on);

  // The screen position of a world point, bringing it into view first when it lies outside.
  wxPoint revealWorld(double x, double y);
  // Milliseconds the last full redraw took.
  double lastRedrawMs() const { return lastRedrawMs_; }
  // Draws the picture again now (not only when the toolkit asks).
  void redrawNow();

 private:
  void onPaint(wxPaintEvent&);
  void paint();
  void onSize(wxSizeEvent&);
  void onMouse(wxMouseEvent&);
  void onWheel(wxMouseEvent&);
  void onKey(wxKeyEvent&);
  void pushView();
  void renderPicture();
  std::optional<SnapPoint> snapAt(wxPoint pixel) const;
  void click(wxPoint pixel);

  Scene scene_;
  SnapIndex snaps_;
  ViewTransform view_;
  std::vector<ViewTransform> previous_;
  wxBitmap picture_;
  bool pictureValid_ = false;
  bool viewChosen_ = false;  // the user panned or zoomed: a resize keeps the view instead of fitting the extents
  double lastRedrawMs_ = 0.0;

  bool wantsPoint_ = false;
  std::optional<Vec2> base_;
  bool snapOn_ = true;
  std::optional<wxPoint> cursor_;
  std::optional<SnapPoint> snap_;
  std::optional<wxPoint> dragFrom_;
  wxPoint dragOffset_;
  int zoomWindowStep_ = 0;  // 1: waiting for the first corner, 2: for the second
  wxPoint zoomCorner_;
};

}  // namespace host::gui
