#pragma once

#include "points/KoPoint.h"

// Axis-parallel rectangle in the plane given by two corner points (z = 0.0). The constructor puts the
// smaller x and y into the first corner; the corners are public and may be set directly, in any order.
class KoRectangle {
public:
    KoRectangle(double x1, double y1, double x2, double y2);

    // Boundary counts as inside: a point picked exactly on an edge belongs to the rectangle.
    bool Contains(double px, double py) const;
    bool Contains(const KoPoint& point) const { return Contains(point.x, point.y); }

    KoPoint corner1;
    KoPoint corner2;
};
