#include "support/KoRound.h"

#include <cmath>

double KoRoundToStep(double value, double step, int mode)
{
    if (step == 0.0)
        return value;
    if (mode < 0)
        return std::floor(value / step) * step;
    if (value == 0.0)
        return 0.0;
    const double offset = mode == 0 ? step / 2.0 : step;
    const double magnitude = std::floor((std::fabs(value) + offset) / step) * step;
    return value < 0.0 ? -magnitude : magnitude;
}
