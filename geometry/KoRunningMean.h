#pragma once

#include <cstdint>

class KoPoint;

// Mean of a stream of points, updated one point at a time without keeping the points.
class KoRunningMean {
public:
    KoRunningMean() = default;

    // Sets the mean directly with count 0: it is a placeholder that the first point added replaces.
    void Set(double x0, double y0, double z0);

    void Add(double px, double py, double pz);
    void Add(const KoPoint& point);

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    int32_t count = 0;
};
