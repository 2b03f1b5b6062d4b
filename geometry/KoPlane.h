#pragma once

#include "geometry/KoVector.h"
#include "points/KoListnode.h"

#include <string>

class KoPoint;
class KoTokenReader;

// Largest angle (radians) between two planes that still counts as parallel: the double 1.0004 - 1.0.
inline constexpr double kKoPlaneParallelTolerance = 1.0004 - 1.0;

// A named plane in space, n . p + D = 0, kept as a node of a KoPlaneList. The normal is not necessarily of
// unit length: distances divide by its length, but the foot of the perpendicular does not (see there).
class KoPlane : public KoListnode {
public:
    KoPlane();
    KoPlane(double nx, double ny, double nz, double d);
    KoPlane(const KoPlane& other);
    KoPlane& operator=(const KoPlane& other);  // number, name, normal and D
    ~KoPlane() override = default;

    double Nx() const { return normal[1]; }
    double Ny() const { return normal[2]; }
    double Nz() const { return normal[3]; }

    // A plane needs a normal with at least one non-zero component.
    bool IsValid() const;

    // 0 (x), 1 (y) or 2 (z): the axis whose normal component is strictly the largest in magnitude; ties go
    // to z, so a plane with |nx| = |ny| > |nz| counts as a z plane.
    int DominantAxis() const;

    double SignedDistance(double x, double y, double z) const;
    double SignedDistance(const KoPoint& point) const;

    // Writes p - d * normal into foot's x, y, z, with d the signed distance of p; false for an invalid
    // plane. The stored normal is used as it is, so the result is the true foot only for a unit normal.
    bool Foot(const KoPoint& point, KoPoint& foot) const;

    // Angle in radians between the two normals (0.0 when they point the same way within rounding).
    double Angle(const KoPlane& other) const;
    bool IsParallel(const KoPlane& other) const;
    // True when the planes meet at a quarter of pi or more, less the parallel tolerance.
    bool IsWideAngle(const KoPlane& other) const;
    // D(this) - D(other) for parallel planes, 0.0 otherwise; a metric distance for unit normals.
    double DistanceTo(const KoPlane& other) const;

    // Number and name, then nx, ny, nz and D; a token that is not a number gives 0.0.
    void Read(KoTokenReader& reader);

    // " v: nx ny, nz, D: D" with three decimals.
    std::string ToString() const;

    KoVector normal;
    double D = 0.0;
};
