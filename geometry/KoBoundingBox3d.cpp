#include "geometry/KoBoundingBox3d.h"

#include <algorithm>
#include <string>

KoBoundingBox3d::KoBoundingBox3d() { Reset(); }

KoBoundingBox3d::KoBoundingBox3d(double x1, double y1, double z1, double x2, double y2, double z2)
    : minX(std::min(x1, x2)), minY(std::min(y1, y2)), minZ(std::min(z1, z2)),
      maxX(std::max(x1, x2)), maxY(std::max(y1, y2)), maxZ(std::max(z1, z2))
{
}

void KoBoundingBox3d::Reset()
{
    minX = minY = minZ = kKoBoxEmptyMin;
    maxX = maxY = maxZ = kKoBoxEmptyMax;
    m_state = 0;
}

bool KoBoundingBox3d::IsValid() const
{
    return minX != kKoBoxEmptyMin && minY != kKoBoxEmptyMin && minZ != kKoBoxEmptyMin &&
           maxX != kKoBoxEmptyMax && maxY != kKoBoxEmptyMax && maxZ != kKoBoxEmptyMax;
}

void KoBoundingBox3d::Add(double x, double y, double z)
{
    minX = std::min(minX, x);
    minY = std::min(minY, y);
    minZ = std::min(minZ, z);
    maxX = std::max(maxX, x);
    maxY = std::max(maxY, y);
    maxZ = std::max(maxZ, z);
}

double KoBoundingBox3d::MaxExtent() const { return std::max({maxX - minX, maxY - minY, maxZ - minZ}); }

double KoBoundingBox3d::MinExtent() const { return std::min({maxX - minX, maxY - minY, maxZ - minZ}); }

double KoBoundingBox3d::Volume() const { return (maxX - minX) * (maxY - minY) * (maxZ - minZ); }

void KoBoundingBox3d::Union(const KoBoundingBox3d& other)
{
    minX = std::min(minX, other.minX);
    minY = std::min(minY, other.minY);
    minZ = std::min(minZ, other.minZ);
    maxX = std::max(maxX, other.maxX);
    maxY = std::max(maxY, other.maxY);
    maxZ = std::max(maxZ, other.maxZ);
}

KoBoundingBox3d KoBoundingBox3d::operator+(const KoBoundingBox3d& other) const
{
    KoBoundingBox3d result(*this);
    result.Union(other);
    return result;
}

bool KoBoundingBox3d::DoesNotStrictlyEnclose(const KoBoundingBox3d& b) const
{
    return minX >= b.minX || minY >= b.minY || minZ >= b.minZ ||
           maxX <= b.maxX || maxY <= b.maxY || maxZ <= b.maxZ;
}

bool KoBoundingBox3d::Overlaps(const KoBoundingBox3d& b, bool withNeighbour) const
{
    if (!IsValid() || !b.IsValid())
        return false;
    if (withNeighbour)
        return minX <= b.maxX && b.minX <= maxX && minY <= b.maxY && b.minY <= maxY &&
               minZ <= b.maxZ && b.minZ <= maxZ;
    return minX < b.maxX && b.minX < maxX && minY < b.maxY && b.minY < maxY && minZ < b.maxZ && b.minZ < maxZ;
}

void KoBoundingBox3d::Print(const KoTextSink& sink, std::string_view name) const
{
    sink("KoBoundingBox3d " + std::string(name));
    if (!IsValid()) {
        sink(" invalid");
        return;
    }
    sink(KoFormatLine("xyz min: %f %f %f; max: %f %f %f", minX, minY, minZ, maxX, maxY, maxZ));
    sink(KoFormatLine("x*y*z:  %f %f %f", maxX - minX, maxY - minY, maxZ - minZ));
}
