#pragma once

#include <cstdint>

// Mean of a stream of points, updated one point at a time without keeping the points.
class KoRunningMean {
public:
    KoRunningMean() = default;

    // Starts over from a given position; the next added point weighs as much as that position.
    void Set(double x0, double y0, double z0);

    void Add(double px, double py, double pz);

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    int32_t count = 0;
};
