#include "points/KoPoint.h"

#include <cmath>
#include <cstdio>
#include <cstring>

KoPoint::KoPoint(std::uint32_t number, double x, double y, double z, std::uint16_t code)
    : KoListnode(number), code(code), x(x), y(y), z(z)
{
}

KoPoint::KoPoint(const KoPoint& other) : KoListnode(), KoFlag() { *this = other; }

KoPoint& KoPoint::operator=(const KoPoint& other)
{
    if (this == &other)
        return *this;
    number = other.number;
    name = other.name;
    photo = other.photo;
    x = other.x;
    y = other.y;
    z = other.z;
    code = other.code;
    dx = other.dx;
    dy = other.dy;
    dz = other.dz;
    redu = other.redu;
    redu2 = other.redu2;
    redu3 = other.redu3;
    camera = other.camera;
    flag = other.flag;
    mark = other.mark;
    extra = other.extra;
    color = other.color;
    // The record copy has always ended by setting mark once more; kept so the order stays the same.
    mark = other.mark;
    return *this;
}

int KoPoint::Compare(const KoPoint& other) const
{
    // Wrap-around arithmetic as the 32-bit original computed it.
    const std::uint32_t photoDiff = static_cast<std::uint32_t>(photo) - static_cast<std::uint32_t>(other.photo);
    const std::uint32_t numberDiff = number - other.number;
    return static_cast<std::int32_t>(photoDiff + numberDiff);
}

int KoPoint::Compare(const KoBaseListnode& other) const
{
    const auto* point = dynamic_cast<const KoPoint*>(&other);
    return point ? Compare(*point) : 0;
}

bool KoPoint::Matches(std::uint32_t number, std::int32_t photo) const
{
    return this->number == number && (photo == 0 || this->photo == photo);
}

namespace {

// The component set from the characters of a text: any of xChars selects X, and so on.
std::uint16_t CodeFromText(const char* text, const char* xChars, const char* yChars, const char* zChars)
{
    std::uint16_t code = 0;
    if (!text)
        return code;
    if (std::strpbrk(text, xChars))
        code |= KoPoint::kCodeX;
    if (std::strpbrk(text, yChars))
        code |= KoPoint::kCodeY;
    if (std::strpbrk(text, zChars))
        code |= KoPoint::kCodeZ;
    return code;
}

}  // namespace

void KoPoint::SetCode(int digits)
{
    char text[16];
    std::snprintf(text, sizeof text, "%d", digits);
    code = CodeFromText(text, "1", "2", "3");
}

void KoPoint::SetCode(const char* text) { code = CodeFromText(text, "1Xx", "2Yy", "3Zz"); }

const char* KoPoint::CodeText(std::uint16_t code)
{
    static const char* const kTexts[8] = {"  0", "  1", "  2", " 12", "  3", " 13", " 23", "123"};
    return kTexts[code & 7];
}

const char* KoPoint::CodeText() const { return CodeText(code); }

KoPoint KoPoint::operator+(const KoPoint& other) const
{
    KoPoint result(*this);
    result.x += other.x;
    result.y += other.y;
    result.z += other.z;
    result.dx += other.dx;
    result.dy += other.dy;
    result.dz += other.dz;
    return result;
}

KoPoint KoPoint::operator-(const KoPoint& other) const
{
    KoPoint result(*this);
    result.x -= other.x;
    result.y -= other.y;
    result.z -= other.z;
    result.dx -= other.dx;
    result.dy -= other.dy;
    result.dz -= other.dz;
    return result;
}

KoPoint KoPoint::Mean(const KoPoint& other) const
{
    KoPoint result(*this);
    result.x = (x + other.x) * 0.5;
    result.y = (y + other.y) * 0.5;
    result.z = (z + other.z) * 0.5;
    result.dx = (dx + other.dx) * 0.5;
    result.dy = (dy + other.dy) * 0.5;
    result.dz = (dz + other.dz) * 0.5;
    return result;
}

KoPoint KoPoint::operator*(double factor) const
{
    KoPoint result(*this);
    result.x *= factor;
    result.y *= factor;
    result.z *= factor;
    return result;
}

KoPoint KoPoint::operator/(double factor) const
{
    KoPoint result(*this);
    result.x /= factor;
    result.y /= factor;
    result.z /= factor;
    return result;
}

double KoPoint::SquaredDistance(const KoPoint& other) const
{
    const double ex = x - other.x;
    const double ey = y - other.y;
    const double ez = z - other.z;
    return ex * ex + ey * ey + ez * ez;
}

double KoPoint::Distance(const KoPoint& other) const { return std::sqrt(SquaredDistance(other)); }
