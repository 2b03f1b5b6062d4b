#include "points/KoUnits.h"

namespace {

struct UnitRow {
    const char* name;
    const char* bracketed;
    const wchar_t* wideName;
    const wchar_t* wideBracketed;
    double factor;
};

constexpr UnitRow kUnits[kKoUnitCount] = {
    {"", "", L"", L"", 1.0},
    {"mm", "[mm]", L"mm", L"[mm]", 0.001},
    {"cm", "[cm]", L"cm", L"[cm]", 0.01},
    {"m", "[m]", L"m", L"[m]", 1.0},
    {"\xC2\xB5m", "[\xC2\xB5m]", L"\u00B5m", L"[\u00B5m]", 1e-06},
    {"ft", "[ft]", L"ft", L"[ft]", 0.3048},
    {"in", "[in]", L"in", L"[in]", 0.0254},
};

const UnitRow* Row(int index) { return index >= 0 && index < kKoUnitCount ? &kUnits[index] : nullptr; }

}  // namespace

const char* KoUnitName(int index, bool bracketed)
{
    const UnitRow* row = Row(index);
    if (!row)
        return "??";
    return bracketed ? row->bracketed : row->name;
}

const wchar_t* KoUnitNameW(int index, bool bracketed)
{
    const UnitRow* row = Row(index);
    if (!row)
        return L"??";
    return bracketed ? row->wideBracketed : row->wideName;
}

double KoUnitFactor(int index)
{
    const UnitRow* row = Row(index);
    return row ? row->factor : 1.0;
}

double KoMetresToUnit(double metres, int index) { return metres / KoUnitFactor(index); }

double KoUnitToMetres(double value, int index) { return value * KoUnitFactor(index); }
