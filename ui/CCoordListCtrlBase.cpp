#include "ui/CCoordListCtrlBase.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cwchar>

#include "points/KoUnits.h"
#include "support/KoConvert.h"

namespace {

enum class Align { Left, Right };

struct ColumnLook {
  eKoPointRWMask key;
  const wchar_t* header;
  Align align;
  const wchar_t* sizing;  // null: the header itself
};

// Header texts are the control's own literals, not resources: the same in every language.
constexpr ColumnLook kColumns[] = {
    {eKoRWNumber, L"Nr", Align::Left, L"9999999"},
    {eKoRWName, L"Name", Align::Left, L"9999"},
    {eKoRWCodeText, L"Code", Align::Right, nullptr},
    {eKoRWPP, L"Code", Align::Left, L"999"},
    {eKoRWPhoto, L"Photo", Align::Right, nullptr},
    {eKoRWCamera, L"Camera", Align::Right, nullptr},
    {eKoRWX, L"X", Align::Right, L"9999999"},
    {eKoRWY, L"Y", Align::Right, L"9999999"},
    {eKoRWZ, L"Z", Align::Right, L"9999999"},
    {eKoRWDx, L"dx", Align::Right, L"9999999"},
    {eKoRWDy, L"dy", Align::Right, L"9999999"},
    {eKoRWDz, L"dz", Align::Right, L"9999999"},
    {eKoRWSx, L"Sx", Align::Right, L"9999999"},
    {eKoRWSy, L"Sy", Align::Right, L"9999999"},
    {eKoRWSz, L"Sz", Align::Right, L"9999999"},
    {eKoRWDS, L"Deviation", Align::Right, nullptr},
    {eKoRWRedu, L"Redu", Align::Right, nullptr},
    {eKoRWRedu2, L"Redu 2", Align::Right, nullptr},
    {eKoRWRedu3, L"Redu 3", Align::Right, nullptr},
    {eKoRWResidualX, L"Residual X", Align::Right, nullptr},
    {eKoRWResidualY, L"Residual Y", Align::Right, nullptr},
    {eKoRWResidualZ, L"Residual Z", Align::Right, nullptr},
    {eKoRWStatus, L"Status", Align::Left, L"999999999999999999999999"},
    {eKoRWMark, L"Imo", Align::Right, nullptr},
    {eKoRWMark2, L"Imo", Align::Right, nullptr},
    {eKoRWActive, L"Aktiv", Align::Right, nullptr},
    {eKoRWAccepted, L"Akkzept", Align::Right, nullptr},
    {eKoRWCancel, L"Cancel", Align::Right, nullptr},
    {eKoRWMedian, L"Median", Align::Right, nullptr},
};

const ColumnLook* lookOf(eKoPointRWMask key) {
  for (const ColumnLook& look : kColumns)
    if (look.key == key) return &look;
  return nullptr;
}

// The flag bit a check-box column shows; 0 for other keys.
std::int32_t flagBitOf(eKoPointRWMask key) {
  switch (key) {
    case eKoRWActive: return 2;
    case eKoRWAccepted: return 4;
    case eKoRWCancel: return 8;
    case eKoRWMedian: return 16;
    default: return 0;
  }
}

double deviationOf(const KoPoint& p) { return std::sqrt(p.dx * p.dx + p.dy * p.dy + p.dz * p.dz); }

// The stored length of a length column (in metres); false for a column that is not a length.
bool lengthOf(const KoPoint& p, eKoPointRWMask key, double& value) {
  switch (key) {
    case eKoRWX: value = p.x; return true;
    case eKoRWY: value = p.y; return true;
    case eKoRWZ: value = p.z; return true;
    case eKoRWDx:
    case eKoRWSx: value = p.dx; return true;
    case eKoRWDy:
    case eKoRWSy: value = p.dy; return true;
    case eKoRWDz:
    case eKoRWSz: value = p.dz; return true;
    case eKoRWDS: value = deviationOf(p); return true;
    case eKoRWRedu:
    case eKoRWResidualX: value = p.redu; return true;
    case eKoRWRedu2:
    case eKoRWResidualY: value = p.redu2; return true;
    case eKoRWRedu3:
    case eKoRWResidualZ: value = p.redu3; return true;
    default: return false;
  }
}

// 32-bit differences as the stored lists were always ordered: wrapping, never overflowing.
int wrappingDifference(std::uint32_t a, std::uint32_t b) { return static_cast<int>(a - b); }
int signOf(double difference) { return difference < 0.0 ? -1 : (difference > 0.0 ? 1 : 0); }

void copyText(wchar_t* buffer, int length, const std::wstring& text) {
  if (length <= 0) return;
  const std::size_t room = static_cast<std::size_t>(length - 1);
  const std::size_t count = std::min(room, text.size());
  std::wmemcpy(buffer, text.data(), count);
  buffer[count] = L'\0';
}

}  // namespace

CCoordListCtrlBase::~CCoordListCtrlBase() { KoObserver::Detach(); }

void CCoordListCtrlBase::SetPointList(KoPointList* list) {
  KoObserver::AttachTo(list != nullptr ? &list->Notifier() : nullptr);
  m_points = list;
  Refresh();
}

void CCoordListCtrlBase::SetFilter(const KoPointFilter* filter) {
  m_filter = filter;
  Refresh();
}

void CCoordListCtrlBase::SetColumnKeys(std::vector<eKoPointRWMask> keys, std::vector<int> units) {
  m_keys = std::move(keys);
  m_units = std::move(units);
  m_units.resize(m_keys.size(), kKoUnitNone);
}

eKoPointRWMask CCoordListCtrlBase::ColumnKey(int column) const {
  return column >= 0 && column < static_cast<int>(m_keys.size()) ? m_keys[static_cast<std::size_t>(column)]
                                                                  : eKoRWEnd;
}

int CCoordListCtrlBase::ColumnUnit(int column) const {
  return column >= 0 && column < static_cast<int>(m_units.size()) ? m_units[static_cast<std::size_t>(column)]
                                                                   : kKoUnitNone;
}

int CCoordListCtrlBase::Decimals(int column) const {
  const int charWidth = m_charWidth > 0 ? m_charWidth : 6;
  const int characters = std::clamp(GetColumnWidth(column) / charWidth, 6, 19);
  return characters - 3;
}

bool CCoordListCtrlBase::Shows(const KoPoint* point) const {
  return point != m_leaving && (m_filter == nullptr || m_filter->Test(*point));
}

void* CCoordListCtrlBase::GetFirstItem() {
  if (m_points == nullptr) return nullptr;
  KoPoint* point = m_points->First();
  while (point != nullptr && !Shows(point)) point = KoPointList::Next(point);
  return point;
}

void* CCoordListCtrlBase::GetNextItem(void* previous) {
  if (m_points == nullptr || previous == nullptr) return nullptr;
  KoPoint* point = KoPointList::Next(static_cast<KoPoint*>(previous));
  while (point != nullptr && !Shows(point)) point = KoPointList::Next(point);
  return point;
}

bool CCoordListCtrlBase::GetColumnHeader(std::wstring& text, int& alignment, int& width, int column) {
  const ColumnLook* look = lookOf(ColumnKey(column));
  if (look != nullptr) {
    text = look->header;
    alignment = look->align == Align::Right ? 1 : 0;
    width = GetStringWidth(look->sizing != nullptr ? look->sizing : look->header) + GetStringWidth(L"XXX");
  }
  if (const int unit = ColumnUnit(column); unit != kKoUnitNone) {
    const std::wstring unitText = unit > kKoUnitNone && unit < kKoUnitCount ? KoUnitNameW(unit, true) : L"??";
    text += L" " + unitText;
    width += GetStringWidth(unitText);
  }
  return look != nullptr;
}

bool CCoordListCtrlBase::GetCellText(wchar_t* buffer, int length, void* data, int, int column) {
  const eKoPointRWMask key = ColumnKey(column);
  if (lookOf(key) == nullptr || buffer == nullptr || length <= 0) return false;
  const auto* point = static_cast<const KoPoint*>(data);
  if (point == nullptr) return false;
  const std::size_t size = static_cast<std::size_t>(length);
  double length_value = 0.0;
  if (lengthOf(*point, key, length_value)) {
    std::swprintf(buffer, size, L"%.*f", Decimals(column), KoMetresToUnit(length_value, ColumnUnit(column)));
    return true;
  }
  switch (key) {
    case eKoRWNumber: std::swprintf(buffer, size, L"%u", point->number); return true;
    case eKoRWName: copyText(buffer, length, AnsiToUni(point->name.c_str()).c_str()); return true;
    case eKoRWCodeText:
      copyText(buffer, length, KoUtf8ToWide(KoPoint::CodeText(static_cast<std::uint16_t>(point->code & 7))));
      return true;
    case eKoRWPP: copyText(buffer, length, AnsiToUni(point->name.c_str()).c_str()); return true;
    case eKoRWPhoto: std::swprintf(buffer, size, L"%u", static_cast<std::uint32_t>(point->photo)); return true;
    case eKoRWCamera: std::swprintf(buffer, size, L"%u", static_cast<std::uint32_t>(point->camera)); return true;
    case eKoRWStatus: return true;  // nothing shown yet for the status
    case eKoRWMark: std::swprintf(buffer, size, L"%d", static_cast<int>(static_cast<std::int16_t>(point->mark))); return true;
    case eKoRWMark2:
      if (point->mark2 == 0) {
        buffer[0] = L'\0';
      } else {
        std::swprintf(buffer, size, L"%d", static_cast<int>(static_cast<std::int16_t>(point->mark2)));
      }
      return true;
    default:
      if (flagBitOf(key) != 0) {
        copyText(buffer, length, kCheckMarker);
        return true;
      }
      return false;
  }
}

bool CCoordListCtrlBase::GetCheckState(int row, int column, int) {
  const std::int32_t bit = flagBitOf(ColumnKey(column));
  const auto* point = static_cast<const KoPoint*>(RowData(row));
  return bit != 0 && point != nullptr && (point->flag & bit) != 0;
}

bool CCoordListCtrlBase::DeleteDataItem(int row) {
  auto* point = static_cast<KoPoint*>(RowData(row));
  // The list announces the removal; the rows follow from that announcement, not from here.
  if (point != nullptr && m_points != nullptr) m_points->Delete(point);
  return false;
}

bool CCoordListCtrlBase::IsColumnSortable(int) { return true; }

int CCoordListCtrlBase::CompareItems(int column, void* a, void* b) {
  const auto* p = static_cast<const KoPoint*>(a);
  const auto* q = static_cast<const KoPoint*>(b);
  if (p == nullptr || q == nullptr) return 0;
  const eKoPointRWMask key = ColumnKey(column);
  double u = 0.0;
  double v = 0.0;
  if (lengthOf(*p, key, u) && lengthOf(*q, key, v)) return signOf(u - v);
  switch (key) {
    case eKoRWNumber: return wrappingDifference(p->number, q->number);
    case eKoRWName:
    case eKoRWEnd: break;
    case eKoRWCodeText:
    case eKoRWPP: return static_cast<int>(p->code) - static_cast<int>(q->code);
    case eKoRWPhoto:
      return wrappingDifference(static_cast<std::uint32_t>(p->photo), static_cast<std::uint32_t>(q->photo));
    case eKoRWCamera:
      return wrappingDifference(static_cast<std::uint32_t>(p->camera), static_cast<std::uint32_t>(q->camera));
    case eKoRWStatus:
      return wrappingDifference(static_cast<std::uint32_t>(p->flag), static_cast<std::uint32_t>(q->flag));
    case eKoRWMark: return static_cast<std::int16_t>(p->mark) - static_cast<std::int16_t>(q->mark);
    case eKoRWMark2: return static_cast<std::int16_t>(p->mark2) - static_cast<std::int16_t>(q->mark2);
    default: {
      const std::int32_t bit = flagBitOf(key);
      return bit != 0 ? (p->flag & bit) - (q->flag & bit) : 0;
    }
  }
  if (key == eKoRWName) return p->name.Compare(q->name.View());
  return 0;
}

void CCoordListCtrlBase::Update(const KoEvent& event) {
  switch (event.code) {
    case eKoEventDestroyed:
      m_points = nullptr;
      SetRows({});
      return;
    case eKoEventRemoved:
      m_leaving = event.element;
      Refresh();
      m_leaving = nullptr;
      return;
    case eKoEventAdded: {
      // A capture appends one point after the last: the rows grow by one instead of being built anew, so a
      // click costs the same in a list of ten points or of ten thousand.
      const auto* point = event.Element<KoPoint>();
      if (RowsInSourceOrder() && point != nullptr && point->Next() == nullptr && m_points != nullptr &&
          point == m_points->Last()) {
        if (Shows(point)) AppendRow(const_cast<KoPoint*>(point));
        return;
      }
      Refresh();
      return;
    }
    default: Refresh(); return;
  }
}
