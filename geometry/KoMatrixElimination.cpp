#include "geometry/KoMatrixElimination.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace {

constexpr double kSingular = 1e-10;

void SwapRows(double* data, int columns, int row1, int row2)
{
  double* p = data + row1 * columns;
  double* q = data + row2 * columns;
  for (int j = 0; j < columns; ++j) std::swap(p[j], q[j]);
}

// Forward elimination. N and M are the sizes when known at compile time (0: use n and m), so that the
// everyday 3x3 and 4x4 cases unroll completely. Candidate pivot rows of column k are k ... lastCandidate
// (n - 1 for solving, n - 2 for the determinant). Returns false when singular; counts row exchanges.
template <int N, int M>
bool Eliminate(double* a, int nRuntime, double* b, int mRuntime, bool determinantSearch, int& exchanges)
{
  const int n = N ? N : nRuntime;
  const int m = M ? M : mRuntime;
  const int lastCandidate = determinantSearch ? n - 2 : n - 1;
  for (int k = 0; k < n; ++k) {
    int pivot = k;
    if (k <= lastCandidate) {
      // The pivot row has the largest ratio |a(i, k)| / s(i), with s(i) the row's absolute sum over the
      // columns still to be eliminated, taken afresh at every step: the choice does not depend on how the
      // rows happen to be scaled. Ratios are compared by cross-multiplication (exact for positive sums and
      // free of divisions); a later row wins only with a strictly greater ratio, so on ties the upper stays.
      double bestElement = 0.0;
      double bestSum = 1.0;
      for (int i = k; i <= lastCandidate; ++i) {
        const double* row = a + i * n;
        double sum = 0.0;
#pragma GCC unroll 8
        for (int j = k; j < n; ++j) sum += std::fabs(row[j]);
        if (sum < kSingular) return false;
        const double element = std::fabs(row[k]);
        if (i == k || element * bestSum > bestElement * sum) {
          bestElement = element;
          bestSum = sum;
          pivot = i;
        }
      }
      if (bestElement / bestSum < kSingular) return false;
    }
    if (pivot != k) {
      SwapRows(a, n, pivot, k);
      if (b) SwapRows(b, m, pivot, k);
      ++exchanges;
    }
    const double* pivotRow = a + k * n;
    const double* pivotB = b ? b + k * m : nullptr;
    for (int i = k + 1; i < n; ++i) {
      double* row = a + i * n;
      const double f = -row[k] / pivotRow[k];
#pragma GCC unroll 8
      for (int j = k; j < n; ++j) row[j] += f * pivotRow[j];
      if (b) {
        double* rowB = b + i * m;
#pragma GCC unroll 8
        for (int j = 0; j < m; ++j) rowB[j] += f * pivotB[j];
      }
      row[k] = -f;  // keep the multiplier where the eliminated element was
    }
  }
  return std::fabs(a[n * n - 1]) >= kSingular;
}

template <int N, int M>
bool SolveInPlace(double* a, int nRuntime, double* b, int mRuntime)
{
  const int n = N ? N : nRuntime;
  const int m = M ? M : mRuntime;
  int exchanges = 0;
  if (!Eliminate<N, M>(a, n, b, m, false, exchanges)) return false;
  // Back substitution, rows from n down to 1; all columns of B advance together so that the loops over
  // the columns vectorise (each element still sees the same operations in the same order).
  for (int i = n - 1; i >= 0; --i) {
    const double* row = a + i * n;
    double* x = b + i * m;
    for (int k = i + 1; k < n; ++k) {
      const double factor = row[k];
      const double* solved = b + k * m;
#pragma GCC unroll 8
      for (int c = 0; c < m; ++c) x[c] -= factor * solved[c];
    }
    const double pivot = row[i];
#pragma GCC unroll 8
    for (int c = 0; c < m; ++c) x[c] /= pivot;
  }
  return true;
}

// Small systems are solved in local arrays: the compiler then knows that A and B do not overlap and keeps
// the elements in registers.
template <int N, int M>
bool SolveFixed(double* a, double* b)
{
  double localA[N * N];
  double localB[N * M];
  std::copy_n(a, N * N, localA);
  std::copy_n(b, N * M, localB);
  const bool solved = SolveInPlace<N, M>(localA, N, localB, M);
  std::copy_n(localA, N * N, a);
  std::copy_n(localB, N * M, b);
  return solved;
}

// Two doubles handled by one instruction; the rows of a small matrix are held as pairs of these so that
// the whole matrix and the inverse under construction fit in the vector registers.
using Pair = double __attribute__((vector_size(16)));

// Inversion of a small matrix: the elimination of SolveInPlace against the identity, with the identity
// carried implicitly. Its columns are kept in the order in which their rows become pivots; in that order the
// eliminated identity is a unit lower triangle, whose ones and zeros need no arithmetic, and whose other
// elements take the place of the eliminated elements of A (swapped along with A's rows). Pivot search, row
// sums, multipliers and the updates of A are the general elimination's operations in the same order, so
// the same matrices count as singular. The back substitution divides by the pivots as the general one does,
// so the inverse is the general solve's bit for bit; it yields the inverse with its columns in pivot order,
// and they are put back in place when stored.
// Every element sees scalar operations in the general order; the pairs only do two of them at once. An odd
// size leaves a padding element in each row, which stays zero.
template <int N>
bool InvertFixed(const double* source, double* target)
{
  constexpr int V = (N + 1) / 2;
  Pair a[N][V];
  int pivotRowOf[N];
#pragma GCC unroll 4
  for (int i = 0; i < N; ++i) {
    pivotRowOf[i] = i;
#pragma GCC unroll 2
    for (int v = 0; v < V; ++v) {
      a[i][v] = Pair{source[i * N + 2 * v], 2 * v + 1 < N ? source[i * N + 2 * v + 1] : 0.0};
    }
  }
#pragma GCC unroll 4
  for (int k = 0; k < N - 1; ++k) {
    double sums[N];
    bool singular = false;
#pragma GCC unroll 4
    for (int i = k; i < N; ++i) {
      double sum = std::fabs(a[i][k / 2][k % 2]);  // the general sum starts from 0.0, and 0.0 + |x| is |x|
#pragma GCC unroll 4
      for (int j = k + 1; j < N; ++j) sum += std::fabs(a[i][j / 2][j % 2]);
      sums[i] = sum;
      singular |= sum < kSingular;
    }
    int pivot = k;
    double bestElement = std::fabs(a[k][k / 2][k % 2]);
    double bestSum = sums[k];
#pragma GCC unroll 4
    for (int i = k + 1; i < N; ++i) {
      const double element = std::fabs(a[i][k / 2][k % 2]);
      if (element * bestSum > bestElement * sums[i]) {
        bestElement = element;
        bestSum = sums[i];
        pivot = i;
      }
    }
    if (singular || bestElement / bestSum < kSingular) return false;
    // Branches with constant row numbers keep the rows in registers; the choice is well predicted.
#pragma GCC unroll 4
    for (int i = k + 1; i < N; ++i) {
      if (pivot == i) {
#pragma GCC unroll 2
        for (int v = 0; v < V; ++v) std::swap(a[k][v], a[i][v]);
        std::swap(pivotRowOf[k], pivotRowOf[i]);
      }
    }
#pragma GCC unroll 4
    for (int i = k + 1; i < N; ++i) {
      const double f = -a[i][k / 2][k % 2] / a[k][k / 2][k % 2];
      const Pair factor = {f, f};
#pragma GCC unroll 2
      for (int v = 0; v < V; ++v) a[i][v] += factor * a[k][v];
      a[i][k / 2][k % 2] = f;  // 0 + f * 1 in the identity's column of the pivot row
    }
  }
  if (!(std::fabs(a[N - 1][(N - 1) / 2][(N - 1) % 2]) >= kSingular)) return false;
  Pair x[N][V];
#pragma GCC unroll 4
  for (int i = N - 1; i >= 0; --i) {
    // The eliminated identity: the stored elements left of the diagonal, one on it, zeros right of it.
#pragma GCC unroll 2
    for (int v = 0; v < V; ++v) {
      const int c = 2 * v;
      x[i][v] = Pair{c < i ? a[i][v][0] : c == i ? 1.0 : 0.0, c + 1 < i ? a[i][v][1] : c + 1 == i ? 1.0 : 0.0};
    }
#pragma GCC unroll 4
    for (int k = i + 1; k < N; ++k) {
      const double element = a[i][k / 2][k % 2];
      const Pair factor = {element, element};
#pragma GCC unroll 2
      for (int v = 0; v < V; ++v) x[i][v] -= factor * x[k][v];
    }
    const double pivot = a[i][i / 2][i % 2];
    const Pair divisor = {pivot, pivot};
#pragma GCC unroll 2
    for (int v = 0; v < V; ++v) x[i][v] /= divisor;
  }
#pragma GCC unroll 4
  for (int i = 0; i < N; ++i) {
#pragma GCC unroll 4
    for (int c = 0; c < N; ++c) target[i * N + pivotRowOf[c]] = x[i][c / 2][c % 2];
  }
  return true;
}


}  // namespace

bool KoEliminateAndInvert(const double* source, double* target, int n)
{
  if (n == 4) return InvertFixed<4>(source, target);
  if (n == 3) return InvertFixed<3>(source, target);
  if (n == 0) return false;
  std::vector<double> a(source, source + static_cast<size_t>(n) * n);
  std::fill_n(target, static_cast<size_t>(n) * n, 0.0);
  for (int i = 0; i < n; ++i) target[i * n + i] = 1.0;
  return SolveInPlace<0, 0>(a.data(), n, target, n);
}

bool KoEliminateAndSolve(double* a, int n, double* b, int m)
{
  if (n == 0) return false;
  if (n == 4 && m == 4) return SolveFixed<4, 4>(a, b);
  if (n == 3 && m == 3) return SolveFixed<3, 3>(a, b);
  if (n == 3 && m == 1) return SolveFixed<3, 1>(a, b);
  return SolveInPlace<0, 0>(a, n, b, m);
}

double KoEliminationDeterminant(double* a, int n)
{
  if (n == 0) return 0.0;
  int exchanges = 0;
  const bool regular = n == 4   ? Eliminate<4, 1>(a, n, nullptr, 0, true, exchanges)
                       : n == 3 ? Eliminate<3, 1>(a, n, nullptr, 0, true, exchanges)
                                : Eliminate<0, 0>(a, n, nullptr, 0, true, exchanges);
  if (!regular) return 0.0;
  double determinant = exchanges % 2 ? -1.0 : 1.0;
  for (int k = 0; k < n; ++k) determinant *= a[k * n + k];
  return determinant;
}
