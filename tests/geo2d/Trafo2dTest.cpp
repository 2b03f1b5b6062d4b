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

TEST(Trafo2d, TypeNames)
{
    EXPECT_STREQ(KoTrafo2d::TypeName(0), "None");
    EXPECT_STREQ(KoTrafo2d::TypeName(3), "Projektiv");
    EXPECT_STREQ(KoTrafo2d::TypeName(5), "Inv. Helmert");
    EXPECT_STREQ(KoTrafo2d::TypeName(6), "");
    EXPECT_STREQ(KoTrafo2d::TypeName(-1), "");
    EXPECT_STREQ(Make(KoTrafo2d::kAffin, {}).TypeName(), "Affin");
}

TEST(Trafo2d, ApplyEachTypeByHand)
{
    double x = 1;
    double y = 2;
    ASSERT_TRUE(Make(KoTrafo2d::kHelmert, {10, 2, 20, 1}).Apply(x, y));
    EXPECT_EQ(x, 10 + 2 * 1 - 1 * 2.0);
    EXPECT_EQ(y, 20 + 1 * 1 + 2 * 2.0);

    x = 1, y = 2;
    ASSERT_TRUE(Make(KoTrafo2d::kAffin, {1, 2, 3, 4, 5, 6}).Apply(x, y));
    EXPECT_EQ(x, 1 + 2 * 1 + 3 * 2.0);
    EXPECT_EQ(y, 4 + 5 * 1 + 6 * 2.0);

    x = 1, y = 2;
    ASSERT_TRUE(Make(KoTrafo2d::kProjektiv, {1, 2, 3, 4, 5, 6, 0.5, 0.25}).Apply(x, y));
    EXPECT_DOUBLE_EQ(x, (1 + 4 + 3) / 2.0);
    EXPECT_DOUBLE_EQ(y, (4 + 10 + 6) / 2.0);

    // Each polynomial parameter on its own picks out its term; x^2*y and x*y^2 are easily swapped.
    const double px = 2;
    const double py = 3;
    const double terms[10] = {1, px, py, px * px, px * py, py * py, px * px * px, px * px * py, px * py * py,
                              py * py * py};
    for (int i = 0; i < 10; ++i) {
        KoTrafo2d t = Make(KoTrafo2d::kPolynomial, {});
        t.SetParameter(i, 1.0);
        t.SetParameter(10 + i, -2.0);
        x = px, y = py;
        ASSERT_TRUE(t.Apply(x, y));
        EXPECT_EQ(x, terms[i]) << "term " << i;
        EXPECT_EQ(y, -2 * terms[i]) << "term " << i;
    }

    for (int32_t type : {0, 5, 6, -3}) {
        x = 7, y = 8;
        EXPECT_FALSE(Make(type, {1, 2, 3, 4}).Apply(x, y));
        EXPECT_EQ(x, 7.0);
        EXPECT_EQ(y, 8.0);
    }
}

TEST(Trafo2d, MatrixFormAgreesWithApply)
{
    const KoTrafo2d trafos[] = {Make(KoTrafo2d::kHelmert, {100, 0.8, -50, 0.6}),
                                Make(KoTrafo2d::kAffin, {1, 1.1, 0.2, -3, -0.1, 0.9}),
                                Make(KoTrafo2d::kProjektiv, {1.1, 0.1, 5, -0.2, 0.9, 7, 1e-3, -2e-3})};
    for (const KoTrafo2d& t : trafos) {
        const KoMatrix m = t.ToMatrix();
        for (double px : {-30.0, 0.0, 12.5}) {
            double ax = px;
            double ay = 2 * px + 1;
            double mx = ax;
            double my = ay;
            ASSERT_TRUE(t.Apply(ax, ay));
            ASSERT_TRUE(m.TransformPoint(mx, my));
            EXPECT_NEAR(mx, ax, 1e-12) << t.TypeName();
            EXPECT_NEAR(my, ay, 1e-12) << t.TypeName();
        }
    }
    KoMatrix identity(3, 3);
    identity.Identity();
    for (int32_t type : {0, 4, 5}) {
        KoMatrix m(3, 3);
        Make(type, {3, 4, 5, 6, 7, 8, 9, 10}).ToMatrix(m);
        for (int i = 1; i <= 3; ++i)
            for (int j = 1; j <= 3; ++j)
                EXPECT_EQ(m(i, j), identity(i, j)) << "type " << type;
    }
    KoMatrix wrongSize(4, 4);
    try {
        trafos[0].ToMatrix(wrongSize);
        ADD_FAILURE() << "a 4x4 target must be refused";
    } catch (eKoMatrixErrorCode code) {
        EXPECT_EQ(code, 13);
    }
}

TEST(Trafo2d, FromMatrixTakesHelmertOnly)
{
    const KoTrafo2d source = Make(KoTrafo2d::kHelmert, {100, 0.8, -50, 0.6});
    KoTrafo2d t;
    t.FromMatrix(source.ToMatrix());
    EXPECT_EQ(t.GetType(), KoTrafo2d::kHelmert);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(t.Parameter(i), source.Parameter(i));

    KoTrafo2d other = Make(KoTrafo2d::kNone, {9, 9, 9, 9});
    other.FromMatrix(source.ToMatrix(), KoTrafo2d::kAffin);
    EXPECT_EQ(other.GetType(), KoTrafo2d::kAffin);
    EXPECT_EQ(other.Parameter(0), 9.0);
    EXPECT_EQ(other.Parameter(1), 9.0);
}

struct Read {
    KoTrafo2d trafo;
    int result = 0;
    std::string rest;  // what the reader left
};

Read ReadWith(bool legacy, const std::string& text, KoTrafo2d start = {})
{
    std::istringstream in(text);
    KoTokenReader reader(in);
    Read r{start, 0, {}};
    r.result = legacy ? r.trafo.ReadParametersLegacy(reader) : r.trafo.ReadParameters(reader);
    r.rest = reader.ReadText();
    return r;
}

TEST(Trafo2d, ParameterReadersMapCodesAndCountNonNumbersAsZero)
{
    Read r = ReadWith(true, "0 1 2 3 4 5 6 7 8 next");
    EXPECT_EQ(r.result, 1);
    EXPECT_EQ(r.trafo.GetType(), KoTrafo2d::kProjektiv);
    for (int i = 0; i < 8; ++i)
        EXPECT_EQ(r.trafo.Parameter(i), i + 1.0);
    EXPECT_EQ(r.rest, "next");

    r = ReadWith(true, "1 1 2 3 4 5 6 next");
    EXPECT_EQ(r.trafo.GetType(), KoTrafo2d::kAffin);
    EXPECT_EQ(r.trafo.Parameter(5), 6.0);
    EXPECT_EQ(r.rest, "next");

    r = ReadWith(true, "2\n1.5 abc\n-3 \"7\" next");
    EXPECT_EQ(r.trafo.GetType(), KoTrafo2d::kHelmert);
    EXPECT_EQ(r.trafo.Parameter(0), 1.5);
    EXPECT_EQ(r.trafo.Parameter(1), 0.0);
    EXPECT_EQ(r.trafo.Parameter(2), -3.0);
    EXPECT_EQ(r.trafo.Parameter(3), 0.0);  // a quoted number is a word
    EXPECT_EQ(r.rest, "next");

    std::string twenty = "3";
    for (int i = 0; i < 20; ++i)
        twenty += " " + std::to_string(i) + "e-1";
    r = ReadWith(true, twenty + " next");
    EXPECT_EQ(r.trafo.GetType(), KoTrafo2d::kPolynomial);
    EXPECT_DOUBLE_EQ(r.trafo.Parameter(19), 1.9);
    EXPECT_EQ(r.rest, "next");

    // An unknown legacy code reads nothing and leaves the transformation alone.
    r = ReadWith(true, "7 1 2", Make(KoTrafo2d::kAffin, {5}));
    EXPECT_EQ(r.result, 1);
    EXPECT_EQ(r.trafo.GetType(), KoTrafo2d::kAffin);
    EXPECT_EQ(r.trafo.Parameter(0), 5.0);
    EXPECT_EQ(r.rest, "1");

    // The newer codes are the type index; code 0 sets None and reads nothing.
    r = ReadWith(false, "0 5 6", Make(KoTrafo2d::kAffin, {5}));
    EXPECT_EQ(r.trafo.GetType(), KoTrafo2d::kNone);
    EXPECT_EQ(r.trafo.Parameter(0), 5.0);
    EXPECT_EQ(r.rest, "5");

    r = ReadWith(false, "3 1 2 3 4 5 6 7 8 next");
    EXPECT_EQ(r.trafo.GetType(), KoTrafo2d::kProjektiv);
    EXPECT_EQ(r.trafo.Parameter(7), 8.0);
    EXPECT_EQ(r.rest, "next");

    r = ReadWith(false, "42 1 2");
    EXPECT_EQ(r.result, 1);
    EXPECT_EQ(r.trafo.GetType(), 42);
    EXPECT_EQ(r.rest, "1");

    // A file that ends early: the missing numbers count as 0.0.
    r = ReadWith(false, "1 4.5 2", Make(KoTrafo2d::kNone, {9, 9, 9, 9}));
    EXPECT_EQ(r.trafo.GetType(), KoTrafo2d::kHelmert);
    EXPECT_EQ(r.trafo.Parameter(0), 4.5);
    EXPECT_EQ(r.trafo.Parameter(1), 2.0);
    EXPECT_EQ(r.trafo.Parameter(2), 0.0);
    EXPECT_EQ(r.trafo.Parameter(3), 0.0);
    EXPECT_EQ(r.rest, "");
}

}  // namespace
