#pragma once

// The rotation part of the spatial similarity estimate, on raw arrays.
//
// `correlation` (row-major 3x3) is the sum over all pairs of p * q^T, with p the actual and q the target
// point, both reduced to their centroid. On success `rotation` (row-major 3x3) is the proper rotation R
// that maximises sum q . (R p), which is the least-squares rotation with or without a scale factor, and
// the result is true. False when the rotation is not fixed by the points (coincident or collinear
// points, a correlation of zero); `rotation` is then unchanged.
bool KoBestRotation(const double correlation[9], double rotation[9]);

// The fixed-point iteration x <- sqrt(p + 2 sqrt(q + 2 r x)) for the largest eigenvalue, from x = 1. When the
// first result lies within 1e-10 of 1.0 there is no further round; otherwise rounds go on until two
// successive values differ by no more than 1e-10, and stop after 200 rounds in any case. `rounds` receives
// the number of rounds, `converged` whether the last step was within 1e-10.
double KoLargestRootIteration(double p, double q, double r, int& rounds, bool& converged);
