// A label that can serve as a web link: in link mode it shows its text in its own colour, underlined if
// wished, with a cursor of its own over it, and a click opens the text in the user's browser.
#pragma once

#include <string>

#include "sdk/ui/CStatic.h"

class CStaticEx : public CStatic {
 public:
  // The window-text colour until another is set.
  static constexpr COLORREF kDefaultTextColour = 0x000000;

  void SetLinkMode(bool link);
  void SetLinkCursor(HCURSOR cursor);
  // Redraws at once.
  void SetLinkColour(COLORREF colour);
  void SetLinkUnderline(bool underline);
  // The text shown is the address itself.
  void SetLinkText(const std::wstring& address);

  bool IsLinkMode() const { return linkMode_; }
  COLORREF LinkColour() const { return colour_; }
  bool LinkUnderlined() const { return underline_; }
  HCURSOR LinkCursor() const { return cursor_; }
  const std::wstring& LinkText() const { return link_; }

 protected:
  void PreSubclassWindow() override;
  // A click in link mode opens the control's own window text.
  bool OnCommandReflect(int code) override;

 private:
  void ApplyLook();

  COLORREF colour_ = kDefaultTextColour;
  HCURSOR cursor_ = nullptr;
  std::wstring link_;
  bool linkMode_ = false;
  bool underline_ = false;
};

// Opens `address` in the user's browser (the Browser= program of the platform settings, else xdg-open), started
// without a shell. Only http:// and https:// addresses are opened: anything else from a server is shown but
// never started. Surrounding blanks and the line ending a server sent are not part of the address. False with
// `why` set when nothing was started.
bool OpenWebLink(const std::wstring& address, std::string& why);
