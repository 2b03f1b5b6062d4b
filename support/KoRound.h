#pragma once

// Rounds to a multiple of step. step 0 leaves the value unchanged.
//   mode 0: to the nearest multiple, halves away from zero (2.5 -> 3, -2.5 -> -3);
//   mode > 0: one step away from zero, an exact multiple too (2.0 -> 3.0 with step 1);
//   mode < 0: down to the multiple at or below (floor).
double KoRoundToStep(double value, double step, int mode);
