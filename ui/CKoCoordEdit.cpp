#include "ui/CKoCoordEdit.h"

#include "points/KoUnits.h"
#include "support/KoConvert.h"
#include "support/KoString.h"

#include <cmath>
#include <cstdlib>
#include <vector>

namespace {

// At most X, Y, Z plus one item for whatever follows (the bracketed length of mode 2, a unit): that last
// item swallows the rest of the line and is never read.
constexpr std::size_t kMaxItems = 4;

void readItem(const std::vector<String>& items, std::size_t index, double& value) {
  // atof on purpose: a trailing comma (mode 0 writes "x, y") or unit is ignored, and no number reads as 0.
  if (index < items.size() && !items[index].IsEmpty()) value = std::atof(items[index].c_str());
}

}  // namespace

std::wstring CKoCoordEdit::Format(const KoPoint& p) const {
  const int n = m_precision;
  String numbers;
  switch (m_mode) {
    case kModeXY:
      numbers = String::Format("%.*f, %.*f  ", n, p.x, n, p.y);
      break;
    case kModeXYZ:
      numbers = String::Format("%.*f  %.*f  %.*f ", n, p.x, n, p.y, n, p.z);
      break;
    case kModeDeltas:
      numbers = String::Format("%.*f  %.*f  %.*f (%.*f) ", n, p.dx, n, p.dy, n, p.dz, n,
                               std::sqrt(p.dx * p.dx + p.dy * p.dy + p.dz * p.dz));
      break;
    default:
      return {};
  }
  return KoUtf8ToWide(numbers.View()) + m_unitText;
}

void CKoCoordEdit::SetUnit(int unitIndex) { m_unitText = KoUnitNameW(unitIndex, true); }

void CKoCoordEdit::Write(const KoPoint& point) {
  m_point = point;
  m_holdsValue = true;
  if (m_mode != kModeXY && m_mode != kModeXYZ && m_mode != kModeDeltas) return;
  if (GetSafeHwnd() == nullptr) return;
  int start = 0, end = 0;
  GetSel(start, end);
  SetWindowText(Format(m_point));
  SetSel(start, start);
}

void CKoCoordEdit::Read() {
  m_point = m_referencePoint;
  Read(m_point);
}

void CKoCoordEdit::Read(KoPoint& point) const {
  if (m_mode != kModeXY && m_mode != kModeXYZ && m_mode != kModeDeltas) return;
  const UniToAnsi narrow(GetWindowText());
  const std::vector<String> items = String(narrow.c_str()).Split(' ', kMaxItems);
  double& first = m_mode == kModeDeltas ? point.dx : point.x;
  double& second = m_mode == kModeDeltas ? point.dy : point.y;
  double& third = m_mode == kModeDeltas ? point.dz : point.z;
  readItem(items, 0, first);
  readItem(items, 1, second);
  readItem(items, 2, third);
}
