#include <gtest/gtest.h>

#include "support/KoString.h"

namespace {

TEST(String, OutOfRangeAccessReportsInvalidIndex)
{
    String s("abc");
    EXPECT_EQ(s[2], 'c');
    EXPECT_EQ(s.First(), 'a');
    EXPECT_EQ(s.Last(), 'c');
    try {
        (void)s[3];
        FAIL() << "index 3 accepted";
    } catch (const KoIndexError& e) {
        EXPECT_STREQ(e.what(), "invalid index");
    }
    EXPECT_THROW((void)String().Last(), KoIndexError);
    EXPECT_THROW(s.SetAt(3, 'x'), KoIndexError);
}

TEST(String, PartsClampAndSelfReferenceIsSafe)
{
    String s("Messpunkt");
    EXPECT_EQ(String(s.Left(4)), "Mess");
    EXPECT_EQ(String(s.Right(5)), "punkt");
    EXPECT_EQ(String(s.Left(100)), "Messpunkt");
    EXPECT_EQ(String(s.Mid(4, 2)), "pu");
    EXPECT_EQ(String(s.Mid(20)), "");
    s = String(s.Right(5));  // the source lies in the buffer being replaced
    EXPECT_EQ(s, "punkt");
    s = s;
    EXPECT_EQ(s, "punkt");
    s += s.View();
    EXPECT_EQ(s, "punktpunkt");
    EXPECT_EQ(s.Length(), 10u);
}

TEST(String, PathPartsUseEverySeparatorFromTheEnd)
{
    const String path("C:\\Daten/Projekt\\plan.v2.dxf");
    EXPECT_EQ(path.DirPart(), "C:\\Daten/Projekt");
    EXPECT_EQ(path.FilePart(), "plan.v2.dxf");
    EXPECT_EQ(path.Extension(), "dxf");
    EXPECT_EQ(path.WithoutExtension(), "C:\\Daten/Projekt\\plan.v2");
    EXPECT_EQ(String("C:plan").DirPart(), "C");
    EXPECT_EQ(String("C:plan").FilePart(), "plan");
    EXPECT_EQ(String("plan").DirPart(), "");
    EXPECT_EQ(String("plan").Extension(), "");
    EXPECT_EQ(String("plan").WithoutExtension(), "plan");

    EXPECT_EQ(String::JoinPath("C:\\tmp", "a.csv"), "C:\\tmp\\a.csv");
    EXPECT_EQ(String::JoinPath("C:\\tmp\\", "a.csv"), "C:\\tmp\\a.csv");
    EXPECT_EQ(String::JoinPath("C:\\tmp", "\\a.csv"), "C:\\tmp\\a.csv");
    EXPECT_EQ(String::JoinPath("C:\\tmp\\", "\\a.csv"), "C:\\tmp\\\\a.csv");
}

TEST(String, SplitReadsColumnsSeparatedByRunsOfBlanks)
{
    // A coordinate field shows its numbers two blanks apart and must read back item by item.
    const auto items = String("  1.0000  2.0000  3.0000 [m] ").Split(' ', 4);
    ASSERT_EQ(items.size(), 4u);
    EXPECT_EQ(items[0], "1.0000");
    EXPECT_EQ(items[1], "2.0000");
    EXPECT_EQ(items[2], "3.0000");
    EXPECT_EQ(items[3], "[m]");

    const auto limited = String("a b  c d").Split(' ', 2);
    ASSERT_EQ(limited.size(), 2u);
    EXPECT_EQ(limited[1], "b  c d");
    EXPECT_TRUE(String("   ").Split(' ').empty());
    EXPECT_EQ(String("a;b;;c").Split(';').size(), 3u);
}

}  // namespace
