#include "host/gui/DrawingCanvas.h"

#include "host/Transcript.h"
#include "host/gui/scene/Raster.h"

#include <wx/dcbuffer.h>
#include <wx/dcmemory.h>
#include <wx/graphics.h>
#include <wx/image.h>
#include <wx/settings.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <memory>

namespace host::gui {
namespace {

constexpr Rgb kBackground = 0x212830;
constexpr int kSnapRadiusPixels = 10;
constexpr double kWheelStep = 1.25;

// The program's start as near as a library sees it: when its static data is set up, before main runs.
const auto kStarted = std::chrono::steady_clock::now();

wxColour colourOf(Rgb rgb) { return wxColour((rgb >> 16) & 0xFF, (rgb >> 8) & 0xFF, rgb & 0xFF); }

}  // namespace

DrawingCanvas::DrawingCanvas(wxWindow* parent)
    : wxWindow(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxWANTS_CHARS | wxFULL_REPAINT_ON_RESIZE) {
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  SetCursor(wxCursor(wxCURSOR_BLANK));
  Bind(wxEVT_PAINT, &DrawingCanvas::onPaint, this);
  Bind(wxEVT_SIZE, &DrawingCanvas::onSize, this);
  for (auto type : {wxEVT_LEFT_DOWN, wxEVT_LEFT_UP, wxEVT_MIDDLE_DOWN, wxEVT_MIDDLE_UP, wxEVT_MOTION,
                    wxEVT_LEAVE_WINDOW, wxEVT_RIGHT_UP})
    Bind(type, &DrawingCanvas::onMouse, this);
  Bind(wxEVT_MOUSEWHEEL, &DrawingCanvas::onWheel, this);
  Bind(wxEVT_KEY_DOWN, &DrawingCanvas::onKey, this);
}

void DrawingCanvas::setScene(Scene scene, bool keepView) {
  // The view's centre is kept as a world point: the new scene may have another local origin.
  const Vec2 worldCentre = scene_.toWorld(view_.centre());
  scene_ = std::move(scene);
  view_.centreOn(scene_.toLocal(worldCentre));
  // A drawing moved out of sight as a whole (a transformation into another grid) is brought back into view.
  if (keepView && !scene_.extents.empty() && !scene_.extents.overlaps(view_.visible())) keepView = false;
  snaps_ = SnapIndex(scene_.snaps);
  snap_.reset();
  const wxSize size = GetClientSize();
  view_.setSize(size.x, size.y);
  if (!keepView) {
    previous_.clear();
    view_.zoomTo(scene_.extents);
    viewChosen_ = false;
  }
  pictureValid_ = false;
  Refresh(false);
}

void DrawingCanvas::setPointPrompt(bool wanted, const double* base) {
  wantsPoint_ = wanted;
  base_.reset();
  if (wanted && base != nullptr) base_ = scene_.toLocal({base[0], base[1]});
  if (!wanted) snap_.reset();
  Refresh(false);
}

void DrawingCanvas::setSnapOn(bool on) {
  snapOn_ = on;
  snap_.reset();
  Refresh(false);
}

void DrawingCanvas::pushView() {
  viewChosen_ = true;
  previous_.push_back(view_);
  if (previous_.size() > 50) previous_.erase(previous_.begin());
}

void DrawingCanvas::zoomExtents() {
  pushView();
  view_.zoomTo(scene_.extents);
  redrawNow();
}

void DrawingCanvas::zoomPrevious() {
  if (previous_.empty()) return;
  const wxSize size = GetClientSize();
  view_ = previous_.back();
  previous_.pop_back();
  view_.setSize(size.x, size.y);
  redrawNow();
}

void DrawingCanvas::startZoomWindow() { zoomWindowStep_ = 1; }

void DrawingCanvas::panBy(double dx, double dy) {
  viewChosen_ = true;
  view_.panPixels(dx, dy);
  redrawNow();
}

wxPoint DrawingCanvas::revealWorld(double x, double y) {
  const Vec2 local = scene_.toLocal({x, y});
  Vec2 screen = view_.toScreen(local);
  if (screen.x < 0 || screen.y < 0 || screen.x >= view_.width() || screen.y >= view_.height()) {
    pushView();
    view_.centreOn(local);
    redrawNow();
    screen = view_.toScreen(local);
  }
  return wxPoint(static_cast<int>(std::lround(screen.x)), static_cast<int>(std::lround(screen.y)));
}

void DrawingCanvas::redrawNow() {
  pictureValid_ = false;
  Refresh(false);
  Update();
}

void DrawingCanvas::renderPicture() {
  const auto start = std::chrono::steady_clock::now();
  const wxSize size = GetClientSize();
  view_.setSize(size.x, size.y);
  Raster raster(view_.width(), view_.height(), kBackground);
  const std::vector<const Label*> texts = drawScene(scene_, view_, raster);
  wxImage image(raster.width(), raster.height(), false);
  unsigned char* rgb = image.GetData();
  for (Rgb pixel : raster.pixels()) {
    *rgb++ = static_cast<unsigned char>(pixel >> 16);
    *rgb++ = static_cast<unsigned char>(pixel >> 8);
    *rgb++ = static_cast<unsigned char>(pixel);
  }
  picture_ = wxBitmap(image);
  if (!texts.empty()) {
    wxMemoryDC dc(picture_);
    std::unique_ptr<wxGraphicsContext> gc(wxGraphicsContext::Create(dc));
    if (gc) {
      for (const Label* label : texts) {
        // A CAD text height is the height of its capitals; a font's pixel size is about 1.4 times that.
        const double pixels = label->height * view_.scale();
        if (pixels > 2000) continue;
        wxFont font(wxFontInfo().Family(wxFONTFAMILY_SWISS));
        font.SetFractionalPointSize(pixels * 1.4 * 72.0 / 96.0);
        gc->SetFont(font, colourOf(label->colour));
        double w = 0, h = 0, descent = 0, leading = 0;
        gc->GetTextExtent(label->text, &w, &h, &descent, &leading);
        const Vec2 base = view_.toScreen(label->at);
        // DrawText puts the top left corner at the point; step up from the base line by the ascent.
        const double ascent = h - descent;
        const double x = base.x - ascent * std::sin(label->rotation);
        const double y = base.y - ascent * std::cos(label->rotation);
        gc->DrawText(label->text, x, y, label->rotation);
      }
    }
  }
  pictureValid_ = true;
  const auto now = std::chrono::steady_clock::now();
  lastRedrawMs_ = std::chrono::duration<double, std::milli>(now - start).count();
  if (host::traceEnabled()) {
    char line[160];
    std::snprintf(line, sizeof line, "view: %zu entities drawn in %.1f ms, %.0f ms after start", scene_.entities,
                  lastRedrawMs_, std::chrono::duration<double, std::milli>(now - kStarted).count());
    host::trace(line);
  }
}

void DrawingCanvas::onPaint(wxPaintEvent&) {
  const auto start = std::chrono::steady_clock::now();
  paint();
  if (host::traceEnabled() && dragFrom_) {
    char line[96];
    std::snprintf(line, sizeof line, "view: moved picture shown in %.2f ms",
                  std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
    host::trace(line);
  }
}

void DrawingCanvas::paint() {
  wxAutoBufferedPaintDC dc(this);
  if (!pictureValid_) renderPicture();
  dc.SetBackground(wxBrush(colourOf(kBackground)));
  if (dragFrom_) dc.Clear();
  dc.DrawBitmap(picture_, dragFrom_ ? dragOffset_ : wxPoint(0, 0));
  if (!cursor_ || dragFrom_) return;
  const wxPoint c = *cursor_;
  dc.SetPen(wxPen(*wxWHITE, 1));
  if (zoomWindowStep_ == 2) {
    dc.SetBrush(*wxTRANSPARENT_BRUSH);
    dc.DrawRectangle(wxRect(zoomCorner_, c));
  }
  if (wantsPoint_ && base_) {
    const Vec2 b = view_.toScreen(*base_);
    dc.SetPen(wxPen(wxColour(255, 255, 160), 1, wxPENSTYLE_SHORT_DASH));
    dc.DrawLine(static_cast<int>(b.x), static_cast<int>(b.y), c.x, c.y);
  }
  // The crosshair spans the view while a point is asked for; otherwise a small pick box.
  dc.SetPen(wxPen(*wxWHITE, 1));
  if (wantsPoint_ || zoomWindowStep_ != 0) {
    dc.DrawLine(0, c.y, GetClientSize().x, c.y);
    dc.DrawLine(c.x, 0, c.x, GetClientSize().y);
  } else {
    dc.SetBrush(*wxTRANSPARENT_BRUSH);
    dc.DrawRectangle(c.x - 4, c.y - 4, 9, 9);
  }
  if (snap_) {
    const Vec2 s = view_.toScreen(snap_->at);
    const int x = static_cast<int>(std::lround(s.x)), y = static_cast<int>(std::lround(s.y)), r = 6;
    dc.SetPen(wxPen(wxColour(255, 200, 0), 2));
    dc.SetBrush(*wxTRANSPARENT_BRUSH);
    switch (snap_->kind) {
      case SnapKind::Endpoint: dc.DrawRectangle(x - r, y - r, 2 * r + 1, 2 * r + 1); break;
      case SnapKind::Midpoint: {
        const wxPoint triangle[] = {{x, y - r}, {x + r, y + r}, {x - r, y + r}};
        dc.DrawPolygon(3, triangle);
        break;
      }
      case SnapKind::Centre: dc.DrawCircle(x, y, r); break;
      case SnapKind::Insertion:
        dc.DrawRectangle(x - r, y - r, r + 1, r + 1);
        dc.DrawRectangle(x, y, r + 1, r + 1);
        break;
      case SnapKind::Node:
        dc.DrawCircle(x, y, r);
        dc.DrawLine(x - r, y - r, x + r + 1, y + r + 1);
        dc.DrawLine(x - r, y + r, x + r + 1, y - r - 1);
        break;
    }
  }
}

void DrawingCanvas::onSize(wxSizeEvent& event) {
  const wxSize size = GetClientSize();
  view_.setSize(size.x, size.y);
  if (!viewChosen_) view_.zoomTo(scene_.extents);
  pictureValid_ = false;
  Refresh(false);
  event.Skip();
}

std::optional<SnapPoint> DrawingCanvas::snapAt(wxPoint pixel) const {
  if (!snapOn_) return std::nullopt;
  return snaps_.nearest(view_.toLocal({static_cast<double>(pixel.x), static_cast<double>(pixel.y)}),
                        kSnapRadiusPixels / view_.scale());
}

void DrawingCanvas::click(wxPoint pixel) {
  if (zoomWindowStep_ == 1) {
    zoomCorner_ = pixel;
    zoomWindowStep_ = 2;
    return;
  }
  if (zoomWindowStep_ == 2) {
    zoomWindowStep_ = 0;
    Box box;
    box.add(view_.toLocal({static_cast<double>(zoomCorner_.x), static_cast<double>(zoomCorner_.y)}));
    box.add(view_.toLocal({static_cast<double>(pixel.x), static_cast<double>(pixel.y)}));
    if (std::abs(pixel.x - zoomCorner_.x) < 3 || std::abs(pixel.y - zoomCorner_.y) < 3) return;
    pushView();
    view_.zoomTo(box);
    redrawNow();
    return;
  }
  if (!wantsPoint_ || !onPick) return;
  double point[3];
  if (const std::optional<SnapPoint> s = snapAt(pixel)) {
    const Vec2 world = scene_.toWorld(s->at);
    point[0] = world.x;
    point[1] = world.y;
    point[2] = s->z;
  } else {
    // An unsnapped pick is as exact as a pixel: rounded to the digits the zoom shows, on the drawing's elevation.
    const Vec2 world = scene_.toWorld(view_.toLocal({static_cast<double>(pixel.x), static_cast<double>(pixel.y)}));
    const double step = std::pow(10.0, std::floor(std::log10(1.0 / view_.scale())));
    point[0] = std::round(world.x / step) * step;
    point[1] = std::round(world.y / step) * step;
    point[2] = 0.0;
  }
  onPick(point);
}

void DrawingCanvas::onMouse(wxMouseEvent& event) {
  const wxPoint at = event.GetPosition();
  if (event.GetEventType() == wxEVT_LEAVE_WINDOW) {
    cursor_.reset();
    Refresh(false);
    return;
  }
  cursor_ = at;
  if (event.GetEventType() == wxEVT_MIDDLE_DOWN) {
    dragFrom_ = at;
    dragOffset_ = wxPoint(0, 0);
    CaptureMouse();
  } else if (event.GetEventType() == wxEVT_MIDDLE_UP && dragFrom_) {
    if (HasCapture()) ReleaseMouse();
    const wxPoint moved = at - *dragFrom_;
    dragFrom_.reset();
    pushView();
    view_.panPixels(moved.x, moved.y);
    redrawNow();
  } else if (event.GetEventType() == wxEVT_MOTION && dragFrom_) {
    // The kept picture moves with the mouse; the drawing is drawn again only when the button comes up.
    dragOffset_ = at - *dragFrom_;
  } else if (event.GetEventType() == wxEVT_LEFT_DOWN) {
    // The view takes the keys (arrows, F3) once the main window has them; it does not pull the main window over
    // a dialog the user works with beside the drawing.
    const wxWindow* focus = FindFocus();
    if (focus != nullptr && wxGetTopLevelParent(const_cast<wxWindow*>(focus)) == wxGetTopLevelParent(this)) SetFocus();
  } else if (event.GetEventType() == wxEVT_LEFT_UP) {
    click(at);
  } else if (event.GetEventType() == wxEVT_RIGHT_UP) {
    zoomWindowStep_ = 0;
  }
  snap_ = wantsPoint_ && !dragFrom_ ? snapAt(at) : std::nullopt;
  if (onCursor) {
    const Vec2 world = scene_.toWorld(view_.toLocal({static_cast<double>(at.x), static_cast<double>(at.y)}));
    onCursor(world.x, world.y);
  }
  Refresh(false);
}

void DrawingCanvas::onWheel(wxMouseEvent& event) {
  const int rotation = event.GetWheelRotation();
  if (rotation == 0) return;
  const double notches = static_cast<double>(rotation) / std::max(1, event.GetWheelDelta());
  viewChosen_ = true;
  view_.zoomAbout({static_cast<double>(event.GetX()), static_cast<double>(event.GetY())}, std::pow(kWheelStep, notches));
  redrawNow();
}

void DrawingCanvas::onKey(wxKeyEvent& event) {
  const double step = std::max(view_.width(), view_.height()) / 8.0;
  switch (event.GetKeyCode()) {
    case WXK_LEFT: panBy(step, 0); return;
    case WXK_RIGHT: panBy(-step, 0); return;
    case WXK_UP: panBy(0, step); return;
    case WXK_DOWN: panBy(0, -step); return;
    case WXK_F3: setSnapOn(!snapOn_); return;
    default: event.Skip();
  }
}

}  // namespace host::gui
