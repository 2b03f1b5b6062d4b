#include "ui/CStaticEx.h"

#include <algorithm>
#include <cctype>
#include <vector>

#include "support/KoConvert.h"
#include "support/KoLog.h"
#include "support/KoProcess.h"
#include "support/KoSettings.h"

void CStaticEx::SetLinkMode(bool link) {
  linkMode_ = link;
  ApplyLook();
}

void CStaticEx::SetLinkCursor(HCURSOR cursor) {
  cursor_ = cursor;
  ApplyLook();
}

void CStaticEx::SetLinkColour(COLORREF colour) {
  colour_ = colour;
  ApplyLook();
  if (GetSafeHwnd() != nullptr) UpdateWindow();
}

void CStaticEx::SetLinkUnderline(bool underline) {
  underline_ = underline;
  ApplyLook();
}

void CStaticEx::SetLinkText(const std::wstring& address) {
  link_ = address;
  if (GetSafeHwnd() != nullptr) SetWindowText(address);
}

void CStaticEx::PreSubclassWindow() { ApplyLook(); }

void CStaticEx::ApplyLook() {
  if (GetSafeHwnd() == nullptr) return;
  SetTextColor(colour_);
  SetUnderline(underline_);
  // The hand only shows where a click does something.
  SetHoverCursor(linkMode_ ? cursor_ : nullptr);
  ModifyStyle(linkMode_ ? 0 : SS_NOTIFY, linkMode_ ? SS_NOTIFY : 0);
}

bool CStaticEx::OnCommandReflect(int code) {
  if (code != STN_CLICKED || !linkMode_) return false;
  std::string why;
  if (!OpenWebLink(GetWindowText(), why)) Log(3, "CStaticEx: " + why);
  return true;
}

namespace {

bool StartsWithNoCase(const std::string& text, const std::string& prefix) {
  return text.size() >= prefix.size() &&
         std::equal(prefix.begin(), prefix.end(), text.begin(), [](char a, char b) {
           return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
         });
}

}  // namespace

bool OpenWebLink(const std::wstring& address, std::string& why) {
  std::string link(UniToAnsi(address).c_str());
  const auto blank = [](unsigned char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
  while (!link.empty() && blank(static_cast<unsigned char>(link.back()))) link.pop_back();
  link.erase(link.begin(), std::find_if_not(link.begin(), link.end(), [&](char c) {
               return blank(static_cast<unsigned char>(c));
             }));
  const std::size_t scheme = StartsWithNoCase(link, "http://")    ? 7
                             : StartsWithNoCase(link, "https://") ? 8
                                                                  : 0;
  const bool plain = std::none_of(link.begin(), link.end(), [](char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
  });
  if (scheme == 0 || link.size() == scheme || !plain) {
    why = "not a web address, not opened: " + link;
    return false;
  }
  std::vector<std::string> argv;
  if (const auto browser = KoReadSetting(kKoPlatformSection, "Browser"); browser && !browser->empty())
    argv = KoSplitCommand(*browser);
  if (argv.empty()) argv = {"xdg-open"};
  argv.push_back(link);
  std::string error;
  if (!KoStartProgram(argv, error)) {
    why = "cannot start " + argv.front() + ": " + error;
    return false;
  }
  return true;
}
