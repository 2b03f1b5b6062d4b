#include "geometry/KoBoundingBox2d.h"

#include <algorithm>
#include <string>

KoBoundingBox2d::KoBoundingBox2d() { Reset(); }

KoBoundingBox2d::KoBoundingBox2d(double x1, double y1, double x2, double y2)
    : minX(std::min(x1, x2)), minY(std::min(y1, y2)), maxX(std::max(x1, x2)), maxY(std::max(y1, y2))
{
}

void KoBoundingBox2d::Reset()
{
    minX = minY = kKoBoxEmptyMin;
    maxX = maxY = kKoBoxEmptyMax;
    m_state = 0;
}

bool KoBoundingBox2d::IsValid() const
{
    return minX != kKoBoxEmptyMin && minY != kKoBoxEmptyMin && maxX != kKoBoxEmptyMax && maxY != kKoBoxEmptyMax;
}

void KoBoundingBox2d::Add(double x, double y)
{
    minX = std::min(minX, x);
    minY = std::min(minY, y);
    maxX = std::max(maxX, x);
    maxY = std::max(maxY, y);
}

double KoBoundingBox2d::MaxExtent() const { return std::max(Width(), Height()); }

double KoBoundingBox2d::MinExtent() const { return std::min(Width(), Height()); }

double KoBoundingBox2d::Area() const { return Width() * Height(); }

void KoBoundingBox2d::Union(const KoBoundingBox2d& other)
{
    minX = std::min(minX, other.minX);
    minY = std::min(minY, other.minY);
    maxX = std::max(maxX, other.maxX);
    maxY = std::max(maxY, other.maxY);
}

KoBoundingBox2d KoBoundingBox2d::operator+(const KoBoundingBox2d& other) const
{
    KoBoundingBox2d result(*this);
    result.Union(other);
    return result;
}

bool KoBoundingBox2d::DoesNotStrictlyEnclose(const KoBoundingBox2d& b) const
{
    return minX >= b.minX || minY >= b.minY || maxX <= b.maxX || maxY <= b.maxY;
}

bool KoBoundingBox2d::Overlaps(const KoBoundingBox2d& b, bool withNeighbour) const
{
    if (!IsValid() || !b.IsValid())
        return false;
    if (withNeighbour)
        return minX <= b.maxX && b.minX <= maxX && minY <= b.maxY && b.minY <= maxY;
    return minX < b.maxX && b.minX < maxX && minY < b.maxY && b.minY < maxY;
}

void KoBoundingBox2d::Print(const KoTextSink& sink, std::string_view name) const
{
    sink("KoBoundingBox2d " + std::string(name));
    if (!IsValid()) {
        sink(" invalid");
        return;
    }
    sink(KoFormatLine("xy min: %f %f; max: %f %f", minX, minY, maxX, maxY));
    sink(KoFormatLine("x*y:  %f %f", Width(), Height()));
}
