// Binary DXF and drawings older than R12: read into the same tags as a text file, written back byte for
// byte while untouched, in their own form and version when changed; damage named by its byte offset.
#include "DxfTestSupport.h"

#include "host/dxf/Document.h"
#include "host/dxf/Transform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace {

using ::testing::HasSubstr;

// Writes binary DXF by hand, value by value, independently of the store's writer.
class BinaryDrawing {
 public:
  explicit BinaryDrawing(bool oneByteCodes) : oneByte_(oneByteCodes) { bytes_.assign("AutoCAD Binary DXF\r\n\x1a\0", 22); }
  BinaryDrawing& text(int code, std::string_view s) {
    putCode(code);
    bytes_.append(s);
    bytes_ += '\0';
    return *this;
  }
  BinaryDrawing& real(int code, double v) { return put(code, std::bit_cast<std::uint64_t>(v), 8); }
  BinaryDrawing& int16(int code, std::int16_t v) { return put(code, static_cast<std::uint16_t>(v), 2); }
  BinaryDrawing& int32(int code, std::int32_t v) { return put(code, static_cast<std::uint32_t>(v), 4); }
  BinaryDrawing& int64(int code, std::int64_t v) { return put(code, static_cast<std::uint64_t>(v), 8); }
  BinaryDrawing& flag(int code, std::uint8_t v) { return put(code, v, 1); }
  BinaryDrawing& chunk(int code, std::string_view data) {
    putCode(code);
    bytes_ += static_cast<char>(data.size());
    bytes_.append(data);
    return *this;
  }
  const std::string& bytes() const { return bytes_; }

 private:
  void putCode(int code) {
    if (oneByte_ && code < 255) {
      bytes_ += static_cast<char>(code);
      return;
    }
    if (oneByte_) bytes_ += '\xFF';
    putLittleEndian(static_cast<std::uint16_t>(code), 2);
  }
  void putLittleEndian(std::uint64_t v, int n) {
    for (int i = 0; i < n; ++i) bytes_ += static_cast<char>((v >> (8 * i)) & 0xFF);
  }
  BinaryDrawing& put(int code, std::uint64_t v, int n) {
    putCode(code);
    putLittleEndian(v, n);
    return *this;
  }
  bool oneByte_;
  std::string bytes_;
};

// An R2000 binary drawing with a value of every binary kind, the odd doubles included.
BinaryDrawing sample(bool oneByteCodes) {
  const double nanWithPayload = std::bit_cast<double>(std::uint64_t{0x7FF8000000000123});
  BinaryDrawing b(oneByteCodes);
  b.text(0, "SECTION").text(2, "HEADER").text(9, "$ACADVER").text(1, "AC1015");
  b.text(9, "$HANDSEED").text(5, "30").text(0, "ENDSEC");
  b.text(0, "SECTION").text(2, "ENTITIES");
  b.text(0, "LINE").text(5, "2A").text(100, "AcDbEntity").text(8, "Gr\xE4" "ben\r\nNord").int16(62, -7);
  b.int32(90, -123456).int64(160, -5000000000).flag(290, 1).chunk(310, std::string("\x00\xFF\x10", 3));
  b.text(100, "AcDbLine").real(10, 2561234.567).real(20, -0.0).real(30, nanWithPayload);
  b.real(11, 1e300).real(21, std::numeric_limits<double>::denorm_min()).real(31, -std::numeric_limits<double>::infinity());
  b.text(1001, "VIRA").int32(1071, 7).chunk(1004, "ab");
  b.text(0, "ENDSEC").text(0, "EOF");
  return b;
}

TEST(DxfBinary, EveryKindOfValueReadsAsTextAndWritesBackByteForByte) {
  for (bool oneByteCodes : {false, true}) {
    SCOPED_TRACE(oneByteCodes ? "one-byte codes" : "two-byte codes");
    const std::string bytes = sample(oneByteCodes).bytes() + "trailing bytes";
    std::string error;
    auto doc = dxf::Document::parse(bytes, "sample.dxfb", error);
    ASSERT_TRUE(doc) << error;
    EXPECT_TRUE(doc->isBinary());
    EXPECT_EQ(doc->version(), dxf::Version::R2000);
    EXPECT_TRUE(doc->bytes() == bytes);

    ASSERT_EQ(doc->modelSpace().size(), 1u);
    dxf::Entity& line = *doc->modelSpace()[0];
    EXPECT_EQ(doc->layerOf(line), "Gräben\r\nNord");
    std::vector<std::string> values;
    for (int code : {62, 90, 160, 290, 310, 1004, 1071}) values.emplace_back(line.value(code));
    EXPECT_THAT(values, ::testing::ElementsAre("-7", "-123456", "-5000000000", "1", "00FF10", "6162", "7"));
    EXPECT_EQ(dxf::parseNumber(line.value(10)), 2561234.567);
    EXPECT_TRUE(std::signbit(*dxf::parseNumber(line.value(20))));
    EXPECT_FALSE(dxf::parseNumber(line.value(30))) << "a NaN is no number to the layers above";

    // A change writes that record anew in the file's own form: the new number as a double, every other
    // value (the NaN's payload included) as it was.
    line.tags.setNumber(*line.tags.find(10), 2561300.25);
    const std::string changed = doc->bytes();
    ASSERT_EQ(changed.size(), bytes.size());
    std::string expected = bytes;
    const double newX = 2561300.25, oldXValue = 2561234.567;
    const std::size_t at = bytes.find(std::string(reinterpret_cast<const char*>(&oldXValue), 8));
    ASSERT_NE(at, std::string::npos);
    expected.replace(at, 8, std::string(reinterpret_cast<const char*>(&newX), 8));
    EXPECT_TRUE(changed == expected);
    auto again = dxf::Document::parse(changed, "changed.dxfb", error);
    ASSERT_TRUE(again) << error;
    EXPECT_EQ(dxf::parseNumber(again->modelSpace()[0]->value(10)), 2561300.25);
  }
}

TEST(DxfBinary, DamageIsNamedByItsByteOffsetAndEveryCutIsRefusedOrRecovered) {
  const std::string bytes = sample(false).bytes();
  std::string error;
  std::string unknown = bytes;
  unknown[22] = '\x55';  // the first group code becomes 85, which DXF does not know
  EXPECT_FALSE(dxf::Document::parse(unknown, "bad.dxfb", error));
  EXPECT_THAT(error, HasSubstr("bad.dxfb: not a DXF file (byte 22: unknown group code 85)"));

  const std::size_t eof = bytes.rfind("EOF");
  for (std::size_t cut = 22; cut < eof; ++cut) {
    const std::string part = bytes.substr(0, cut);
    EXPECT_FALSE(dxf::Document::parse(part, "cut.dxfb", error)) << cut;
    EXPECT_THAT(error, HasSubstr("cut.dxfb: ")) << cut;
    std::vector<std::string> repairs;
    auto recovered = dxf::Document::parse(part, "cut.dxfb", error, &repairs);
    if (!recovered) continue;  // cut before the first section: nothing to recover
    EXPECT_FALSE(repairs.empty()) << cut;
    const std::string saved = recovered->bytes();
    auto again = dxf::Document::parse(saved, "saved.dxfb", error);
    ASSERT_TRUE(again) << cut << ": " << error;
    EXPECT_TRUE(again->isBinary());
  }
}

TEST(DxfOldVersions, AnR10DrawingKeepsItsVersionTakesALayerAndMoves) {
  // R10 as a text editor writes it: no handles, no tables, a line in space.
  const std::string r10 =
      "  0\r\nSECTION\r\n  2\r\nHEADER\r\n  9\r\n$ACADVER\r\n  1\r\nAC1006\r\n  0\r\nENDSEC\r\n"
      "  0\r\nSECTION\r\n  2\r\nENTITIES\r\n"
      "  0\r\n3DLINE\r\n  8\r\n0\r\n 10\r\n1.0\r\n 20\r\n2.0\r\n 30\r\n3.0\r\n 11\r\n4.0\r\n 21\r\n5.0\r\n 31\r\n6.0\r\n"
      "  0\r\nENDSEC\r\n  0\r\nEOF\r\n";
  std::string error;
  auto doc = dxf::Document::parse(r10, "r10.dxf", error);
  ASSERT_TRUE(doc) << error;
  EXPECT_EQ(doc->version(), dxf::Version::R10);
  EXPECT_EQ(doc->versionCode(), "AC1006");
  EXPECT_FALSE(doc->hasHandles());
  EXPECT_TRUE(doc->bytes() == r10);

  ASSERT_TRUE(doc->addLayer("Bestand", 2, "", error)) << error;
  const dxf::Matrix44 shift{{{1, 0, 0, 10}, {0, 1, 0, 20}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
  ASSERT_EQ(dxf::transformEntity(*doc->modelSpace()[0], shift), dxf::TransformStatus::Ok);
  // Only the tables a layer needs are added (its linetype, the layer 0 every drawing has), in the file's
  // own line endings and without handles; the version and everything else stay.
  EXPECT_EQ(doc->bytes(),
            "  0\r\nSECTION\r\n  2\r\nHEADER\r\n  9\r\n$ACADVER\r\n  1\r\nAC1006\r\n  0\r\nENDSEC\r\n"
            "  0\r\nSECTION\r\n  2\r\nTABLES\r\n  0\r\nTABLE\r\n  2\r\nLTYPE\r\n 70\r\n1\r\n"
            "  0\r\nLTYPE\r\n  2\r\nCONTINUOUS\r\n 70\r\n0\r\n  3\r\nSolid line\r\n 72\r\n65\r\n 73\r\n0\r\n"
            " 40\r\n0.0\r\n  0\r\nENDTAB\r\n  0\r\nTABLE\r\n  2\r\nLAYER\r\n 70\r\n2\r\n"
            "  0\r\nLAYER\r\n  2\r\n0\r\n 70\r\n0\r\n 62\r\n7\r\n  6\r\nCONTINUOUS\r\n"
            "  0\r\nLAYER\r\n  2\r\nBestand\r\n 70\r\n0\r\n 62\r\n2\r\n  6\r\nCONTINUOUS\r\n  0\r\nENDTAB\r\n"
            "  0\r\nENDSEC\r\n  0\r\nSECTION\r\n  2\r\nENTITIES\r\n"
            "  0\r\n3DLINE\r\n  8\r\n0\r\n 10\r\n11.0\r\n 20\r\n22.0\r\n 30\r\n3.0\r\n 11\r\n14.0\r\n 21\r\n25.0\r\n"
            " 31\r\n6.0\r\n  0\r\nENDSEC\r\n  0\r\nEOF\r\n");

  EXPECT_FALSE(dxf::Document::parse("EXTENTS,1\r\n0.0,8.0,0.0,8.0\r\n", "r14.dxf", error));
  EXPECT_THAT(error, HasSubstr("AutoCAD 1.x interchange file"));
}

}  // namespace
