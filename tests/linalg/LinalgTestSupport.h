#pragma once

#include "geometry/KoMatrix.h"
#include "geometry/KoVector.h"
#include "geometry/eKoMatrixErrorCode.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <random>

// The code a call throws; -1 (and a test failure) when it throws nothing.
template <class Call>
int ThrownCode(Call call)
{
  try {
    call();
  } catch (eKoMatrixErrorCode code) {
    return code;
  }
  ADD_FAILURE() << "no eKoMatrixErrorCode thrown";
  return -1;
}

inline KoVector MakeVector(std::initializer_list<double> values)
{
  KoVector v(static_cast<int>(values.size()));
  int i = 1;
  for (double value : values) v[i++] = value;
  return v;
}

inline KoMatrix MakeMatrix(std::initializer_list<std::initializer_list<double>> rows)
{
  KoMatrix m(static_cast<int>(rows.size()), static_cast<int>(rows.begin()->size()));
  int i = 1;
  for (const auto& row : rows) {
    int j = 1;
    for (double value : row) m(i, j++) = value;
    ++i;
  }
  return m;
}

inline double MaxAbsDifference(const KoMatrix& a, const KoMatrix& b)
{
  double worst = 0.0;
  for (int i = 1; i <= a.GetRows(); ++i) {
    for (int j = 1; j <= a.GetColumns(); ++j) worst = std::max(worst, std::fabs(a(i, j) - b(i, j)));
  }
  return worst;
}

// A random matrix made well conditioned by a dominant diagonal.
inline KoMatrix RandomWellConditioned(int n, std::mt19937& random)
{
  std::uniform_real_distribution<double> value(-1.0, 1.0);
  KoMatrix m(n, n);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) m(i, j) = value(random) + (i == j ? 2.0 * n : 0.0);
  }
  return m;
}
