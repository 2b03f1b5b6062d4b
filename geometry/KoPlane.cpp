#include "geometry/KoPlane.h"

#include "geometry/KoBoundingBox.h"
#include "points/KoPoint.h"
#include "support/KoTokenReader.h"

#include <cmath>

KoPlane::KoPlane() : normal(3) {}

KoPlane::KoPlane(double nx, double ny, double nz, double d) : normal(3), D(d)
{
    normal[1] = nx;
    normal[2] = ny;
    normal[3] = nz;
}

KoPlane::KoPlane(const KoPlane& other) : KoListnode(other), normal(other.normal), D(other.D) {}

KoPlane& KoPlane::operator=(const KoPlane& other)
{
    if (this != &other) {
        KoObject::operator=(other);
        normal = other.normal;
        D = other.D;
    }
    return *this;
}

bool KoPlane::IsValid() const { return Nx() != 0.0 || Ny() != 0.0 || Nz() != 0.0; }

int KoPlane::DominantAxis() const
{
    const double ax = std::fabs(Nx());
    const double ay = std::fabs(Ny());
    const double az = std::fabs(Nz());
    if (ax > ay && ax > az)
        return 0;
    if (ay > ax && ay > az)
        return 1;
    return 2;
}

double KoPlane::SignedDistance(double x, double y, double z) const
{
    return (Nx() * x + Ny() * y + Nz() * z + D) / normal.Length();
}

double KoPlane::SignedDistance(const KoPoint& point) const { return SignedDistance(point.x, point.y, point.z); }

bool KoPlane::Foot(const KoPoint& point, KoPoint& foot) const
{
    if (!IsValid())
        return false;
    const double d = SignedDistance(point);
    foot.x = point.x - d * Nx();
    foot.y = point.y - d * Ny();
    foot.z = point.z - d * Nz();
    return true;
}

double KoPlane::Angle(const KoPlane& other) const
{
    KoVector a(normal);
    KoVector b(other.normal);
    a.Normalize();
    b.Normalize();
    const double k = a * b;
    if (k >= 1.0)
        return 0.0;
    return std::acos(k);
}

bool KoPlane::IsParallel(const KoPlane& other) const { return Angle(other) < kKoPlaneParallelTolerance; }

bool KoPlane::IsWideAngle(const KoPlane& other) const
{
    return Angle(other) >= 0.7853981633974483 - kKoPlaneParallelTolerance;
}

double KoPlane::DistanceTo(const KoPlane& other) const { return IsParallel(other) ? D - other.D : 0.0; }

void KoPlane::Read(KoTokenReader& reader)
{
    number = static_cast<std::uint32_t>(reader.ReadInteger());
    name = reader.ReadText();
    normal[1] = reader.ReadNumber();
    normal[2] = reader.ReadNumber();
    normal[3] = reader.ReadNumber();
    D = reader.ReadNumber();
}

std::string KoPlane::ToString() const { return KoFormatLine(" v: %.3f %.3f, %.3f, D: %.3f", Nx(), Ny(), Nz(), D); }
