#pragma once

#include "geometry/KoBoundingBox.h"

#include <cstdint>
#include <string_view>

// Axis-aligned box in the plane, e.g. the extent of the points a 2D transformation is estimated from.
class KoBoundingBox2d {
public:
    KoBoundingBox2d();  // empty
    KoBoundingBox2d(double x1, double y1, double x2, double y2);

    void Reset();
    bool IsValid() const;

    // Grows the box so that it holds the point.
    void Add(double x, double y);

    double Width() const { return maxX - minX; }
    double Height() const { return maxY - minY; }
    double MaxExtent() const;
    double MinExtent() const;
    double Area() const;

    void Union(const KoBoundingBox2d& other);
    KoBoundingBox2d operator+(const KoBoundingBox2d& other) const;

    // True as soon as one bound of this box does not lie strictly outside the same bound of `other`;
    // false exactly when this box strictly encloses `other` on both axes (equal bounds do not enclose).
    bool DoesNotStrictlyEnclose(const KoBoundingBox2d& other) const;

    // Overlap on both axes; see KoBoundingBox3d::Overlaps for the neighbour rule.
    bool Overlaps(const KoBoundingBox2d& other, bool withNeighbour) const;

    void Print(const KoTextSink& sink, std::string_view name = {}) const;

    int32_t State() const { return m_state; }

    double minX, minY;
    double maxX, maxY;

private:
    int32_t m_state = 0;
};
