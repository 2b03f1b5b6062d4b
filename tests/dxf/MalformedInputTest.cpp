// Bad input ends with a clear message naming the file (and the line, where there is one), never a crash,
// never a changed file; a save that fails leaves the target as it was and no temporary behind.
#include "DxfTestSupport.h"

#include "host/dxf/Document.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

// A small R12 drawing, line numbers noted where the tests below break it.
const std::string kSmall =
    "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1009\n  0\nENDSEC\n"  // lines 1-10
    "  0\nSECTION\n  2\nENTITIES\n"                                      // lines 11-14
    "  0\nLINE\n  8\n0\n 10\n1.5\n 20\n2.5\n 30\n0.0\n 11\n3.5\n 21\n4.5\n 31\n0.0\n"  // lines 15-30
    "  0\nENDSEC\n  0\nEOF\n";                                           // lines 31-34

std::string replaceLine(const std::string& text, int number, const std::string& replacement) {
  std::size_t begin = 0;
  for (int i = 1; i < number; ++i) begin = text.find('\n', begin) + 1;
  const std::size_t end = text.find('\n', begin);
  return text.substr(0, begin) + replacement + text.substr(end);
}

std::string parseError(const std::string& bytes) {
  std::string error;
  auto doc = dxf::Document::parse(bytes, "bad.dxf", error);
  EXPECT_FALSE(doc) << "accepted: " << bytes.substr(0, 200);
  EXPECT_THAT(error, ::testing::StartsWith("bad.dxf: "));
  return error;
}

TEST(DxfMalformed, EachFaultIsNamedWithItsLine) {
  std::string error;
  ASSERT_TRUE(dxf::Document::parse(kSmall, "good.dxf", error)) << error;

  EXPECT_THAT(parseError(replaceLine(kSmall, 19, "1x")), HasSubstr("line 19: group code \"1x\" is not a number"));
  EXPECT_THAT(parseError(replaceLine(kSmall, 19, " 85")), HasSubstr("line 19: unknown group code 85"));
  EXPECT_THAT(parseError(replaceLine(kSmall, 19, "2000")), HasSubstr("line 19: unknown group code 2000"));
  EXPECT_THAT(parseError(replaceLine(kSmall, 20, "1.5.7")), HasSubstr("line 20: \"1.5.7\" is not a number (group code 10)"));
  EXPECT_THAT(parseError(replaceLine(kSmall, 20, "")), HasSubstr("line 20: \"\" is not a number"));
  EXPECT_THAT(parseError(replaceLine(replaceLine(kSmall, 17, " 62"), 18, "red")), HasSubstr("line 18: \"red\" is not an integer"));
  EXPECT_THAT(parseError(replaceLine(kSmall, 20, std::string(dxf::kMaxLineLength + 1, '1'))),
              HasSubstr("line 20: the line is longer than"));
  EXPECT_THAT(parseError(replaceLine(kSmall, 18, std::string("a\0b", 3))), HasSubstr("line 18: the line holds a NUL byte"));
  // Codes and records that cannot stand where they are.
  EXPECT_THAT(parseError(replaceLine(replaceLine(kSmall, 11, " 10"), 12, "1.0")), HasSubstr("line 11: group code 10 stands outside a section"));
  EXPECT_THAT(parseError(replaceLine(kSmall, 16, "VERTEX")), HasSubstr("line 15: VERTEX stands outside a POLYLINE"));
  EXPECT_THAT(parseError(replaceLine(kSmall, 16, "POLYLINE")), HasSubstr("line 31: a POLYLINE is not closed by SEQEND"));
  EXPECT_THAT(parseError(replaceLine(kSmall, 32, "SECTION")), HasSubstr("line 31: the section ENTITIES is not closed by ENDSEC"));
  EXPECT_THAT(parseError(replaceLine(kSmall, 13, " 8")), HasSubstr("line 11: the SECTION has no name"));
  EXPECT_THAT(parseError(kSmall.substr(0, kSmall.size() - 8)), HasSubstr("the file ends without an EOF record"));
  EXPECT_THAT(parseError(kSmall.substr(0, kSmall.find(" 11\n") + 4)), HasSubstr("line 25: the file ends after group code 11"));
  EXPECT_THAT(parseError(replaceLine(kSmall, 8, "AC1040")), HasSubstr("DXF version \"AC1040\" cannot be read"));

  // What is no DXF at all.
  EXPECT_THAT(parseError(""), HasSubstr("the file is empty"));
  EXPECT_THAT(parseError("\n \r\n"), HasSubstr("the file is empty"));
  EXPECT_THAT(parseError(std::string("AutoCAD Binary DXF\r\n\x1a\0", 22)), HasSubstr("byte 22: the file ends without an EOF"));
  EXPECT_THAT(parseError(std::string("AC1032\0\0\0\0\0\x01", 12)), HasSubstr("DWG"));
  EXPECT_THAT(parseError("Easting;Northing\n2561234.567;5634012.345\n"), HasSubstr("not a DXF file"));
  EXPECT_THAT(parseError("  0\nLINE\n  0\nEOF\n"), HasSubstr("LINE stands outside a section"));
}

TEST(DxfMalformed, EveryTruncationOfARealDrawingIsRefusedCleanly) {
  const std::string whole = dxftest::readFile(dxftest::corpus()[1]);
  const std::size_t eof = whole.rfind("EOF");
  // Cut at many places, including the middle of lines and of line endings.
  for (std::size_t cut = 0; cut < eof; cut += 97) {
    std::string error;
    auto doc = dxf::Document::parse(whole.substr(0, cut), "cut.dxf", error);
    ASSERT_FALSE(doc) << "cut at " << cut;
    ASSERT_FALSE(error.empty());
  }
}

TEST(DxfMalformed, LoadingNamesTheFileAndLeavesItAlone) {
  const fs::path dir = dxftest::scratchDir("malformed");
  std::string error;
  EXPECT_FALSE(dxf::Document::load(dir, error));
  EXPECT_THAT(error, HasSubstr("is a directory"));
  EXPECT_FALSE(dxf::Document::load(dir / "missing.dxf", error));
  EXPECT_THAT(error, HasSubstr("missing.dxf: cannot be opened"));

  const fs::path bad = dir / "bad.dxf";
  const std::string bytes = replaceLine(kSmall, 20, "abc");
  dxftest::writeFile(bad, bytes);
  EXPECT_FALSE(dxf::Document::load(bad, error));
  EXPECT_EQ(error, bad.string() + ": line 20: \"abc\" is not a number (group code 10)");
  EXPECT_EQ(dxftest::readFile(bad), bytes);
}

std::size_t filesIn(const fs::path& dir) {
  return static_cast<std::size_t>(std::distance(fs::directory_iterator(dir), fs::directory_iterator()));
}

TEST(DxfAtomicSave, AFailedSaveLeavesTheTargetAndNoTemporary) {
  const fs::path dir = dxftest::scratchDir("atomic");
  std::string error;
  auto doc = dxf::Document::parse(kSmall, "small.dxf", error);
  ASSERT_TRUE(doc) << error;

  EXPECT_FALSE(doc->save(dir / "no" / "such" / "dir.dxf", error));
  EXPECT_THAT(error, HasSubstr("dir.dxf: cannot be written"));

  // The disk fills while the drawing is written (a file size limit stands in for a full disk).
  const fs::path target = dir / "plan.dxf";
  dxftest::writeFile(target, "old content");
  std::string big = kSmall;
  for (int i = 0; i < 2000; ++i) big.insert(big.find("  0\nENDSEC\n  0\nEOF"), "  0\nPOINT\n  8\n0\n 10\n2561234.567\n 20\n5634012.345\n");
  auto large = dxf::Document::parse(big, "large.dxf", error);
  ASSERT_TRUE(large) << error;
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{4096, 4096};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    std::string childError;
    const bool saved = large->save(target, childError);
    ::_exit(!saved && childError.find("cannot be written") != std::string::npos ? 0 : 1);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
  EXPECT_EQ(dxftest::readFile(target), "old content");
  EXPECT_EQ(filesIn(dir), 1u) << "a temporary was left behind";

  ASSERT_TRUE(large->save(target, error)) << error;
  EXPECT_EQ(dxftest::readFile(target), big);
  EXPECT_EQ(filesIn(dir), 1u);
}

}  // namespace
