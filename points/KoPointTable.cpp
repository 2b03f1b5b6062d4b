#include "points/KoPointTable.h"

#include <cmath>
#include <cstdint>
#include <charconv>
#include <string>
#include <string_view>
#include <type_traits>

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


void PutColumn(std::ostream& out, std::string_view text, int width, bool leftAligned = false)
{
    const std::size_t pad = text.size() < static_cast<std::size_t>(width) ? width - text.size() : 0;
    static constexpr char kBlanks[] = "                                ";  // wider than any column
    out.put(' ');
    if (!leftAligned)
        out.write(kBlanks, static_cast<std::streamsize>(pad));
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    if (leftAligned)
        out.write(kBlanks, static_cast<std::streamsize>(pad));
}

// Numbers are formatted here rather than by the stream: the same text as 16 significant digits in
// general notation, but always with a '.' whatever locale the stream carries, and much faster.
template <class N>
void PutNumber(std::ostream& out, N value, int width)
{
    char buffer[40];
    std::to_chars_result r;
    if constexpr (std::is_floating_point_v<N>)
        r = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 16);
    else
        r = std::to_chars(buffer, buffer + sizeof buffer, value);
    PutColumn(out, std::string_view(buffer, static_cast<std::size_t>(r.ptr - buffer)), width);
}

}  // namespace

const char* KoPointFieldHeader(eKoPointRWMask field) { return Column(field).header; }

void KoWritePointHeader(std::ostream& out, std::span<const eKoPointRWMask> mask)
{
    ForEachField(mask, [&](eKoPointRWMask field) {
        const FieldColumn column = Column(field);
        if (column.header)
            PutColumn(out, column.header, column.headerWidth, field == eKoRWName);
    });
}

void KoWritePoint(std::ostream& out, const KoPoint& p, std::span<const eKoPointRWMask> mask)
{
    // The stream is left in the row notation, so whatever the caller adds to the row matches it.
    out.precision(16);
    out.unsetf(std::ios::floatfield);
    ForEachField(mask, [&](eKoPointRWMask field) {
        const int width = Column(field).rowWidth;
        switch (field) {
        case eKoRWNumber: PutNumber(out, p.number, width); break;
        case eKoRWName: {
            std::string quoted;
            quoted.reserve(p.name.Length() + 2);
            quoted += '"';
            quoted += p.name.View();
            quoted += '"';
            PutColumn(out, quoted, width, true);
            break;
        }
        case eKoRWFlag: PutNumber(out, p.flag, width); break;
        case eKoRWCodeText: PutColumn(out, p.CodeText(), width); break;
        case eKoRWCode: PutNumber(out, static_cast<unsigned>(p.code), width); break;
        case eKoRWPP: PutColumn(out, p.name.View(), width); break;
        case eKoRWPhoto: PutNumber(out, p.photo, width); break;
        case eKoRWCamera: PutNumber(out, p.camera, width); break;
        case eKoRWX: PutNumber(out, p.x, width); break;
        case eKoRWY: PutNumber(out, p.y, width); break;
        case eKoRWZ: PutNumber(out, p.z, width); break;
        case eKoRWDx: case eKoRWSx: PutNumber(out, p.dx, width); break;
        case eKoRWDy: case eKoRWSy: PutNumber(out, p.dy, width); break;
        case eKoRWDz: case eKoRWSz: PutNumber(out, p.dz, width); break;
        case eKoRWDS: PutNumber(out, std::sqrt(p.dx * p.dx + p.dy * p.dy + p.dz * p.dz), width); break;
        case eKoRWRedu: case eKoRWResidualX: PutNumber(out, p.redu, width); break;
        case eKoRWRedu2: case eKoRWResidualY: PutNumber(out, p.redu2, width); break;
        case eKoRWRedu3: case eKoRWResidualZ: PutNumber(out, p.redu3, width); break;
        case eKoRWColor: PutNumber(out, p.color, width); break;
        default: break;  // unknown fields and field 20 write nothing
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
