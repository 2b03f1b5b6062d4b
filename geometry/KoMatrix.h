#pragma once

#include "geometry/KoVector.h"
#include "geometry/eKoMatrixErrorCode.h"

#include <string>

class KoPoint;
class KoPointList;

// A dense matrix of doubles, one-based, stored row by row: element (i, j) lies at (i - 1) * columns + (j - 1)
// of Data(). Index and dimension faults throw an `eKoMatrixErrorCode`; numerical failures (a singular
// matrix) are reported by return values. Matrices of up to 4x4 keep their elements inside the object.
//
// Every singularity threshold below is the absolute value 1e-10.
class KoMatrix {
public:
  class Row;
  class ConstRow;

  KoMatrix(int rows, int columns);  // all elements 0.0; negative sizes count as 0
  KoMatrix(const KoMatrix& other);
  KoMatrix(KoMatrix&& other) noexcept;  // the moved-from matrix is left 0 x 0
  virtual ~KoMatrix();

  // Assignment requires equal sizes (code 13).
  KoMatrix& operator=(const KoMatrix& other);

  int GetRows() const { return m_rows; }
  int GetColumns() const { return m_columns; }

  double GetElem(int i, int j) const
  {
    if (!InRange(i, j)) KoThrowMatrixError(eKoMatrixGetElemIndex);
    return m_data[Offset(i, j)];
  }
  void SetElem(int i, int j, double value)
  {
    if (!InRange(i, j)) KoThrowMatrixError(eKoMatrixSetElemIndex);
    m_data[Offset(i, j)] = value;
  }
  // Element reference, code 11 on a bad index. M(i, j) and M[i][j] are the same access.
  double& operator()(int i, int j)
  {
    if (!InRange(i, j)) KoThrowMatrixError(eKoMatrixIndex);
    return m_data[Offset(i, j)];
  }
  const double& operator()(int i, int j) const
  {
    if (!InRange(i, j)) KoThrowMatrixError(eKoMatrixIndex);
    return m_data[Offset(i, j)];
  }
  Row operator[](int i);
  ConstRow operator[](int i) const;

  void Clear();
  // Clears and writes 1.0 on the diagonal; code 12 unless square.
  void Identity();
  // True when every off-diagonal element is exactly 0.0 and every diagonal element is exactly 0.0 or 1.0.
  // A zero on the diagonal passes: callers use this to see whether a matrix is "still untouched".
  bool IsIdentity() const;

  // Row and column access through vectors; the vector's length governs the loop. Element faults raise 9
  // (setters) or 10 (getters).
  void SetRow(int i, const KoVector& values);
  void SetColumn(int j, const KoVector& values);
  void GetRow(int i, KoVector& values) const;
  void GetColumn(int j, KoVector& values) const;

  KoMatrix& operator+=(const KoMatrix& other);  // code 16
  KoMatrix& operator-=(const KoMatrix& other);  // code 17
  KoMatrix operator+(const KoMatrix& other) const;
  KoMatrix operator-(const KoMatrix& other) const;
  KoMatrix& operator*=(double factor);
  KoMatrix& operator/=(double divisor);  // multiplies by 1 / divisor
  KoMatrix operator*(double factor) const;
  KoMatrix operator/(double divisor) const;
  KoMatrix operator*(const KoMatrix& other) const;  // code 15
  KoVector operator*(const KoVector& vector) const;  // code 14
  KoMatrix Transpose() const;

  // M(i, j) += v(i) * v(j) for i, j in 1 ... n = v's dimension: adds one observation row to normal
  // equations. Only the upper-left n x n block changes; code 11 when v is longer than the matrix.
  void AddOuterProduct(const KoVector& v);

  // Row operations of the elimination. lastColumn -1 means the last column. A row outside the matrix
  // raises 19 in all three; a column outside raises 11.
  void SwapLines(int row1, int row2);
  void MultLine(int row, int firstColumn, double factor, int lastColumn = -1);
  // row target += factor * row source over the column range.
  void AddLines(int target, int source, int firstColumn, double factor, int lastColumn = -1);

  // Gaussian elimination with scaled partial pivoting. Return 0 on success, 1 when singular.
  // Invert works in place (code 18 unless square); after a failure the contents are unusable.
  int Invert();
  KoMatrix Inverse(int* status = nullptr) const;
  // Solves this * X = B; B (same number of rows, any number of columns) receives X. This matrix is
  // destroyed: it keeps the eliminated upper triangle and the multipliers. Code 11 on size faults.
  int Solve(KoMatrix& b);

  // Product of the pivots with one sign change per row exchange; 0.0 when singular. The pivot search of
  // column k never looks at the last row, so a matrix whose only usable pivot lies there gives 0.0:
  // the determinant answers "usable for elimination", not the textbook value. Code 11 unless square.
  double Determinant() const;
  // Rule of Sarrus on the upper-left 3x3 block; code 20 when smaller than 3x3.
  double Determinant3() const;
  // Cramer's rule on the upper-left 3x3 block: element k of the result is det(A with column k replaced by
  // b) / det(A). No guard against det(A) = 0 (the result is then infinite or NaN).
  KoVector SolveCramer3(const KoVector& b) const;

  // Cholesky solve of an augmented normal-equation matrix of n + 1 rows and 2n + 1 columns: N in columns
  // 1 ... n, the right-hand side in column n + 1 with [ll] in row n + 1, an identity in columns
  // n + 2 ... 2n + 1 of rows 1 ... n. Works in place; fills solution(1 ... n) and returns the sum of
  // squared residuals [vv] when it is positive, otherwise 0.0. A matrix that is not positive definite
  // returns 0.0 and leaves the solution untouched.
  double CholeskySolve(KoVector& solution);

  // Homogeneous point transforms: a 3x3 matrix maps (x, y), a 4x4 matrix maps (x, y, z), both divided by
  // the homogeneous weight w. When |w| < 1e-10 the point stays unchanged and the result is false.
  bool TransformPoint(double& x, double& y) const;
  bool TransformPoint(double& x, double& y, double& z) const;
  // A point goes through the 4x4 form when the matrix is at least 4x4, else through the 3x3 form (z kept).
  bool TransformPoint(KoPoint& point) const;
  // Transforms every point from the list's first node on; returns the number of points visited
  // (0 for a null or empty list).
  int TransformPoints(KoPointList* list) const;

  // Every element, row by row, as "%.5f   "; `text` is cleared first.
  void ToString(std::string& text) const;

  const double* Data() const { return m_data; }
  double* Data() { return m_data; }

  // Checked access to one row, so that M[i][j] reads like the two-index form. Both indices raise 11.
  class Row {
  public:
    double& operator[](int j)
    {
      if (j < 1 || j > m_matrix.m_columns) KoThrowMatrixError(eKoMatrixIndex);
      return m_matrix.m_data[m_matrix.Offset(m_row, j)];
    }

  private:
    friend class KoMatrix;
    Row(KoMatrix& matrix, int row) : m_matrix(matrix), m_row(row) {}
    KoMatrix& m_matrix;
    int m_row;
  };
  class ConstRow {
  public:
    const double& operator[](int j) const
    {
      if (j < 1 || j > m_matrix.m_columns) KoThrowMatrixError(eKoMatrixIndex);
      return m_matrix.m_data[m_matrix.Offset(m_row, j)];
    }

  private:
    friend class KoMatrix;
    ConstRow(const KoMatrix& matrix, int row) : m_matrix(matrix), m_row(row) {}
    const KoMatrix& m_matrix;
    int m_row;
  };

private:
  static constexpr int kLocalSize = 16;

  // Storage for a result of valid sizes whose every element the caller writes.
  struct Unfilled {};
  KoMatrix(int rows, int columns, Unfilled);

  bool InRange(int i, int j) const { return i >= 1 && i <= m_rows && j >= 1 && j <= m_columns; }
  int Offset(int i, int j) const { return (i - 1) * m_columns + (j - 1); }
  void Allocate(int rows, int columns);
  void Release();

  double* m_data;
  int m_rows;
  int m_columns;
  double m_local[kLocalSize];
};

KoMatrix operator*(double factor, const KoMatrix& matrix);

inline KoMatrix::Row KoMatrix::operator[](int i)
{
  if (i < 1 || i > m_rows) KoThrowMatrixError(eKoMatrixIndex);
  return Row(*this, i);
}

inline KoMatrix::ConstRow KoMatrix::operator[](int i) const
{
  if (i < 1 || i > m_rows) KoThrowMatrixError(eKoMatrixIndex);
  return ConstRow(*this, i);
}
