// Single-line texts, attributes and multi-line texts as the view's labels.
#include "host/dxf/Document.h"
#include "host/dxf/Utf8.h"
#include "host/gui/scene/SceneWriter.h"

#include <cmath>
#include <numbers>

namespace host::gui {
namespace {

constexpr double kDegree = std::numbers::pi / 180.0;

std::wstring wide(std::string_view utf8) {
  std::wstring out;
  for (std::size_t i = 0; i < utf8.size();) out += static_cast<wchar_t>(dxf::nextUtf8(utf8, i));
  return out;
}

std::wstring decoded(const SceneWriter& out, const dxf::Entity& e, int code) {
  return wide(out.document.decode(e.value(code)));
}

}  // namespace

std::wstring plainText(const std::wstring& s) {
  std::wstring out;
  for (std::size_t i = 0; i < s.size(); ++i) {
    if (s[i] == L'%' && i + 2 < s.size() && s[i + 1] == L'%') {
      const wchar_t c = static_cast<wchar_t>(std::towlower(s[i + 2]));
      const wchar_t* replacement = c == L'd' ? L"\u00B0" : c == L'c' ? L"\u2300" : c == L'p' ? L"\u00B1"
                                 : c == L'%' ? L"%" : (c == L'u' || c == L'o' || c == L'k') ? L"" : nullptr;
      if (replacement != nullptr) {
        out += replacement;
        i += 2;
        continue;
      }
    }
    out += s[i];
  }
  return out;
}

std::wstring plainMText(const std::wstring& s) {
  std::wstring out;
  for (std::size_t i = 0; i < s.size(); ++i) {
    const wchar_t c = s[i];
    if (c == L'{' || c == L'}') continue;
    if (c != L'\\' || i + 1 >= s.size()) {
      out += c;
      continue;
    }
    const wchar_t code = s[++i];
    switch (code) {
      case L'P': out += L'\n'; break;
      case L'~': out += L' '; break;
      case L'\\': case L'{': case L'}': out += code; break;
      case L'L': case L'l': case L'O': case L'o': case L'K': case L'k': case L'N': break;
      case L'S': {
        // Stacked text "a^b", "a/b", "a#b": written side by side.
        std::size_t end = s.find(L';', i);
        if (end == std::wstring::npos) end = s.size();
        for (std::size_t j = i + 1; j < end; ++j) out += s[j] == L'^' || s[j] == L'#' ? L'/' : s[j];
        i = end;
        break;
      }
      default: {
        // Font, height, width, colour, tracking, alignment...: a value up to the semicolon.
        const std::size_t end = s.find(L';', i);
        i = end == std::wstring::npos ? s.size() : end;
      }
    }
  }
  return out;
}

void writeText(SceneWriter& out, const dxf::Entity& e) {
  // An attribute marked invisible is not drawn.
  if (e.type == "ATTRIB" && (static_cast<long long>(number(e, 70, 0)) & 1) != 0) return;
  const std::wstring text = plainText(decoded(out, e, 1));
  const Affine ocs = objectSystem(extrusion(e));
  const double height = number(e, 40, 1.0);
  const double rotation = number(e, 50, 0.0) * kDegree;
  const double widthFactor = std::fabs(number(e, 41, 1.0));
  const int horizontal = static_cast<int>(number(e, 72, 0));
  const int vertical = static_cast<int>(number(e, e.type == "ATTRIB" ? 74 : 73, 0));
  Vec3 at = point(e, 10);
  out.snap(at, SnapKind::Insertion, ocs);
  if ((horizontal != 0 || vertical != 0) && horizontal != 3 && horizontal != 5 && e.tags.find(11)) {
    // Aligned by its second point: step back along and across the line by the estimated extent.
    const Vec3 align = point(e, 11);
    const double width = 0.6 * height * widthFactor * static_cast<double>(text.size());
    double back = horizontal == 1 || horizontal == 4 ? width / 2 : horizontal == 2 ? width : 0.0;
    double down = vertical == 2 ? height / 2 : vertical == 3 ? height : 0.0;
    if (horizontal == 4) down = height / 2;
    const double c = std::cos(rotation), s = std::sin(rotation);
    at = {align.x - back * c + down * s, align.y - back * s - down * c, align.z};
  }
  out.label(text, at, height, rotation, ocs);
}

void writeMText(SceneWriter& out, const dxf::Entity& e) {
  std::wstring contents;
  for (std::size_t i = 0; i < e.tags.size(); ++i)
    if (e.tags.code(i) == 3) contents += wide(out.document.decode(e.tags.text(i)));
  contents += decoded(out, e, 1);
  const std::wstring text = plainMText(contents);
  const double height = number(e, 40, 1.0);
  const Vec3 normal = extrusion(e);
  double rotation = number(e, 50, 0.0) * kDegree;
  if (e.tags.find(11)) {
    // The direction is a world vector; in the text's own plane it becomes an angle.
    const Vec3 direction = point(e, 11, Vec3{1, 0, 0});
    const Affine ocs = objectSystem(normal);
    rotation = std::atan2(direction.x * ocs.y.x + direction.y * ocs.y.y + direction.z * ocs.y.z,
                          direction.x * ocs.x.x + direction.y * ocs.x.y + direction.z * ocs.x.z);
  }
  Affine system = objectSystem(normal);
  const Vec3 insertion = point(e, 10);
  // Work in the text plane with the insertion point at its origin.
  system.t = insertion;
  std::vector<std::wstring> lines{L""};
  for (wchar_t c : text) {
    if (c == L'\n')
      lines.emplace_back();
    else
      lines.back() += c;
  }
  const int attachment = static_cast<int>(number(e, 71, 1));
  const double spacing = 1.667 * height * number(e, 44, 1.0);
  const double blockHeight = height + spacing * static_cast<double>(lines.size() - 1);
  const int row = (attachment - 1) / 3, column = (attachment - 1) % 3;
  const double top = row == 0 ? 0.0 : row == 1 ? blockHeight / 2 : blockHeight;
  out.snap(Vec3{}, SnapKind::Insertion, Affine{system.x, system.y, system.z, insertion});
  const double c = std::cos(rotation), s = std::sin(rotation);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const double width = 0.6 * height * static_cast<double>(lines[i].size());
    const double left = column == 0 ? 0.0 : column == 1 ? -width / 2 : -width;
    const double baseline = top - height - spacing * static_cast<double>(i);
    const Vec3 at{left * c - baseline * s, left * s + baseline * c, 0.0};
    out.label(lines[i], at, height, rotation, system);
  }
}

}  // namespace host::gui
