#include "geometry/KoMatrix.h"
#include "geometry/KoMatrixElimination.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

namespace {

constexpr double kSingular = 1e-10;

// The homogeneous 4x4 product with every size known to the compiler; the same sums in the same order as
// the general loop, so both give identical results.
template <int N>
void MultiplyFixed(const double* __restrict a, const double* __restrict b, double* __restrict out)
{
  for (int i = 0; i < N; ++i) {
    double row[N] = {};
    for (int k = 0; k < N; ++k) {
      const double factor = a[i * N + k];
      for (int j = 0; j < N; ++j) row[j] += factor * b[k * N + j];
    }
    for (int j = 0; j < N; ++j) out[i * N + j] = row[j];
  }
}

}  // namespace

KoMatrix::KoMatrix(int rows, int columns) : m_data(nullptr), m_rows(0), m_columns(0)
{
  Allocate(rows, columns);
}

KoMatrix::KoMatrix(int rows, int columns, Unfilled) : m_data(m_local), m_rows(rows), m_columns(columns)
{
  const int count = m_rows * m_columns;
  if (count > kLocalSize) m_data = new double[static_cast<size_t>(count)];
}

KoMatrix::KoMatrix(const KoMatrix& other)
    : m_data(m_local), m_rows(other.m_rows), m_columns(other.m_columns)
{
  // Sizes of a valid matrix need no checks, and the elements need no clearing before the copy.
  const int count = m_rows * m_columns;
  if (count > kLocalSize) m_data = new double[static_cast<size_t>(count)];
  std::copy_n(other.m_data, count, m_data);
}

KoMatrix::KoMatrix(KoMatrix&& other) noexcept
    : m_data(m_local), m_rows(other.m_rows), m_columns(other.m_columns)
{
  if (other.m_data != other.m_local) {
    m_data = std::exchange(other.m_data, other.m_local);
  } else {
    std::copy_n(other.m_local, m_rows * m_columns, m_local);
  }
  other.m_rows = 0;
  other.m_columns = 0;
}

KoMatrix::~KoMatrix()
{
  Release();
}

void KoMatrix::Allocate(int rows, int columns)
{
  m_rows = std::max(rows, 0);
  m_columns = std::max(columns, 0);
  const long long count = static_cast<long long>(m_rows) * m_columns;
  m_data = count <= kLocalSize ? m_local : new double[static_cast<size_t>(count)];
  std::fill_n(m_data, count, 0.0);
}

void KoMatrix::Release()
{
  if (m_data != m_local) delete[] m_data;
  m_data = m_local;
  m_rows = 0;
  m_columns = 0;
}

KoMatrix& KoMatrix::operator=(const KoMatrix& other)
{
  if (m_rows != other.m_rows || m_columns != other.m_columns) KoThrowMatrixError(eKoMatrixAssignDimension);
  if (this != &other) std::copy_n(other.m_data, m_rows * m_columns, m_data);
  return *this;
}

void KoMatrix::Clear()
{
  std::fill_n(m_data, m_rows * m_columns, 0.0);
}

void KoMatrix::Identity()
{
  if (m_rows != m_columns) KoThrowMatrixError(eKoMatrixIdentityNotSquare);
  Clear();
  for (int i = 0; i < m_rows; ++i) m_data[i * m_columns + i] = 1.0;
}

bool KoMatrix::IsIdentity() const
{
  for (int i = 0; i < m_rows; ++i) {
    for (int j = 0; j < m_columns; ++j) {
      const double value = m_data[i * m_columns + j];
      if (i == j ? (value != 0.0 && value != 1.0) : value != 0.0) return false;
    }
  }
  return true;
}

void KoMatrix::SetRow(int i, const KoVector& values)
{
  for (int j = 1; j <= values.GetDimension(); ++j) SetElem(i, j, values[j]);
}

void KoMatrix::SetColumn(int j, const KoVector& values)
{
  for (int i = 1; i <= values.GetDimension(); ++i) SetElem(i, j, values[i]);
}

void KoMatrix::GetRow(int i, KoVector& values) const
{
  for (int j = 1; j <= values.GetDimension(); ++j) values[j] = GetElem(i, j);
}

void KoMatrix::GetColumn(int j, KoVector& values) const
{
  for (int i = 1; i <= values.GetDimension(); ++i) values[i] = GetElem(i, j);
}

KoMatrix& KoMatrix::operator+=(const KoMatrix& other)
{
  if (m_rows != other.m_rows || m_columns != other.m_columns) KoThrowMatrixError(eKoMatrixAddDimension);
  for (int k = 0; k < m_rows * m_columns; ++k) m_data[k] += other.m_data[k];
  return *this;
}

KoMatrix& KoMatrix::operator-=(const KoMatrix& other)
{
  if (m_rows != other.m_rows || m_columns != other.m_columns) KoThrowMatrixError(eKoMatrixSubDimension);
  for (int k = 0; k < m_rows * m_columns; ++k) m_data[k] -= other.m_data[k];
  return *this;
}

KoMatrix KoMatrix::operator+(const KoMatrix& other) const
{
  if (m_rows != other.m_rows || m_columns != other.m_columns) KoThrowMatrixError(eKoMatrixAddDimension);
  KoMatrix sum(m_rows, m_columns);
  for (int k = 0; k < m_rows * m_columns; ++k) sum.m_data[k] = m_data[k] + other.m_data[k];
  return sum;
}

KoMatrix KoMatrix::operator-(const KoMatrix& other) const
{
  if (m_rows != other.m_rows || m_columns != other.m_columns) KoThrowMatrixError(eKoMatrixSubDimension);
  KoMatrix difference(m_rows, m_columns);
  for (int k = 0; k < m_rows * m_columns; ++k) difference.m_data[k] = m_data[k] - other.m_data[k];
  return difference;
}

KoMatrix& KoMatrix::operator*=(double factor)
{
  for (int k = 0; k < m_rows * m_columns; ++k) m_data[k] *= factor;
  return *this;
}

KoMatrix& KoMatrix::operator/=(double divisor)
{
  return *this *= 1.0 / divisor;
}

KoMatrix KoMatrix::operator*(double factor) const
{
  KoMatrix product(m_rows, m_columns);
  for (int k = 0; k < m_rows * m_columns; ++k) product.m_data[k] = m_data[k] * factor;
  return product;
}

KoMatrix operator*(double factor, const KoMatrix& matrix)
{
  return matrix * factor;
}

KoMatrix KoMatrix::operator/(double divisor) const
{
  return *this * (1.0 / divisor);
}

KoMatrix KoMatrix::operator*(const KoMatrix& other) const
{
  if (m_columns != other.m_rows) KoThrowMatrixError(eKoMatrixMatrixDimension);
  KoMatrix product(m_rows, other.m_columns);
  const int n = m_columns;
  const int m = other.m_columns;
  if (m_rows == 4 && n == 4 && m == 4) {
    MultiplyFixed<4>(m_data, other.m_data, product.m_data);
    return product;
  }
  // i-k-j order walks both row-major operands contiguously.
  for (int i = 0; i < m_rows; ++i) {
    double* out = product.m_data + i * m;
    for (int k = 0; k < n; ++k) {
      const double factor = m_data[i * n + k];
      const double* in = other.m_data + k * m;
      for (int j = 0; j < m; ++j) out[j] += factor * in[j];
    }
  }
  return product;
}

KoVector KoMatrix::operator*(const KoVector& vector) const
{
  if (m_columns != vector.GetDimension()) KoThrowMatrixError(eKoMatrixVectorDimension);
  KoVector product(m_rows);
  const double* in = vector.Data();
  double* out = product.Data();
  for (int i = 0; i < m_rows; ++i) {
    double sum = 0.0;
    for (int j = 0; j < m_columns; ++j) sum += m_data[i * m_columns + j] * in[j];
    out[i] = sum;
  }
  return product;
}

KoMatrix KoMatrix::Transpose() const
{
  KoMatrix transposed(m_columns, m_rows);
  for (int i = 0; i < m_rows; ++i) {
    for (int j = 0; j < m_columns; ++j) transposed.m_data[j * m_rows + i] = m_data[i * m_columns + j];
  }
  return transposed;
}

void KoMatrix::AddOuterProduct(const KoVector& v)
{
  const int n = v.GetDimension();
  if (n > m_rows || n > m_columns) KoThrowMatrixError(eKoMatrixIndex);
  const double* values = v.Data();
  for (int i = 0; i < n; ++i) {
    double* row = m_data + i * m_columns;
    for (int j = 0; j < n; ++j) row[j] += values[i] * values[j];
  }
}

void KoMatrix::SwapLines(int row1, int row2)
{
  if (row1 < 1 || row1 > m_rows || row2 < 1 || row2 > m_rows) KoThrowMatrixError(eKoMatrixSwapLinesIndex);
  if (row1 != row2) {
    std::swap_ranges(m_data + (row1 - 1) * m_columns, m_data + row1 * m_columns,
                     m_data + (row2 - 1) * m_columns);
  }
}

void KoMatrix::MultLine(int row, int firstColumn, double factor, int lastColumn)
{
  if (row < 1 || row > m_rows) KoThrowMatrixError(eKoMatrixSwapLinesIndex);
  if (lastColumn == -1) lastColumn = m_columns;
  if (firstColumn > lastColumn) return;
  if (firstColumn < 1 || lastColumn > m_columns) KoThrowMatrixError(eKoMatrixIndex);
  double* data = m_data + (row - 1) * m_columns;
  for (int j = firstColumn - 1; j < lastColumn; ++j) data[j] *= factor;
}

void KoMatrix::AddLines(int target, int source, int firstColumn, double factor, int lastColumn)
{
  if (target < 1 || target > m_rows || source < 1 || source > m_rows) {
    KoThrowMatrixError(eKoMatrixSwapLinesIndex);
  }
  if (lastColumn == -1) lastColumn = m_columns;
  if (firstColumn > lastColumn) return;
  if (firstColumn < 1 || lastColumn > m_columns) KoThrowMatrixError(eKoMatrixIndex);
  double* to = m_data + (target - 1) * m_columns;
  const double* from = m_data + (source - 1) * m_columns;
  for (int j = firstColumn - 1; j < lastColumn; ++j) to[j] += factor * from[j];
}

int KoMatrix::Invert()
{
  if (m_rows != m_columns) KoThrowMatrixError(eKoMatrixInvertNotSquare);
  // The same elimination as Solve(copy of this, identity).
  return KoEliminateAndInvert(m_data, m_data, m_rows) ? 0 : 1;
}

KoMatrix KoMatrix::Inverse(int* status) const
{
  if (m_rows != m_columns) KoThrowMatrixError(eKoMatrixInvertNotSquare);
  // Inverted straight from this matrix into the result, whose elements are all written.
  KoMatrix inverse(m_rows, m_columns, Unfilled{});
  const int result = KoEliminateAndInvert(m_data, inverse.m_data, m_rows) ? 0 : 1;
  if (status) *status = result;
  return inverse;
}

int KoMatrix::Solve(KoMatrix& b)
{
  if (m_rows != m_columns || b.m_rows != m_rows || &b == this) KoThrowMatrixError(eKoMatrixIndex);
  return KoEliminateAndSolve(m_data, m_rows, b.m_data, b.m_columns) ? 0 : 1;
}

double KoMatrix::Determinant() const
{
  if (m_rows != m_columns) KoThrowMatrixError(eKoMatrixIndex);
  KoMatrix work(*this);
  return KoEliminationDeterminant(work.m_data, m_rows);
}

double KoMatrix::Determinant3() const
{
  if (m_rows < 3 || m_columns < 3) KoThrowMatrixError(eKoMatrixDeterminant3Size);
  const int c = m_columns;
  const double* a = m_data;
  auto at = [a, c](int i, int j) { return a[(i - 1) * c + (j - 1)]; };
  return at(1, 1) * at(2, 2) * at(3, 3) + at(1, 2) * at(2, 3) * at(3, 1) + at(1, 3) * at(2, 1) * at(3, 2) -
         at(1, 3) * at(2, 2) * at(3, 1) - at(1, 1) * at(2, 3) * at(3, 2) - at(1, 2) * at(2, 1) * at(3, 3);
}

KoVector KoMatrix::SolveCramer3(const KoVector& b) const
{
  KoMatrix a(3, 3);
  for (int i = 1; i <= 3; ++i) {
    for (int j = 1; j <= 3; ++j) a.m_data[(i - 1) * 3 + (j - 1)] = GetElem(i, j);
  }
  const double determinant = a.Determinant3();
  KoVector x(3);
  for (int k = 1; k <= 3; ++k) {
    KoMatrix replaced(a);
    for (int i = 1; i <= 3; ++i) replaced.m_data[(i - 1) * 3 + (k - 1)] = b[i];
    x[k] = replaced.Determinant3() / determinant;
  }
  return x;
}

double KoMatrix::CholeskySolve(KoVector& solution)
{
  const int n = (m_columns - 1) / 2;
  if (n < 1 || m_rows < n + 1) KoThrowMatrixError(eKoMatrixIndex);
  if (solution.GetDimension() < n) KoThrowMatrixError(eKoVectorIndex);
  const int c = m_columns;
  auto a = [this, c](int i, int j) -> double& { return m_data[(i - 1) * c + (j - 1)]; };

  for (int k = 1; k <= n; ++k) {
    double d = a(k, k);
    for (int i = 1; i < k; ++i) d -= a(i, k) * a(i, k);
    // Only a negative square stops the solve; a zero one goes on, and its infinities show in the result.
    if (d < 0.0) return 0.0;
    a(k, k) = std::sqrt(d);
    for (int j = k + 1; j <= 2 * n + 1; ++j) {
      double value = a(k, j);
      for (int i = 1; i < k; ++i) value -= a(i, k) * a(i, j);
      a(k, j) = value / a(k, k);
    }
  }
  for (int j = 1; j <= n; ++j) {
    double x = 0.0;
    for (int i = 1; i <= n; ++i) x += a(i, n + 1 + j) * a(i, n + 1);
    solution[j] = x;
  }
  double residual = a(n + 1, n + 1);
  for (int i = 1; i <= n; ++i) residual -= a(i, n + 1) * a(i, n + 1);
  if (!(residual > 0.0)) return 0.0;
  a(n + 1, n + 1) = residual;
  return residual;
}

bool KoMatrix::TransformPoint(double& x, double& y) const
{
  if (m_rows < 3 || m_columns < 3) KoThrowMatrixError(eKoMatrixGetElemIndex);
  const int c = m_columns;
  const double* r1 = m_data;
  const double* r2 = m_data + c;
  const double* r3 = m_data + 2 * c;
  const double w = r3[0] * x + r3[1] * y + r3[2];
  if (std::fabs(w) < kSingular) return false;
  const double tx = (r1[0] * x + r1[1] * y + r1[2]) / w;
  const double ty = (r2[0] * x + r2[1] * y + r2[2]) / w;
  x = tx;
  y = ty;
  return true;
}

bool KoMatrix::TransformPoint(double& x, double& y, double& z) const
{
  if (m_rows < 4 || m_columns < 4) KoThrowMatrixError(eKoMatrixGetElemIndex);
  const int c = m_columns;
  const double* r1 = m_data;
  const double* r2 = m_data + c;
  const double* r3 = m_data + 2 * c;
  const double* r4 = m_data + 3 * c;
  const double w = r4[0] * x + r4[1] * y + r4[2] * z + r4[3];
  if (std::fabs(w) < kSingular) return false;
  const double tx = (r1[0] * x + r1[1] * y + r1[2] * z + r1[3]) / w;
  const double ty = (r2[0] * x + r2[1] * y + r2[2] * z + r2[3]) / w;
  const double tz = (r3[0] * x + r3[1] * y + r3[2] * z + r3[3]) / w;
  x = tx;
  y = ty;
  z = tz;
  return true;
}

void KoMatrix::ToString(std::string& text) const
{
  text.clear();
  // Wide enough for the largest double in fixed notation.
  char buffer[400];
  for (int k = 0; k < m_rows * m_columns; ++k) {
    std::snprintf(buffer, sizeof buffer, "%.5f   ", m_data[k]);
    text += buffer;
  }
}
