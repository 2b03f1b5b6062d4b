#include "host/gui/Screenshot.h"

#include "host/gui/MainFrame.h"

#include <wx/dialog.h>
#include <wx/image.h>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <memory>

namespace host::gui {

bool saveScreenshot(const std::string& path, std::string& error) {
  MainFrame* frame = mainFrame();
  if (frame == nullptr) {
    error = "no window to take a picture of";
    return false;
  }
  frame->Update();
  wxRect area = frame->GetScreenRect();
  for (wxWindow* child : frame->GetChildren()) {
    if (auto* dialog = dynamic_cast<wxDialog*>(child); dialog != nullptr && dialog->IsShown()) {
      dialog->Update();
      area.Union(dialog->GetScreenRect());
    }
  }
  // The picture comes from the X server over a connection of its own, as a screen grabber takes it: what is on
  // the screen, not what the toolkit believes it drew.
  std::unique_ptr<Display, int (*)(Display*)> display(XOpenDisplay(nullptr), XCloseDisplay);
  if (!display) {
    error = "cannot open the display to take a picture";
    return false;
  }
  const int screen = DefaultScreen(display.get());
  area.Intersect(wxRect(0, 0, DisplayWidth(display.get(), screen), DisplayHeight(display.get(), screen)));
  if (area.IsEmpty()) {
    error = "the window is not on the screen";
    return false;
  }
  XImage* grabbed = XGetImage(display.get(), RootWindow(display.get(), screen), area.x, area.y,
                              static_cast<unsigned>(area.width), static_cast<unsigned>(area.height), AllPlanes,
                              ZPixmap);
  if (grabbed == nullptr) {
    error = "the display gave no picture";
    return false;
  }
  wxImage picture(area.width, area.height, false);
  unsigned char* rgb = picture.GetData();
  for (int y = 0; y < area.height; ++y) {
    for (int x = 0; x < area.width; ++x) {
      const unsigned long pixel = XGetPixel(grabbed, x, y);
      *rgb++ = static_cast<unsigned char>((pixel & grabbed->red_mask) >> __builtin_ctzl(grabbed->red_mask));
      *rgb++ = static_cast<unsigned char>((pixel & grabbed->green_mask) >> __builtin_ctzl(grabbed->green_mask));
      *rgb++ = static_cast<unsigned char>((pixel & grabbed->blue_mask) >> __builtin_ctzl(grabbed->blue_mask));
    }
  }
  XDestroyImage(grabbed);
  if (!picture.SaveFile(wxString::FromUTF8(path), wxBITMAP_TYPE_PNG)) {
    error = "cannot write the picture " + path;
    return false;
  }
  return true;
}

}  // namespace host::gui
