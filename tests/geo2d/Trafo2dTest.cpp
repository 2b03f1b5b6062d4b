#include "geometry/KoMatrix.h"
#include "geometry/KoTrafo2d.h"
#include "support/KoTokenReader.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

KoTrafo2d Make(int32_t type, std::initializer_list<double> parameters)
{
    KoTrafo2d t;
    t.SetType(type);
    int i = 0;
    for (double p : parameters)
        t.SetParameter(i++, p);
    return t;
}

TEST(Trafo2d, PolynomialTermOrderAndTypesThatTransformNothing)
{
    // Each polynomial parameter on its own picks out its term; x^2 y and x y^2 are easily swapped.
    const double terms[10] = {1, 2, 3, 4, 6, 9, 8, 12, 18, 27};  // at x = 2, y = 3
    for (int i = 0; i < 10; ++i) {
        KoTrafo2d t = Make(KoTrafo2d::kPolynomial, {});
        t.SetParameter(i, 1.0);
        t.SetParameter(10 + i, -2.0);
        double x = 2;
        double y = 3;
        ASSERT_TRUE(t.Apply(x, y));
        EXPECT_EQ(x, terms[i]) << "term " << i;
        EXPECT_EQ(y, -2 * terms[i]) << "term " << i;
    }
    for (int32_t type : {0, 5, 6}) {
        double x = 7;
        double y = 8;
        EXPECT_FALSE(Make(type, {1, 2, 3, 4}).Apply(x, y));
        EXPECT_EQ(x + y, 15.0);
    }
    EXPECT_THROW(KoTrafo2d().SetParameter(20, 1.0), std::out_of_range);
}

TEST(Trafo2d, MatrixFormAgreesWithApply)
{
    const KoTrafo2d trafos[] = {Make(KoTrafo2d::kHelmert, {100, 0.8, -50, 0.6}),
                                Make(KoTrafo2d::kAffin, {1, 1.1, 0.2, -3, -0.1, 0.9}),
                                Make(KoTrafo2d::kProjektiv, {1.1, 0.1, 5, -0.2, 0.9, 7, 1e-3, -2e-3})};
    for (const KoTrafo2d& t : trafos) {
        double ax = -30;
        double ay = 12.5;
        double mx = ax;
        double my = ay;
        ASSERT_TRUE(t.Apply(ax, ay));
        ASSERT_TRUE(t.ToMatrix().TransformPoint(mx, my));
        EXPECT_NEAR(mx, ax, 1e-12) << t.TypeName();
        EXPECT_NEAR(my, ay, 1e-12) << t.TypeName();
    }
    for (int32_t type : {0, 4, 5})
        EXPECT_TRUE(Make(type, {3, 4, 5, 6, 7, 8, 9, 10}).ToMatrix().IsIdentity()) << type;
    KoMatrix wrongSize(4, 4);
    EXPECT_THROW(trafos[0].ToMatrix(wrongSize), eKoMatrixErrorCode);

    KoTrafo2d back;
    back.FromMatrix(trafos[0].ToMatrix());
    EXPECT_EQ(back.GetType(), KoTrafo2d::kHelmert);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(back.Parameter(i), trafos[0].Parameter(i));
    back.FromMatrix(trafos[1].ToMatrix(), KoTrafo2d::kAffin);  // only the type is taken
    EXPECT_EQ(back.GetType(), KoTrafo2d::kAffin);
    EXPECT_EQ(back.Parameter(0), 100.0);
}

// Reads with one of the two readers and returns what the reader left behind.
std::string ReadWith(bool legacy, const std::string& text, KoTrafo2d& t)
{
    std::istringstream in(text);
    KoTokenReader reader(in);
    EXPECT_EQ(legacy ? t.ReadParametersLegacy(reader) : t.ReadParameters(reader), 1);
    return reader.ReadText();
}

TEST(Trafo2d, ParameterReadersMapCodesAndCountNonNumbersAsZero)
{
    KoTrafo2d t;
    EXPECT_EQ(ReadWith(true, "0 1 2 3 4 5 6 7 8 next", t), "next");
    EXPECT_EQ(t.GetType(), KoTrafo2d::kProjektiv);
    EXPECT_EQ(t.Parameter(7), 8.0);

    EXPECT_EQ(ReadWith(true, "2\n1.5 abc\n-3 \"7\" next", t), "next");
    EXPECT_EQ(t.GetType(), KoTrafo2d::kHelmert);
    EXPECT_EQ(t.Parameter(0) + t.Parameter(2), -1.5);
    EXPECT_EQ(t.Parameter(1), 0.0);
    EXPECT_EQ(t.Parameter(3), 0.0);  // a quoted number is a word

    EXPECT_EQ(ReadWith(true, "7 1 2", t), "1");  // unknown legacy code: nothing read, nothing changed
    EXPECT_EQ(t.GetType(), KoTrafo2d::kHelmert);

    // The newer codes are type indices; code 0 sets None and reads nothing, any code is stored.
    EXPECT_EQ(ReadWith(false, "0 5 6", t), "5");
    EXPECT_EQ(t.GetType(), KoTrafo2d::kNone);
    EXPECT_EQ(ReadWith(false, "42 1 2", t), "1");
    EXPECT_EQ(t.GetType(), 42);
    std::string words;
    for (int i = 0; i < 19; ++i)
        words += " w";
    EXPECT_EQ(ReadWith(false, "4 9" + words + " next", t), "next");
    EXPECT_EQ(t.Parameter(0), 9.0);
    EXPECT_EQ(t.Parameter(19), 0.0);
    EXPECT_EQ(t.GetType(), KoTrafo2d::kPolynomial);
    EXPECT_EQ(ReadWith(false, "1 4.5 2", t), "");  // the file ends early: missing numbers count as 0.0
    EXPECT_EQ(t.GetType(), KoTrafo2d::kHelmert);
    EXPECT_EQ(t.Parameter(1), 2.0);
    EXPECT_EQ(t.Parameter(2), 0.0);
}

}  // namespace
