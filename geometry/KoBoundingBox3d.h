#pragma once

#include "geometry/KoBoundingBox.h"

#include <cstdint>
#include <string_view>

// Axis-aligned box in space, e.g. the extent of a set of measured points.
class KoBoundingBox3d {
public:
    KoBoundingBox3d();  // empty
    KoBoundingBox3d(double x1, double y1, double z1, double x2, double y2, double z2);

    void Reset();
    bool IsValid() const;

    // Grows the box so that it holds the point.
    void Add(double x, double y, double z);

    double MaxExtent() const;
    double MinExtent() const;
    double Volume() const;

    void Union(const KoBoundingBox3d& other);
    KoBoundingBox3d operator+(const KoBoundingBox3d& other) const;

    // True as soon as one bound of this box does not lie strictly outside the same bound of `other`;
    // false exactly when this box strictly encloses `other` on every axis (equal bounds do not enclose).
    bool DoesNotStrictlyEnclose(const KoBoundingBox3d& other) const;

    // Overlap on every axis. With `withNeighbour` boxes that only touch (a shared face, edge or corner) count
    // as overlapping; without it the shared part must have a positive extent on every axis.
    bool Overlaps(const KoBoundingBox3d& other, bool withNeighbour) const;

    void Print(const KoTextSink& sink, std::string_view name = {}) const;

    int32_t State() const { return m_state; }

    double minX, minY, minZ;
    double maxX, maxY, maxZ;

private:
    int32_t m_state = 0;
};
