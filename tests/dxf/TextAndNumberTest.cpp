// Numbers keep every digit a survey coordinate has; texts convert between the file's code page and UTF-8.
#include "host/dxf/Codec.h"
#include "host/dxf/Document.h"
#include "host/dxf/TagList.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <random>

namespace {

TEST(DxfNumbers, ChangedNumbersAreTheShortestTextThatReadsBackExactly) {
  EXPECT_EQ(dxf::formatNumber(2561234.567), "2561234.567");
  EXPECT_EQ(dxf::formatNumber(2561234.0), "2561234.0");  // still a real to other readers
  EXPECT_EQ(dxf::formatNumber(0.1 + 0.2), "0.30000000000000004");
  EXPECT_EQ(dxf::formatNumber(-0.0), "0.0");
  EXPECT_EQ(dxf::formatNumber(1e-300), "1e-300");
  std::mt19937_64 random(7);
  std::uniform_real_distribution<double> coordinate(-1e7, 1e7);
  for (int i = 0; i < 10000; ++i) {
    const double v = coordinate(random);
    EXPECT_EQ(dxf::parseNumber(dxf::formatNumber(v)), v);
  }
  // Short plain decimals, as surveys write them, read exactly as a full reader reads them.
  std::uniform_int_distribution<long long> digits(0, 999999999999999LL);
  for (int i = 0; i < 10000; ++i) {
    std::string text = std::to_string(digits(random));
    const std::size_t point = static_cast<std::size_t>(i) % text.size();
    if (point > 0) text.insert(point, ".");
    if (i % 3 == 0) text.insert(0, "-");
    double expected = 0.0;
    std::from_chars(text.data(), text.data() + text.size(), expected);
    EXPECT_EQ(dxf::parseNumber(text), expected) << text;
  }
  EXPECT_EQ(dxf::parseNumber("1."), 1.0);
  EXPECT_EQ(dxf::parseNumber("-.5"), -0.5);
  EXPECT_TRUE(std::signbit(*dxf::parseNumber("-0.0")));
  EXPECT_EQ(dxf::parseNumber("  +12.5 \r"), 12.5);
  EXPECT_FALSE(dxf::parseNumber("12,5"));
  EXPECT_FALSE(dxf::parseNumber("1e999x"));
  EXPECT_EQ(dxf::parseInteger("     6"), 6);
  EXPECT_FALSE(dxf::parseInteger("6.0"));
}

TEST(DxfTags, ChangedTagsKeepTheirCodeLineAndCopiesOwnTheirTexts) {
  const std::string file = "  0\r\nLINE\r\n 10\r\n1.0\r\n  20\n2.0\n";
  dxf::TagList tags;
  tags.appendRaw(10, std::string_view(file).substr(11, 3), std::string_view(file).substr(16, 3));
  tags.appendRaw(20, std::string_view(file).substr(21, 4), std::string_view(file).substr(26, 3));
  EXPECT_EQ(tags.codeText(0), " 10");
  EXPECT_EQ(tags.codeText(1), "  20");
  EXPECT_FALSE(tags.modified());

  dxf::TagList copy = tags;
  copy.setNumber(0, 2561234.567);
  EXPECT_EQ(copy[0].codeText, " 10");  // written back with the file's spelling of the code
  EXPECT_EQ(copy.text(0), "2561234.567");
  EXPECT_EQ(tags.text(0), "1.0");
  EXPECT_TRUE(copy.modified() && !tags.modified());

  copy.insertNumber(1, 30, 312.25);
  dxf::TagList second;
  {
    dxf::TagList third = copy;
    second = third;
  }
  ASSERT_EQ(second.size(), 3u);
  EXPECT_EQ(second.text(0), "2561234.567");
  EXPECT_EQ(second.text(1), "312.25");
  EXPECT_TRUE(second[1].codeText.empty());
  int seen = 0;
  for (const dxf::Tag& t : second) seen += t.code;
  EXPECT_EQ(seen, 60);
  second.erase(0);
  EXPECT_EQ(second.find(20), 1u);

  // Tags beyond the packed form (a code no file holds, a text longer than a file line may be) keep all.
  const std::string longText(40000, 'x');
  second.insert(0, -5, longText);
  second.insert(1, 70000, "far");
  second.setText(2, longText + "y");
  EXPECT_EQ(second.code(0), -5);
  EXPECT_EQ(second.text(0), longText);
  EXPECT_EQ(second.code(1), 70000);
  EXPECT_EQ(second.text(1), "far");
  EXPECT_EQ(second.code(2), 30);
  EXPECT_EQ(second.text(2).size(), 40001u);
  EXPECT_EQ(second.find(70000), 1u);
  const dxf::TagList copied = second;
  EXPECT_EQ(copied.text(0), longText);
}

TEST(DxfText, CodePagesAndEscapesConvertBothWays) {
  const dxf::Codec ansi = dxf::Codec::codePage("ANSI_1252");
  EXPECT_EQ(ansi.decode("Stra\xDF" "e \x80 \\U+03a9 \\U+00"), "Straße € Ω \\U+00");
  EXPECT_EQ(ansi.encode("Straße € Ω Ж 😀"), "Stra\xDF" "e \x80 \\U+03A9 \\U+0416 ?");
  EXPECT_EQ(ansi.decode(ansi.encode("Höhe ½°")), "Höhe ½°");
  EXPECT_EQ(ansi.decode("\x81"), "\xC2\x81");  // undefined in the code page: kept as its control character

  const dxf::Codec cyrillic = dxf::Codec::codePage("ansi_1251");
  EXPECT_EQ(cyrillic.decode("\xC6"), "Ж");
  EXPECT_EQ(cyrillic.encode("Ж"), "\xC6");
  const dxf::Codec unknown = dxf::Codec::codePage("ANSI_936");
  EXPECT_EQ(unknown.decode("\xDF"), "ß");

  const dxf::Codec utf8 = dxf::Codec::utf8();
  EXPECT_EQ(utf8.decode("Ω \\U+0416"), "Ω Ж");
  EXPECT_EQ(utf8.decode("a\xFF" "b\xE2\x82"), "a\xEF\xBF\xBD" "b\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(utf8.encode("😀"), "😀");
}

}  // namespace

// A changed number is kept as its double and spelled when it is asked for or written; the tags of a changed
// record that nobody touched are written as the file has them, line endings made the drawing's own.
TEST(DxfNumbers, KeptNumbersAreSpelledWhenWrittenAndAfterATakeBack) {
  const std::string file =
      "  0\r\nSECTION\r\n  2\r\nENTITIES\r\n  0\r\nLINE\r\n  8\r\n0\r\n 10\r\n1.0\r\n 20\n2.0\r\n30\r\n3.0\r\n"
      " 11\r\n4.0\r\n 21\r\n5.0\r\n 31\r\n6.0\r\n  0\r\nENDSEC\r\n  0\r\nEOF\r\n";
  std::string error;
  auto doc = dxf::Document::parse(file, "line.dxf", error);
  ASSERT_TRUE(doc) << error;
  dxf::Entity& line = *doc->modelSpace().at(0);
  dxf::TagList& tags = line.tags;
  doc->journal().beginStep("move");
  doc->journal().recordChange(line);
  tags.setNumber(1, 2561234.5);
  tags.setNumber(4, 7.0);
  tags.insertNumber(7, 39, 0.25);
  EXPECT_EQ(tags.number(1), 2561234.5);
  EXPECT_EQ(tags.text(1), "2561234.5");
  EXPECT_EQ(tags.text(4), "7.0");
  EXPECT_EQ(tags.codeText(3), "30");
  const std::string moved =
      "  0\r\nSECTION\r\n  2\r\nENTITIES\r\n  0\r\nLINE\r\n  8\r\n0\r\n 10\r\n2561234.5\r\n 20\r\n2.0\r\n30\r\n3.0\r\n"
      " 11\r\n7.0\r\n 21\r\n5.0\r\n 31\r\n6.0\r\n 39\r\n0.25\r\n  0\r\nENDSEC\r\n  0\r\nEOF\r\n";
  EXPECT_EQ(doc->bytes(), moved);

  doc->journal().rollbackStep({});
  EXPECT_EQ(doc->bytes(), file);
  // Taken back by reading the record's bytes again: the same tags as the file gives.
  auto fresh = dxf::Document::parse(file, "line.dxf", error);
  const dxf::TagList& read = fresh->modelSpace().at(0)->tags;
  ASSERT_EQ(tags.size(), read.size());
  EXPECT_FALSE(tags.modified());
  for (std::size_t i = 0; i < tags.size(); ++i) {
    EXPECT_EQ(tags.code(i), read.code(i));
    EXPECT_EQ(tags.codeText(i), read.codeText(i));
    EXPECT_EQ(tags.text(i), read.text(i));
    EXPECT_EQ(tags.fileBytes(i).size(), read.fileBytes(i).size());
  }
  // The list's store starts again from nothing: no text spelled before the take-back may come back.
  tags.setNumber(1, 8.5);
  EXPECT_EQ(tags.text(1), "8.5");
  const dxf::TagList copy = tags;
  EXPECT_EQ(copy.text(1), "8.5");
  EXPECT_EQ(copy.number(1), 8.5);

  // A file with bare line feeds whose text value ends in a carriage return of its own (mixed line
  // endings): when a changed record is written, that character must stay part of the value.
  auto mixed = dxf::Document::parse("  0\nSECTION\n  2\nENTITIES\n  0\nTEXT\n  8\n0\n 10\n1.0\n 20\n2.0\n"
                                    "  1\nabc\r\r\n  0\nENDSEC\n  0\nEOF\n", "mixed.dxf", error);
  ASSERT_TRUE(mixed) << error;
  mixed->modelSpace().at(0)->tags.setNumber(1, 5.0);
  auto reread = dxf::Document::parse(mixed->bytes(), "mixed-saved.dxf", error);
  ASSERT_TRUE(reread) << error;
  EXPECT_EQ(reread->modelSpace().at(0)->value(1), "abc\r");
}
