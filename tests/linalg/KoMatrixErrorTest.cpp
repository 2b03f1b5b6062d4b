#include "LinalgTestSupport.h"

namespace {

TEST(KoMatrixError, VectorFaultsRaiseTheirCodes)
{
  KoVector v3(3), v4(4), v2(2);
  EXPECT_EQ(ThrownCode([&] { v3.SetElem(0, 1.0); }), 0);
  EXPECT_EQ(ThrownCode([&] { v3.SetElem(4, 1.0); }), 0);
  EXPECT_EQ(ThrownCode([&] { (void)v3.GetElem(0); }), 1);
  EXPECT_EQ(ThrownCode([&] { (void)v3[0]; }), 2);
  EXPECT_EQ(ThrownCode([&] { (void)v3[4]; }), 2);
  EXPECT_EQ(ThrownCode([&] { v3 = v4; }), 3);
  EXPECT_EQ(ThrownCode([&] { (void)(v3 % v4); }), 4);
  // Subtraction reports the addition code (and so the "+" text); 6 is never raised.
  EXPECT_EQ(ThrownCode([&] { (void)(v3 + v4); }), 5);
  EXPECT_EQ(ThrownCode([&] { (void)(v3 - v4); }), 5);
  EXPECT_EQ(ThrownCode([&] { v3 += v4; }), 5);
  EXPECT_EQ(ThrownCode([&] { v3 -= v4; }), 5);
  EXPECT_EQ(ThrownCode([&] { (void)(v3 * v4); }), 8);
}

TEST(KoMatrixError, MatrixFaultsRaiseTheirCodes)
{
  KoMatrix m23(2, 3), m33(3, 3), m32(3, 2), m22(2, 2);
  KoVector v2(2);
  EXPECT_EQ(ThrownCode([&] { m23.SetElem(3, 1, 1.0); }), 9);
  EXPECT_EQ(ThrownCode([&] { (void)m23.GetElem(1, 0); }), 10);
  EXPECT_EQ(ThrownCode([&] { (void)m23(0, 1); }), 11);
  EXPECT_EQ(ThrownCode([&] { (void)m23[1][4]; }), 11);
  EXPECT_EQ(ThrownCode([&] { (void)m23[3][1]; }), 11);
  EXPECT_EQ(ThrownCode([&] { m23.Identity(); }), 12);
  EXPECT_EQ(ThrownCode([&] { m23 = m32; }), 13);
  EXPECT_EQ(ThrownCode([&] { (void)(m23 * v2); }), 14);
  EXPECT_EQ(ThrownCode([&] { (void)(m23 * m23); }), 15);
  EXPECT_EQ(ThrownCode([&] { (void)(m23 + m32); }), 16);
  EXPECT_EQ(ThrownCode([&] { m23 += m32; }), 16);
  EXPECT_EQ(ThrownCode([&] { (void)(m23 - m32); }), 17);
  EXPECT_EQ(ThrownCode([&] { m23 -= m32; }), 17);
  EXPECT_EQ(ThrownCode([&] { m23.Invert(); }), 18);
  EXPECT_EQ(ThrownCode([&] { (void)m23.Inverse(); }), 18);
  // Every row operation raises the SwapLines code; 21 and 22 are never raised.
  EXPECT_EQ(ThrownCode([&] { m23.SwapLines(1, 3); }), 19);
  EXPECT_EQ(ThrownCode([&] { m23.AddLines(0, 1, 1, 2.0); }), 19);
  EXPECT_EQ(ThrownCode([&] { m23.AddLines(1, 3, 1, 2.0); }), 19);
  EXPECT_EQ(ThrownCode([&] { m23.MultLine(3, 1, 2.0); }), 19);
  EXPECT_EQ(ThrownCode([&] { (void)m22.Determinant3(); }), 20);
  EXPECT_EQ(ThrownCode([&] { (void)m23.Determinant(); }), 11);
  EXPECT_EQ(ThrownCode([&] { m33.Solve(m23); }), 11);
  // Row and column access: the vector's length drives the loop, so a long vector overruns the matrix.
  KoVector v4(4);
  EXPECT_EQ(ThrownCode([&] { m33.SetRow(1, v4); }), 9);
  EXPECT_EQ(ThrownCode([&] { m33.GetColumn(1, v4); }), 10);
  EXPECT_EQ(ThrownCode([&] { m22.AddOuterProduct(KoVector(3)); }), 11);
  // A 2x2 matrix has no homogeneous row.
  double x = 1.0, y = 2.0, z = 3.0;
  EXPECT_EQ(ThrownCode([&] { m22.TransformPoint(x, y); }), 10);
  EXPECT_EQ(ThrownCode([&] { m33.TransformPoint(x, y, z); }), 10);
}

TEST(KoMatrixError, FaultLeavesOperandsIntact)
{
  KoVector a = MakeVector({1, 2, 3});
  const KoVector before(a);
  EXPECT_EQ(ThrownCode([&] { a += KoVector(4); }), 5);
  EXPECT_EQ(ThrownCode([&] { a = KoVector(2); }), 3);
  EXPECT_TRUE(a == before);
}

}  // namespace
