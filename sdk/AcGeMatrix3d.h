// The host's 4x4 transformation matrix (row-major, entry(row, col)) and its tolerance context.
#pragma once

#include "sdk/AcGePoint3d.h"

class AcGeTol {
 public:
  double equalPoint() const { return equalPoint_; }
  double equalVector() const { return equalVector_; }
  void setEqualPoint(double t) { equalPoint_ = t; }
  void setEqualVector(double t) { equalVector_ = t; }

 private:
  double equalPoint_ = 1e-10;
  double equalVector_ = 1e-12;
};

struct AcGeContext {
  // The process-wide default tolerance; defined by the host library.
  static AcGeTol gTol;
};

class AcGeMatrix3d {
 public:
  double entry[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};

  AcGeMatrix3d() = default;

  AcGeMatrix3d& setToIdentity() {
    *this = AcGeMatrix3d();
    return *this;
  }
  double operator()(int row, int col) const { return entry[row][col]; }
  double& operator()(int row, int col) { return entry[row][col]; }

  AcGeMatrix3d operator*(const AcGeMatrix3d& m) const {
    AcGeMatrix3d r;
    for (int i = 0; i < 4; ++i)
      for (int j = 0; j < 4; ++j) {
        double s = 0.0;
        for (int k = 0; k < 4; ++k) s += entry[i][k] * m.entry[k][j];
        r.entry[i][j] = s;
      }
    return r;
  }

  AcGePoint3d transform(const AcGePoint3d& p) const {
    return {entry[0][0] * p.x + entry[0][1] * p.y + entry[0][2] * p.z + entry[0][3],
            entry[1][0] * p.x + entry[1][1] * p.y + entry[1][2] * p.z + entry[1][3],
            entry[2][0] * p.x + entry[2][1] * p.y + entry[2][2] * p.z + entry[2][3]};
  }

  // Equal when no entry differs by more than the tolerance's equal-vector value.
  bool isEqualTo(const AcGeMatrix3d& m, const AcGeTol& tol = AcGeContext::gTol) const {
    for (int i = 0; i < 4; ++i)
      for (int j = 0; j < 4; ++j) {
        double d = entry[i][j] - m.entry[i][j];
        if (d > tol.equalVector() || -d > tol.equalVector()) return false;
      }
    return true;
  }

  static const AcGeMatrix3d kIdentity;
};

inline const AcGeMatrix3d AcGeMatrix3d::kIdentity{};
