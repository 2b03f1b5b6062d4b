#pragma once

// Gaussian elimination with scaled partial pivoting on raw row-major arrays, shared by KoMatrix::Solve,
// Invert and Determinant. Not part of the public matrix interface.

// Solves A X = B in place: a (n x n) keeps the eliminated upper triangle with the multipliers below it,
// b (n x m) receives X. False when A is singular (b is then partly eliminated).
bool KoEliminateAndSolve(double* a, int n, double* b, int m);

// Writes the inverse of source (n x n) to target, which may be source itself. False when singular (target
// then holds partial results).
bool KoEliminateAndInvert(const double* source, double* target, int n);

// Determinant by the same elimination, except that the pivot search of column k never looks at the last
// row. Destroys a; 0.0 when singular.
double KoEliminationDeterminant(double* a, int n);
