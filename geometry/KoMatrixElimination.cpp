#include "geometry/KoMatrixElimination.h"

#include <cmath>
#include <utility>

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
      double bestRatio = -1.0;
      for (int i = k; i <= lastCandidate; ++i) {
        const double* row = a + i * n;
        // The scale of a row is its absolute sum over the columns still to be eliminated, taken afresh at
        // every step: it makes the pivot choice independent of how the rows happen to be scaled.
        double sum = 0.0;
        for (int j = k; j < n; ++j) sum += std::fabs(row[j]);
        if (sum < kSingular) return false;
        const double ratio = std::fabs(row[k]) / sum;
        if (ratio > bestRatio) {  // strictly greater: on ties the upper row stays
          bestRatio = ratio;
          pivot = i;
        }
      }
      if (bestRatio < kSingular) return false;
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
      for (int j = k; j < n; ++j) row[j] += f * pivotRow[j];
      if (b) {
        double* rowB = b + i * m;
        for (int j = 0; j < m; ++j) rowB[j] += f * pivotB[j];
      }
      row[k] = -f;  // keep the multiplier where the eliminated element was
    }
  }
  return std::fabs(a[n * n - 1]) >= kSingular;
}

template <int N, int M>
bool SolveFixed(double* a, int nRuntime, double* b, int mRuntime)
{
  const int n = N ? N : nRuntime;
  const int m = M ? M : mRuntime;
  int exchanges = 0;
  if (!Eliminate<N, M>(a, n, b, m, false, exchanges)) return false;
  for (int c = 0; c < m; ++c) {
    for (int i = n - 1; i >= 0; --i) {
      const double* row = a + i * n;
      double value = b[i * m + c];
      for (int k = i + 1; k < n; ++k) value -= row[k] * b[k * m + c];
      b[i * m + c] = value / row[i];
    }
  }
  return true;
}

}  // namespace

bool KoEliminateAndSolve(double* a, int n, double* b, int m)
{
  if (n == 0) return false;
  if (n == 4 && m == 4) return SolveFixed<4, 4>(a, n, b, m);
  if (n == 3 && m == 3) return SolveFixed<3, 3>(a, n, b, m);
  if (n == 3 && m == 1) return SolveFixed<3, 1>(a, n, b, m);
  return SolveFixed<0, 0>(a, n, b, m);
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
