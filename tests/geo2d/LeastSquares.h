#pragma once

#include <cmath>
#include <vector>

namespace geo2d_test {

using Row = std::vector<long double>;

// Least squares by modified Gram-Schmidt QR of the design matrix (rows of `a`), in long double: a route
// that shares nothing with the normal equations and the Cholesky solve of the code under test.
inline std::vector<double> LeastSquares(const std::vector<Row>& a, std::vector<long double> l)
{
    const size_t m = a.size();
    const size_t n = a[0].size();
    std::vector<Row> q(n, Row(m));  // columns
    std::vector<Row> r(n, Row(n, 0));
    for (size_t j = 0; j < n; ++j)
        for (size_t i = 0; i < m; ++i)
            q[j][i] = a[i][j];
    for (size_t k = 0; k < n; ++k) {
        long double norm = 0;
        for (long double v : q[k])
            norm += v * v;
        r[k][k] = std::sqrt(norm);
        for (long double& v : q[k])
            v /= r[k][k];
        for (size_t j = k + 1; j < n; ++j) {
            for (size_t i = 0; i < m; ++i)
                r[k][j] += q[k][i] * q[j][i];
            for (size_t i = 0; i < m; ++i)
                q[j][i] -= r[k][j] * q[k][i];
        }
    }
    std::vector<double> x(n);
    for (size_t k = n; k-- > 0;) {
        long double s = 0;
        for (size_t i = 0; i < m; ++i)
            s += q[k][i] * l[i];
        for (size_t j = k + 1; j < n; ++j)
            s -= r[k][j] * x[j];
        x[k] = static_cast<double>(s / r[k][k]);
    }
    return x;
}

}  // namespace geo2d_test
