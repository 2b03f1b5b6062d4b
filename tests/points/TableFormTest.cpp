#include <gtest/gtest.h>

#include <locale>
#include <random>
#include <sstream>
#include <vector>

#include "points/KoPointList.h"
#include "points/KoPointTable.h"

namespace {

std::string Blanks(std::size_t n) { return std::string(n, ' '); }

using Mask = std::vector<eKoPointRWMask>;

TEST(TableForm, HeaderAndRowWidthsDifferForFlagAndColor)
{
    const Mask mask = {eKoRWNumber, eKoRWName, eKoRWFlag, eKoRWColor};
    std::ostringstream header;
    KoWritePointHeader(header, mask);
    EXPECT_EQ(header.str(), " " + Blanks(9) + "#" + " Name" + Blanks(17) + " " + Blanks(6) + "Flag" + " " +
                                Blanks(4) + " Color");

    KoPoint p(17, 0, 0, 0, 0);
    p.name = "GP17";
    p.flag = -9;
    p.color = 255;
    std::ostringstream row;
    KoWritePoint(row, p, mask);
    EXPECT_EQ(row.str(), " " + Blanks(8) + "17" + " \"GP17\"" + Blanks(15) + " " + Blanks(19) + "-9" + " " +
                             Blanks(18) + "255");
}

TEST(TableForm, RowValuesCodesDerivedAndSkippedFields)
{
    KoPoint p(3, 4500123.456789012, 0.1 + 0.2, 1e20, KoPoint::kCodeX | KoPoint::kCodeZ);
    p.name = "A 1";
    p.dx = 3.0;
    p.dy = 4.0;
    p.redu2 = -0.5;
    p.extra = 1234;
    const Mask mask = {eKoRWCodeText, eKoRWCode, eKoRWPP, eKoRWX, eKoRWY, eKoRWZ, eKoRWDS, eKoRWSkip,
                       static_cast<eKoPointRWMask>(99), eKoRWResidualY, eKoRWSy};
    std::ostringstream row;
    KoWritePoint(row, p, mask);
    // 16 significant digits in general notation: 0.1 + 0.2 shows as 0.3, 1e20 in exponent form.
    EXPECT_EQ(row.str(), "   13    5" + Blanks(8) + "A 1" + " " + Blanks(4) + "4500123.456789012" + " " +
                             Blanks(18) + "0.3" + " " + Blanks(16) + "1e+20" + " " + Blanks(23) + "5" + " " +
                             Blanks(20) + "-0.5" + " " + Blanks(23) + "4");
    EXPECT_EQ(row.str().find('\n'), std::string::npos);  // the caller ends the line

    // A stream carrying a decimal-comma locale with digit grouping still gets plain survey numbers.
    struct GermanPunct : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    std::ostringstream german;
    german.imbue(std::locale(std::locale::classic(), new GermanPunct));
    KoPoint q(1234567, 2500000.25, 0, 0, 0);
    KoWritePoint(german, q, Mask{eKoRWNumber, eKoRWX});
    EXPECT_EQ(german.str(), "    1234567" + Blanks(12) + "2500000.25");

    std::ostringstream header;
    KoWritePointHeader(header, Mask{eKoRWResidualX, eKoRWSx, eKoRWDS, eKoRWSkip, eKoRWEnd, eKoRWX});
    EXPECT_EQ(header.str(), " " + Blanks(14) + "Residual x" + " " + Blanks(20) + "  Sx" + " " + Blanks(20) + "  dS");
}

TEST(TableForm, RandomPointsRoundTrip)
{
    const Mask mask = {eKoRWNumber, eKoRWName, eKoRWFlag, eKoRWCodeText, eKoRWPhoto, eKoRWCamera,
                       eKoRWX,      eKoRWY,    eKoRWZ,    eKoRWDx,       eKoRWDy,    eKoRWDz,
                       eKoRWDS,     eKoRWRedu, eKoRWRedu2, eKoRWRedu3,   eKoRWColor};
    std::mt19937 rng(2026);
    std::uniform_int_distribution<long long> millimetres(-9999999999LL, 9999999999LL);
    std::uniform_int_distribution<int> small(-100000, 100000);
    const char* names[] = {"", "P1", "Kirchturm Nord", "x"};

    std::vector<KoPoint> written;  // kept for the bitwise check of the coordinates
    std::ostringstream out;
    for (int i = 0; i < 300; ++i) {
        KoPoint p(static_cast<std::uint32_t>(rng()), 0, 0, 0, static_cast<std::uint16_t>(rng() % 8));
        p.name = names[i % 4];
        p.flag = small(rng);
        p.photo = small(rng);
        p.camera = small(rng);
        p.x = millimetres(rng) / 1000.0;
        p.y = millimetres(rng) / 1000.0;
        p.z = small(rng) / 1000.0;
        p.dx = small(rng) / 1e4;
        p.dy = small(rng) / 1e4;
        p.dz = small(rng) / 1e4;
        p.redu = small(rng) / 100.0;
        p.redu2 = small(rng) / 100.0;
        p.redu3 = small(rng) / 100.0;
        p.color = small(rng);
        KoWritePoint(out, p, mask);
        out << '\n';
        written.push_back(p);
    }

    // Every value has at most 16 significant digits, so reading and writing again gives the same rows.
    std::istringstream in(out.str());
    KoTokenReader reader(in);
    std::ostringstream again;
    for (std::size_t i = 0; i < written.size(); ++i) {
        KoPoint read;
        ASSERT_TRUE(KoReadPoint(reader, read, mask));
        EXPECT_EQ(read.x, written[i].x);
        KoWritePoint(again, read, mask);
        again << '\n';
    }
    EXPECT_EQ(again.str(), out.str());
    EXPECT_TRUE(reader.AtEnd());
}

TEST(TableForm, ReaderTakesOneItemPerFieldAndStopsAtTheMaskEnd)
{
    // PP, dS and 20 consume one item each and store nothing; residuals and unknown fields read nothing.
    std::istringstream in("7 ignored 1.5 99 skipped 21 2.5 123 4.5 rest");
    KoTokenReader reader(in);
    KoPoint p;
    p.name = "keep";
    const Mask mask = {eKoRWNumber, eKoRWPP, eKoRWX, eKoRWDS, eKoRWSkip, eKoRWCodeText, eKoRWResidualX,
                       static_cast<eKoPointRWMask>(42), eKoRWSx, eKoRWCode, eKoRWEnd, eKoRWZ};
    ASSERT_TRUE(KoReadPoint(reader, p, mask));
    EXPECT_EQ(p.number, 7u);
    EXPECT_EQ(p.name, "keep");
    EXPECT_EQ(p.x, 1.5);
    EXPECT_STREQ(p.CodeText(), " 12");  // 21 read through the integer setter
    EXPECT_EQ(p.redu, 0.0);
    EXPECT_EQ(p.dx, 2.5);
    EXPECT_EQ(p.code, 123);  // field 5 stores the number as it stands
    EXPECT_EQ(p.z, 0.0);
    EXPECT_EQ(reader.ReadNumber(), 4.5);

    // A word where a number belongs counts as 0; running out of items is reported.
    std::istringstream shortRow("5 abc");
    KoTokenReader shortReader(shortRow);
    KoPoint q;
    q.y = 9.0;
    EXPECT_FALSE(KoReadPoint(shortReader, q, Mask{eKoRWNumber, eKoRWX, eKoRWY}));
    EXPECT_EQ(q.number, 5u);
    EXPECT_EQ(q.x, 0.0);
    EXPECT_EQ(q.y, 0.0);
}

}  // namespace
