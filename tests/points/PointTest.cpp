#include <gtest/gtest.h>

#include <sstream>

#include "points/KoPoint.h"
#include "points/KoPointTable.h"
#include "points/KoUnits.h"

namespace {

KoPoint FullPoint()
{
    KoPoint p(17, 4500123.456, 5400987.654, 321.5, KoPoint::kCodeX | KoPoint::kCodeZ);
    p.name = "GP17";
    p.flag = -9;
    p.photo = 3;
    p.camera = 2;
    p.extra = 77;
    p.dx = 0.1;
    p.dy = 0.2;
    p.dz = 0.3;
    p.redu = 0.4;
    p.redu2 = 0.5;
    p.redu3 = 0.6;
    p.mark = 0xFFFF;
    p.mark2 = 5;
    p.color = 255;
    return p;
}

// Every field but mark2, as text: the table form of all fields plus the two it leaves out.
std::string AllButMark2(const KoPoint& p)
{
    static const eKoPointRWMask kAll[] = {eKoRWNumber, eKoRWName, eKoRWFlag, eKoRWCode,  eKoRWPhoto, eKoRWCamera,
                                          eKoRWX,      eKoRWY,    eKoRWZ,    eKoRWDx,    eKoRWDy,    eKoRWDz,
                                          eKoRWRedu,   eKoRWRedu2, eKoRWRedu3, eKoRWColor};
    std::ostringstream out;
    KoWritePoint(out, p, kAll);
    out << ' ' << p.extra << ' ' << p.mark;
    return out.str();
}

TEST(KoPoint, CopyCarriesEverythingButMark2)
{
    const KoPoint original = FullPoint();
    const KoPoint copy(original);
    EXPECT_EQ(AllButMark2(copy), AllButMark2(original));
    EXPECT_EQ(copy.mark2, 0);

    KoPoint target;
    target.mark2 = 9;
    target = original;
    EXPECT_EQ(AllButMark2(target), AllButMark2(original));
    EXPECT_EQ(target.mark2, 9);  // assignment leaves the target's own mark2 alone
}

TEST(KoPoint, CompareAddsPhotoAndNumberDifferences)
{
    KoPoint a(5, 0, 0, 0, 0);
    a.photo = 1;
    KoPoint b(3, 0, 0, 0, 0);
    b.photo = 4;
    // (1 - 4) + (5 - 3): a sorts before b despite its higher number, also through the list element's interface.
    const KoBaseListnode& asNode = b;
    EXPECT_EQ(a.Compare(asNode), -1);
    // Unsigned numbers wrap as 32-bit arithmetic does.
    KoPoint high(0xFFFFFFFFu, 0, 0, 0, 0);
    KoPoint one(1, 0, 0, 0, 0);
    EXPECT_EQ(high.Compare(one), -2);
}

TEST(KoPoint, CodeSettersReadDigitsAndLetters)
{
    KoPoint p;
    p.SetCode(21);
    EXPECT_STREQ(p.CodeText(), " 12");
    p.SetCode(13);
    EXPECT_STREQ(p.CodeText(), " 13");
    p.SetCode(0);
    EXPECT_STREQ(p.CodeText(), "  0");
    p.SetCode(4);
    EXPECT_STREQ(p.CodeText(), "  0");
    p.SetCode(-321);
    EXPECT_STREQ(p.CodeText(), "123");
    p.SetCode("yz");
    EXPECT_STREQ(p.CodeText(), " 23");
    p.SetCode("X3");
    EXPECT_STREQ(p.CodeText(), " 13");
    p.SetCode(static_cast<const char*>(nullptr));
    EXPECT_EQ(p.code, 0);
    EXPECT_STREQ(KoPoint::CodeText(0xFFFB), " 12");  // only the three component bits count
}

TEST(KoPoint, ArithmeticStartsFromTheLeftOperand)
{
    KoPoint a = FullPoint();
    KoPoint b(2, 1.0, 2.0, 3.0, 0);
    b.dx = 1.0;
    b.dy = 1.0;
    b.dz = 1.0;
    b.photo = 99;

    const KoPoint sum = a + b;
    EXPECT_EQ(sum.number, 17u);
    EXPECT_EQ(sum.name, "GP17");
    EXPECT_EQ(sum.photo, 3);
    EXPECT_EQ(sum.mark2, 0);
    EXPECT_DOUBLE_EQ(sum.x, 4500124.456);
    EXPECT_DOUBLE_EQ(sum.dz, 1.3);
    EXPECT_DOUBLE_EQ(sum.redu, 0.4);

    EXPECT_DOUBLE_EQ((a - b).dx, -0.9);
    EXPECT_DOUBLE_EQ(a.Mean(b).dy, 0.6);

    const KoPoint scaled = b * 2.0;
    EXPECT_EQ(scaled.x, 2.0);
    EXPECT_EQ(scaled.dx, 1.0);  // deltas untouched
    const KoPoint divided = b / 4.0;
    EXPECT_EQ(divided.z, 0.75);
    EXPECT_EQ(divided.dz, 1.0);

    KoPoint o(1, 0, 0, 0, 0);
    KoPoint q(2, 3, 4, 12, 0);
    EXPECT_EQ(o.SquaredDistance(q), 169.0);
    EXPECT_EQ(q.Distance(o), 13.0);
}

TEST(KoPoint, PhotoZeroMatchesAnyPhoto)
{
    KoPoint p(12, 0, 0, 0, 0);
    p.photo = 7;
    EXPECT_TRUE(p.Matches(12, 0));
    EXPECT_TRUE(p.Matches(12, 7));
    EXPECT_FALSE(p.Matches(12, 8));
    EXPECT_FALSE(p.Matches(13, 0));
}

TEST(KoUnits, StoredIndicesKeepTheirNamesAndFactors)
{
    // The order is stored in data: micrometres after metres, feet before inches.
    const char* bracketed[] = {"", "[mm]", "[cm]", "[m]", "[\xC2\xB5m]", "[ft]", "[in]", "??", "??"};
    const double factors[] = {1.0, 0.001, 0.01, 1.0, 1e-06, 0.3048, 0.0254, 1.0, 1.0};
    for (int i = 0; i < 9; ++i) {
        EXPECT_STREQ(KoUnitName(i, true), bracketed[i]);
        EXPECT_EQ(KoUnitFactor(i), factors[i]);
    }
    EXPECT_STREQ(KoUnitName(4), "\xC2\xB5m");
    EXPECT_STREQ(KoUnitName(-1), "??");
    EXPECT_STREQ(KoUnitNameW(4, true), L"[\u00B5m]");
    EXPECT_DOUBLE_EQ(KoMetresToUnit(1.0, kKoUnitFT), 1.0 / 0.3048);
    EXPECT_EQ(KoUnitPair(kKoUnitCM).text, "cm");
}

}  // namespace
