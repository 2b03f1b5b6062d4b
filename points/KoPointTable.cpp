#include "points/KoPointTable.h"

#include <cmath>
#include <cstdint>
#include <iomanip>

namespace {

struct FieldColumn {
    const char* header;  // null for fields without a column
    int headerWidth;
    int rowWidth;
};

FieldColumn Column(eKoPointRWMask field)
{
    switch (field) {
    case eKoRWNumber: return {"#", 10, 10};
    case eKoRWName: return {"Name", 21, 21};
    // Flag and Color are narrower in the header than in the rows; files written so far have it so.
    case eKoRWFlag: return {"Flag", 10, 21};
    case eKoRWCodeText:
    case eKoRWCode: return {"Code", 4, 4};
    case eKoRWPP: return {"PP", 10, 10};
    case eKoRWPhoto: return {"Photo", 10, 10};
    case eKoRWCamera: return {"Camera", 10, 10};
    case eKoRWX: return {"   X", 21, 21};
    case eKoRWY: return {"   Y", 21, 21};
    case eKoRWZ: return {"   Z", 21, 21};
    case eKoRWDx: return {"  dx", 24, 24};
    case eKoRWDy: return {"  dy", 24, 24};
    case eKoRWDz: return {"  dz", 24, 24};
    case eKoRWDS: return {"  dS", 24, 24};
    case eKoRWRedu: return {"Redu", 24, 24};
    case eKoRWRedu2: return {"Redu2", 24, 24};
    case eKoRWRedu3: return {"Redu3", 24, 24};
    case eKoRWColor: return {" Color", 10, 21};
    case eKoRWSx: return {"  Sx", 24, 24};
    case eKoRWSy: return {"  Sy", 24, 24};
    case eKoRWSz: return {"  Sz", 24, 24};
    case eKoRWResidualX: return {"Residual x", 24, 24};
    case eKoRWResidualY: return {"Residual y", 24, 24};
    case eKoRWResidualZ: return {"Residual z", 24, 24};
    default: return {nullptr, 0, 0};
    }
}

template <class F>
void ForEachField(std::span<const eKoPointRWMask> mask, F&& f)
{
    for (eKoPointRWMask field : mask) {
        if (field == eKoRWEnd)
            break;
        f(field);
    }
}

}  // namespace

const char* KoPointFieldHeader(eKoPointRWMask field) { return Column(field).header; }

void KoWritePointHeader(std::ostream& out, std::span<const eKoPointRWMask> mask)
{
    ForEachField(mask, [&](eKoPointRWMask field) {
        const FieldColumn column = Column(field);
        if (!column.header)
            return;
        out << ' ' << (field == eKoRWName ? std::left : std::right) << std::setw(column.headerWidth)
            << column.header;
    });
    out << std::right;
}

void KoWritePoint(std::ostream& out, const KoPoint& p, std::span<const eKoPointRWMask> mask)
{
    out.precision(16);
    out.unsetf(std::ios::floatfield);
    ForEachField(mask, [&](eKoPointRWMask field) {
        const FieldColumn column = Column(field);
        if (!column.header)
            return;
        out << ' ';
        if (field == eKoRWName) {
            out << std::left << std::setw(column.rowWidth) << ('"' + p.name.StdString() + '"') << std::right;
            return;
        }
        out << std::right << std::setw(column.rowWidth);
        switch (field) {
        case eKoRWNumber: out << p.number; break;
        case eKoRWFlag: out << p.flag; break;
        case eKoRWCodeText: out << p.CodeText(); break;
        case eKoRWCode: out << static_cast<unsigned>(p.code); break;
        case eKoRWPP: out << p.name.c_str(); break;
        case eKoRWPhoto: out << p.photo; break;
        case eKoRWCamera: out << p.camera; break;
        case eKoRWX: out << p.x; break;
        case eKoRWY: out << p.y; break;
        case eKoRWZ: out << p.z; break;
        case eKoRWDx: case eKoRWSx: out << p.dx; break;
        case eKoRWDy: case eKoRWSy: out << p.dy; break;
        case eKoRWDz: case eKoRWSz: out << p.dz; break;
        case eKoRWDS: out << std::sqrt(p.dx * p.dx + p.dy * p.dy + p.dz * p.dz); break;
        case eKoRWRedu: case eKoRWResidualX: out << p.redu; break;
        case eKoRWRedu2: case eKoRWResidualY: out << p.redu2; break;
        case eKoRWRedu3: case eKoRWResidualZ: out << p.redu3; break;
        case eKoRWColor: out << p.color; break;
        default: break;
        }
    });
}

bool KoReadPoint(KoTokenReader& reader, KoPoint& p, std::span<const eKoPointRWMask> mask)
{
    bool complete = true;
    // Running out of items mid-row leaves the remaining fields at 0 / empty and reports it.
    auto reached = [&]() {
        if (reader.AtEnd())
            complete = false;
        return &reader;
    };
    auto integer = [&]() { return reached()->ReadInteger(); };
    auto number = [&]() { return reached()->ReadNumber(); };

    ForEachField(mask, [&](eKoPointRWMask field) {
        switch (field) {
        case eKoRWNumber: p.number = static_cast<std::uint32_t>(integer()); break;
        case eKoRWName: p.name = reached()->ReadText(); break;
        case eKoRWFlag: p.flag = static_cast<std::int32_t>(integer()); break;
        case eKoRWCodeText: p.SetCode(static_cast<int>(integer())); break;
        case eKoRWCode: p.code = static_cast<std::uint16_t>(integer()); break;
        case eKoRWPP: case eKoRWDS: case eKoRWSkip: reached()->Skip(); break;
        case eKoRWPhoto: p.photo = static_cast<std::int32_t>(integer()); break;
        case eKoRWCamera: p.camera = static_cast<std::int32_t>(integer()); break;
        case eKoRWX: p.x = number(); break;
        case eKoRWY: p.y = number(); break;
        case eKoRWZ: p.z = number(); break;
        case eKoRWDx: case eKoRWSx: p.dx = number(); break;
        case eKoRWDy: case eKoRWSy: p.dy = number(); break;
        case eKoRWDz: case eKoRWSz: p.dz = number(); break;
        case eKoRWRedu: p.redu = number(); break;
        case eKoRWRedu2: p.redu2 = number(); break;
        case eKoRWRedu3: p.redu3 = number(); break;
        case eKoRWColor: p.color = static_cast<std::int32_t>(integer()); break;
        default: break;  // residuals are derived values and unknown fields have no column
        }
    });
    return complete && reader.Status() != eKoReaderStatus::ReadError;
}
