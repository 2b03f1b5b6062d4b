#include "cad/AcDbDumpResbuf.h"

#include "sdk/ResultCodes.h"

#include <cstdio>
#include <vector>

namespace {

enum class ValueKind { None, String, Real, Short, Point, EntityName, Unknown };

// Group code ranges of the drawing format; the host's result types sit above 5000.
ValueKind kindOf(int type) {
  if (type < -2) return ValueKind::None;
  if (type < 0) return ValueKind::EntityName;
  if (type <= 9 || type == 1000 || type == 1001) return ValueKind::String;
  if ((type >= 10 && type <= 19) || (type >= 210 && type <= 239)) return ValueKind::Point;
  if (type >= 38 && type <= 59) return ValueKind::Real;
  // Codes 60 to 90 are shown as 16-bit integers, 90 included, as the trace always has.
  if (type >= 60 && type <= 90) return ValueKind::Short;
  if (type <= RTNONE) return ValueKind::Unknown;
  switch (type) {
    case RTREAL: return ValueKind::Real;
    case RTSHORT: return ValueKind::Short;
    case RTSTR: return ValueKind::String;
    case RT3DPOINT: return ValueKind::Point;
    default: return ValueKind::None;
  }
}

// swprintf into a buffer large enough for the numbers plus `extra` characters of text.
template <class... Args>
std::wstring format(std::size_t extra, const wchar_t* fmt, Args... args) {
  // A real printed with %0.3f may take up to 309 digits before the point; three of them fit in 1100.
  std::vector<wchar_t> buffer(extra + 1100);
  int n = std::swprintf(buffer.data(), buffer.size(), fmt, args...);
  return n < 0 ? std::wstring() : std::wstring(buffer.data(), static_cast<std::size_t>(n));
}

}  // namespace

int AcDbDumpResbuf(std::wstring& text, const resbuf* rb) {
  if (rb == nullptr) return RTNONE;
  const int type = rb->restype;
  const ads_u_val& v = rb->resval;
  switch (kindOf(type)) {
    case ValueKind::None:
      break;
    case ValueKind::String: {
      std::wstring value = v.rstring != nullptr ? v.rstring : L"";
      text = format(value.size(), L"(%d . \"%ls\")\n", type, value.c_str());
      break;
    }
    case ValueKind::Real:
      text = format(0, L"(%d . %0.3f)\n", type, v.rreal);
      break;
    case ValueKind::Short:
      text = format(0, L"(%d . %d)\n", type, static_cast<int>(v.rint));
      break;
    case ValueKind::Point:
      text = format(0, L"(%d . %0.3f %0.3f %0.3f)\n", type, v.rpoint[0], v.rpoint[1], v.rpoint[2]);
      break;
    case ValueKind::EntityName:
      // The first word of the name carries the object's id.
      text = format(0, L"(%d . <Entity name: %8lx>)\n", type, static_cast<unsigned long>(v.rlname[0]));
      break;
    case ValueKind::Unknown:
      text = format(0, L"(%d . Unknown type)\n", type);
      break;
  }
  return type;
}
