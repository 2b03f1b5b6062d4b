#include "geometry/KoRunningMean.h"

#include "points/KoPoint.h"

void KoRunningMean::Set(double x0, double y0, double z0)
{
    x = x0;
    y = y0;
    z = z0;
    count = 0;
}

void KoRunningMean::Add(double px, double py, double pz)
{
    const double n = count;
    x = (n * x + px) / (n + 1.0);
    y = (n * y + py) / (n + 1.0);
    z = (n * z + pz) / (n + 1.0);
    count += 1;
}

void KoRunningMean::Add(const KoPoint& point) { Add(point.x, point.y, point.z); }
