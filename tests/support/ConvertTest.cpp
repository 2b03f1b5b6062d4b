#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "support/KoConvert.h"
#include "support/KoPlatform.h"
#include "ScratchDir.h"

namespace {

TEST(UniToAnsi, BufferHoldsThreeBytesPerWideCharacterWithoutRoomForTheTerminator)
{
    UniToAnsi none(static_cast<const wchar_t*>(nullptr));
    UniToAnsi empty(L"");
    EXPECT_EQ(none.Get(), nullptr);
    EXPECT_EQ(empty.Get(), nullptr);
    EXPECT_STREQ(empty.c_str(), "");

    UniToAnsi euro(L"\u20AC");  // three bytes plus terminator in a buffer of three
    EXPECT_EQ(euro.BufferSize(), 3u);
    EXPECT_FALSE(euro.Converted());
    EXPECT_STREQ(euro.c_str(), "");

    UniToAnsi euros(L"\u20AC\u20AC\u20AC");
    EXPECT_FALSE(euros.Converted());

    UniToAnsi mixed(L"a\u20AC");
    EXPECT_TRUE(mixed.Converted());
    EXPECT_STREQ(mixed.Get(), "a\xE2\x82\xAC");

    UniToAnsi umlaut(L"M\u00FCnchen");
    EXPECT_STREQ(umlaut.Get(), "M\xC3\xBCnchen");

    // A character outside the basic plane counts as two UTF-16 units: 6 bytes for its 4.
    UniToAnsi clef(L"\U0001D11E");
    EXPECT_EQ(clef.BufferSize(), 6u);
    EXPECT_STREQ(clef.Get(), "\xF0\x9D\x84\x9E");
}

TEST(AnsiToUni, BufferOfNPlusTwoAndInvalidBytesBecomeReplacements)
{
    AnsiToUni none(static_cast<const char*>(nullptr));
    EXPECT_EQ(none.Get(), nullptr);
    AnsiToUni empty("");
    EXPECT_EQ(empty.Get(), nullptr);

    AnsiToUni text("Gau\xC3\x9F");
    EXPECT_EQ(text.BufferSize(), 7u);
    EXPECT_STREQ(text.Get(), L"Gau\u00DF");

    AnsiToUni broken("a\xFF" "b\xE2\x82");  // a stray byte and a truncated sequence
    EXPECT_STREQ(broken.Get(), L"a\uFFFDb\uFFFD\uFFFD");
    AnsiToUni overlong("\xC0\xAF");
    EXPECT_STREQ(overlong.Get(), L"\uFFFD\uFFFD");
}

TEST(Conversions, RandomTextRoundTripsAndSurrogatePairsCombine)
{
    std::mt19937 rng(42);
    std::uniform_int_distribution<int> pick(0, 4);
    for (int round = 0; round < 200; ++round) {
        std::wstring text;
        for (int i = 0; i < 1 + round % 17; ++i) {
            static const wchar_t kSamples[] = {L'A', L'\u00E4', L'\u20AC', L'\u00B5', static_cast<wchar_t>(0x1F600)};
            text += kSamples[pick(rng)];
        }
        const std::string utf8 = KoWideToUtf8(text);
        EXPECT_EQ(KoUtf8ToWide(utf8), text);
        AnsiToUni back(utf8.c_str());
        EXPECT_TRUE(back.Converted());
        EXPECT_EQ(std::wstring(back.Get()), text);
    }
    const std::wstring pair = {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
    EXPECT_EQ(KoWideToUtf8(pair), "\xF0\x9F\x98\x80");
    const std::wstring lone = {static_cast<wchar_t>(0xD83D), L'x'};
    EXPECT_EQ(KoWideToUtf8(lone), "\xEF\xBF\xBDx");
}

// A fresh directory below /tmp, removed with everything in it afterwards.
class TempDir : public ::testing::Test {
protected:
    std::wstring Path(const std::wstring& name) { return KoUtf8ToWide(m_dir.string()) + L"/" + name; }
    ScratchDir m_dir{"kopath"};
};

TEST_F(TempDir, NarrowPathOfAsciiNonAsciiAndMissingFiles)
{
    EXPECT_TRUE(KoIsAscii(nullptr));
    EXPECT_FALSE(KoIsAscii(L"\x7F\x80"));
    GetAnsiOrShortPath none(nullptr, true);
    EXPECT_STREQ(none.Narrow(), "");
    EXPECT_STREQ(none.Wide(), L"");

    // An ASCII path is taken as it stands, whether or not the file exists.
    const std::wstring ascii = Path(L"punkte.csv");
    GetAnsiOrShortPath plain(ascii.c_str(), false);
    EXPECT_EQ(std::wstring(plain.Wide()), ascii);
    EXPECT_EQ(std::string(plain.Narrow()), KoWideToUtf8(ascii));
    EXPECT_FALSE(KoFileExists(plain.Narrow()));

    // A non-ASCII path has a narrow form only for an existing file.
    const std::wstring umlaut = Path(L"Gel\u00E4nde.csv");
    GetAnsiOrShortPath missing(umlaut.c_str(), false);
    EXPECT_STREQ(missing.Narrow(), "");
    EXPECT_STREQ(missing.Wide(), L"");

    GetAnsiOrShortPath created(umlaut.c_str(), true);
    EXPECT_EQ(std::string(created.Narrow()), KoWideToUtf8(umlaut));
    EXPECT_EQ(std::wstring(created.Wide()), umlaut);
    EXPECT_TRUE(KoFileExists(created.Narrow()));
}

TEST_F(TempDir, NarrowPathIsCutAt520Bytes)
{
    const std::wstring longPath = L"/tmp/" + std::wstring(600, L'a');
    GetAnsiOrShortPath cut(longPath.c_str(), false);
    EXPECT_EQ(std::wstring(cut.Wide()).size(), 520u);
    EXPECT_EQ(std::string(cut.Narrow()).size(), 520u);

    // A long path of two-byte characters is cut before the character that would not fit whole.
    const std::wstring deep = Path(L"x/" + std::wstring(100, L'\u00E4') + L"/" + std::wstring(100, L'\u00F6') + L"/" +
                                   std::wstring(100, L'\u00FC'));
    std::filesystem::create_directories(KoWideToUtf8(deep));
    GetAnsiOrShortPath umlauts(deep.c_str(), false);
    const std::string narrow = umlauts.Narrow();
    EXPECT_GE(narrow.size(), 519u);
    EXPECT_LE(narrow.size(), 520u);
    EXPECT_EQ(narrow, KoWideToUtf8(deep).substr(0, narrow.size()));
    EXPECT_EQ(KoUtf8ToWide(narrow).find(L'\uFFFD'), std::wstring::npos);

    // Made only of three-byte characters, the narrow form does not fit the conversion buffer.
    const std::wstring euros = Path(L"\u20AC\u20AC");
    ASSERT_TRUE(KoCreateEmptyFile(KoWideToUtf8(euros).c_str()));
    GetAnsiOrShortPath failed(euros.c_str(), false);
    EXPECT_EQ(std::wstring(failed.Wide()), euros);
    EXPECT_STRNE(failed.Narrow(), "");  // the directory part makes it fit
    const auto previous = std::filesystem::current_path();
    std::filesystem::current_path(m_dir);
    GetAnsiOrShortPath bareFailed(L"\u20AC\u20AC", true);
    std::filesystem::current_path(previous);
    EXPECT_STREQ(bareFailed.Narrow(), "");
}

}  // namespace
