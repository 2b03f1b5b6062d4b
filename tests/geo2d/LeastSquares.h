#pragma once

#include <cmath>
#include <vector>

namespace geo2d_test {

using Row = std::vector<long double>;

// Least squares by Householder QR of the design matrix itself, in long double: a route that shares
// nothing with the normal equations and the Cholesky solve of the estimators.
inline std::vector<double> LeastSquares(std::vector<Row> a, std::vector<long double> l)
{
    const size_t m = a.size();
    const size_t n = a[0].size();
    for (size_t k = 0; k < n; ++k) {
        long double norm = 0;
        for (size_t i = k; i < m; ++i)
            norm += a[i][k] * a[i][k];
        norm = std::sqrt(norm);
        const long double alpha = a[k][k] > 0 ? -norm : norm;
        std::vector<long double> v(m, 0);
        for (size_t i = k; i < m; ++i)
            v[i] = a[i][k];
        v[k] -= alpha;
        long double vv = 0;
        for (size_t i = k; i < m; ++i)
            vv += v[i] * v[i];
        if (vv == 0)
            continue;
        for (size_t j = k; j < n; ++j) {
            long double s = 0;
            for (size_t i = k; i < m; ++i)
                s += v[i] * a[i][j];
            for (size_t i = k; i < m; ++i)
                a[i][j] -= 2 * s / vv * v[i];
        }
        long double s = 0;
        for (size_t i = k; i < m; ++i)
            s += v[i] * l[i];
        for (size_t i = k; i < m; ++i)
            l[i] -= 2 * s / vv * v[i];
    }
    std::vector<long double> x(n, 0);
    for (size_t k = n; k-- > 0;) {
        long double s = l[k];
        for (size_t j = k + 1; j < n; ++j)
            s -= a[k][j] * x[j];
        x[k] = s / a[k][k];
    }
    return std::vector<double>(x.begin(), x.end());
}

}  // namespace geo2d_test
