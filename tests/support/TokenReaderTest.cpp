#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "support/KoTokenReader.h"

namespace {

TEST(KoTokenReader, ClassifiesTokensInFileOrderWithLines)
{
    std::istringstream in("2 1.5 -3 +7 -.5 1e3\n  Punkt \"Name mit Blank\" \"\"\n12abc nan - 99999999999999999999\n");
    KoTokenReader r(in);
    struct Expect {
        eKoToken type;
        const char* text;
        double number;
        int line;
    };
    const Expect expected[] = {
        {eKoToken::Integer, "2", 2, 1},     {eKoToken::Float, "1.5", 1.5, 1},
        {eKoToken::Integer, "-3", -3, 1},   {eKoToken::Integer, "+7", 7, 1},
        {eKoToken::Float, "-.5", -0.5, 1},  {eKoToken::Float, "1e3", 1000, 1},
        {eKoToken::Word, "Punkt", 0, 2},    {eKoToken::Word, "Name mit Blank", 0, 2},
        {eKoToken::Word, "", 0, 2},         {eKoToken::Word, "12abc", 0, 3},
        {eKoToken::Word, "nan", 0, 3},      {eKoToken::Word, "-", 0, 3},
        {eKoToken::Float, "99999999999999999999", 1e20, 3},
    };
    for (const Expect& e : expected) {
        const KoToken t = r.Next();
        EXPECT_EQ(t.type, e.type) << e.text;
        EXPECT_EQ(t.text, e.text);
        EXPECT_EQ(t.NumberOr0(), e.number) << e.text;
        EXPECT_EQ(t.line, e.line) << e.text;
        EXPECT_EQ(r.Status(), eKoReaderStatus::Ok);
    }
    EXPECT_EQ(r.Next().type, eKoToken::End);
    EXPECT_EQ(r.Next().type, eKoToken::End);
    EXPECT_EQ(r.Status(), eKoReaderStatus::EndOfInput);
}

TEST(KoTokenReader, NumberReadersTreatOtherTokensAsZero)
{
    // The parameter readers' pattern: an integer count, then that many numbers.
    std::istringstream in("3 1.25 x 4\n2.9 -2.9 1e30 \"q\"");
    KoTokenReader r(in);
    EXPECT_EQ(r.Peek().integer, 3);
    EXPECT_EQ(r.ReadInteger(), 3);  // peeking did not consume
    EXPECT_EQ(r.ReadNumber(), 1.25);
    EXPECT_EQ(r.ReadNumber(), 0.0);
    EXPECT_EQ(r.ReadNumber(), 4.0);
    EXPECT_EQ(r.ReadInteger(), 2);
    EXPECT_EQ(r.ReadInteger(), -2);
    EXPECT_EQ(r.ReadInteger(), 9223372036854775807LL);
    EXPECT_EQ(r.ReadInteger(), 0);
    EXPECT_TRUE(r.AtEnd());
    EXPECT_EQ(r.ReadNumber(), 0.0);
    EXPECT_FALSE(r.Skip());
}

TEST(KoTokenReader, UnterminatedQuoteEndsWithItsLineAndOverflowsSaturate)
{
    std::istringstream in("\"offen\n5 1e999 -1e999 1e-999");
    KoTokenReader r(in);
    const KoToken open = r.Next();
    EXPECT_EQ(open.text, "offen");
    EXPECT_TRUE(open.quoted);
    const KoToken five = r.Next();
    EXPECT_EQ(five.integer, 5);
    EXPECT_EQ(five.line, 2);
    EXPECT_EQ(r.ReadNumber(), HUGE_VAL);
    EXPECT_EQ(r.ReadNumber(), -HUGE_VAL);
    EXPECT_EQ(r.ReadNumber(), 0.0);
}

}  // namespace
