// A drawing that is loaded and saved comes back byte for byte; a transformed one is read by an independent
// DXF reader without complaint and holds the coordinates that reader computes itself.
#include "DxfTestSupport.h"

#include "host/dxf/Document.h"
#include "host/dxf/EntityWriter.h"
#include "host/dxf/Transform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <deque>

namespace {

namespace fs = std::filesystem;
using dxftest::corpus;
using dxftest::readFile;

std::unique_ptr<dxf::Document> loadOrFail(const fs::path& path) {
  std::string error;
  auto doc = dxf::Document::load(path, error);
  EXPECT_TRUE(doc) << error;
  return doc;
}

TEST(DxfRoundTrip, EveryVersionOfTheCorpusSavesIdentically) {
  const fs::path out = dxftest::scratchDir("roundtrip");
  for (const fs::path& file : corpus()) {
    SCOPED_TRACE(file.filename().string());
    auto doc = loadOrFail(file);
    ASSERT_TRUE(doc);
    std::string error;
    const fs::path saved = out / file.filename();
    ASSERT_TRUE(doc->save(saved, error)) << error;
    EXPECT_TRUE(readFile(saved) == readFile(file));
    // The layer API only reads: nothing it looks at may count as a change.
    for (std::size_t i = 0; i < doc->layerCount(); ++i) (void)doc->layer(i).frozen();
    EXPECT_TRUE(doc->bytes() == readFile(file));
  }
}

TEST(DxfRoundTrip, CrLfCommentsAndTrailingBytesSurvive) {
  // A drawing written on Windows, opened by a comment and followed by bytes after EOF, in a UTF-8 file
  // with a byte order mark: all of it must come back, and a changed record keeps the file's line ending.
  std::string lf = readFile(corpus()[3]);  // R2007: UTF-8 text
  std::string crlf = "\xEF\xBB\xBF" "999\r\nwritten by hand\r\n";
  for (char c : lf) {
    if (c == '\n') crlf += '\r';
    crlf += c;
  }
  crlf += "\x1a";
  std::string error;
  auto doc = dxf::Document::parse(crlf, "crlf.dxf", error);
  ASSERT_TRUE(doc) << error;
  EXPECT_TRUE(doc->bytes() == crlf);

  dxf::Entity* line = nullptr;
  for (dxf::Entity* e : doc->modelSpace())
    if (e->type == "LINE" && !line) line = e;
  ASSERT_TRUE(line);
  const std::size_t x = *line->tags.find(10);
  line->tags.setNumber(x, 2561234.5);
  const std::string changed = doc->bytes();
  EXPECT_NE(changed.find(" 10\r\n2561234.5\r\n"), std::string::npos);
  EXPECT_EQ(changed.find("\n\n"), std::string::npos);
  std::size_t bare = 0;
  for (std::size_t i = 0; i < changed.size(); ++i)
    if (changed[i] == '\n' && (i == 0 || changed[i - 1] != '\r')) ++bare;
  EXPECT_EQ(bare, 0u);
}

dxf::Matrix44 surveyMove() {
  // Gauss-Krueger to UTM-like: a turn of 0.7 degrees, a survey scale and a shift of kilometres.
  const double a = 0.7 * M_PI / 180.0, s = 0.9996;
  return dxf::Matrix44{{{s * std::cos(a), -s * std::sin(a), 0, -2200000.25},
                        {s * std::sin(a), s * std::cos(a), 0, 141234.75},
                        {0, 0, s, 12.5},
                        {0, 0, 0, 1}}};
}

TEST(DxfRoundTrip, TransformedDrawingsReadBackWithTheIndependentReadersCoordinates) {
  const fs::path out = dxftest::scratchDir("transformed");
  const dxf::Matrix44 m = surveyMove();
  for (const fs::path& file : corpus()) {
    SCOPED_TRACE(file.filename().string());
    auto doc = loadOrFail(file);
    ASSERT_TRUE(doc);
    for (dxf::Entity* e : doc->modelSpace()) {
      const dxf::TransformStatus status = dxf::transformEntity(*e, m);
      EXPECT_TRUE(status == dxf::TransformStatus::Ok) << e->type;
    }
    std::string error;
    const fs::path saved = out / file.filename();
    ASSERT_TRUE(doc->save(saved, error)) << error;

    std::string report;
    EXPECT_EQ(dxftest::checkDrawing({"audit", saved.string()}, report), 0) << report;
    std::vector<std::string> args{"compare", file.string(), saved.string()};
    for (const auto& row : m.m)
      for (double v : row) args.push_back(dxf::formatNumber(v));
    EXPECT_EQ(dxftest::checkDrawing(args, report), 0) << report;
  }
}

}  // namespace

namespace {

// Many records are written on two cores in stretches: the bytes must be those of writing one record after
// the other, whatever stands at the seams (a changed record, an erased one, a polyline with its vertices).
TEST(DxfRoundTrip, ManyRecordsWriteOnTwoCoresAsOnOne) {
  const dxf::Matrix44 kMove{{{0.8, -0.6, 0.0, 1000.0}, {0.6, 0.8, 0.0, -250.5}, {0.0, 0.0, 1.0, 3.0}, {0.0, 0.0, 0.0, 1.0}}};
  std::string file = "  0\r\nSECTION\r\n  2\r\nENTITIES\r\n";
  constexpr int kCount = 9000;
  for (int i = 0; i < kCount; ++i) {
    const std::string x = std::to_string(2561234 + i) + ".125";
    if (i % 1000 == 47)
      file += "  0\r\nPOLYLINE\r\n  8\r\n0\r\n 66\r\n1\r\n  0\r\nVERTEX\r\n  8\r\n0\r\n 10\r\n" + x +
              "\r\n 20\r\n7.5\r\n  0\r\nSEQEND\r\n  8\r\n0\r\n";
    else
      file += "  0\r\nPOINT\r\n  8\r\nPunkte\r\n 10\r\n" + x + "\r\n 20\r\n5634012.5\r\n 30\r\n0.0\r\n";
  }
  file += "  0\r\nENDSEC\r\n  0\r\nEOF\r\n";
  std::string error;
  auto doc = dxf::Document::parse(file, "points.dxf", error);
  ASSERT_TRUE(doc) << error;
  std::deque<dxf::Entity> records;
  for (dxf::Entity* e : doc->modelSpace()) records.push_back(*e);
  ASSERT_EQ(records.size(), std::size_t{kCount});
  for (std::size_t i = 0; i < records.size(); ++i) {
    dxf::Entity& e = records[i];
    const bool seam = i % 2048 == 0 || i % 2048 == 2047;
    if (seam || i % 7 == 0) dxf::transformEntity(e, kMove);
    if (i % 11 == 0 && !seam) e.erased = true;
  }
  const dxf::TagStyle style{std::string("\r\n"), std::nullopt};
  dxf::Sink one;
  for (const dxf::Entity& e : records) dxf::writeEntity(one, e, style);
  dxf::Sink two;
  dxf::writeRecords(two, records, style);
  const std::string expected = one.take();
  EXPECT_EQ(two.take(), expected);
  EXPECT_NE(expected.find("VERTEX"), std::string::npos);
}

}  // namespace
