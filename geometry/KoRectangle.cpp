#include "geometry/KoRectangle.h"

#include <algorithm>
#include <utility>

KoRectangle::KoRectangle(double x1, double y1, double x2, double y2)
{
    corner1.x = x1;
    corner1.y = y1;
    corner2.x = x2;
    corner2.y = y2;
    if (corner1.x > corner2.x)
        std::swap(corner1.x, corner2.x);
    if (corner1.y > corner2.y)
        std::swap(corner1.y, corner2.y);
}

bool KoRectangle::Contains(double px, double py) const
{
    // Minima and maxima are taken again here because the corners may have been set directly.
    const double minX = std::min(corner1.x, corner2.x);
    const double maxX = std::max(corner1.x, corner2.x);
    const double minY = std::min(corner1.y, corner2.y);
    const double maxY = std::max(corner1.y, corner2.y);
    return minX <= px && px <= maxX && minY <= py && py <= maxY;
}
