// Version records: read straight from ELF files (this test program carries one), whole or damaged.
#include "support/KoVersionRecord.h"
#include "tests/support/ReadFile.h"
#include "tests/support/ScratchDir.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

KO_VERSION_RECORD(KO_VERSION_VALUE("FileVersion", "2.5.1") KO_VERSION_VALUE("ProductName", "Prüfprogramm"));

namespace {

using namespace std::string_literals;

class ElfFileTest : public ::testing::Test {
 protected:
  void SetUp() override { self_ = readFile("/proc/self/exe"); }

  std::string write(const std::string& name, const std::string& bytes) {
    const std::string path = (dir_ / name).string();
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
  }

  // The section table's position in the 64-bit header.
  std::uint64_t sectionTableOffset() const {
    std::uint64_t offset = 0;
    for (int i = 7; i >= 0; --i) offset = (offset << 8) | static_cast<unsigned char>(self_[0x28 + i]);
    return offset;
  }

  ScratchDir dir_{"ko-version"};
  std::string self_;
};

TEST(VersionRecordTest, ParsesCompleteRecordsOnly) {
  auto values = KoParseVersionRecord("KoVersionRecord\0FileVersion\0001.0\0Comments\0\0\0"s);
  ASSERT_TRUE(values);
  EXPECT_EQ(*values, (KoVersionValues{{"FileVersion", "1.0"}, {"Comments", ""}}));

  EXPECT_FALSE(KoParseVersionRecord(""));
  EXPECT_FALSE(KoParseVersionRecord("KoVersionRecord\0\0"s)) << "no value at all";
  EXPECT_FALSE(KoParseVersionRecord("VersionRecord\0FileVersion\0001.0\0\0"s)) << "another marker";
  EXPECT_FALSE(KoParseVersionRecord("KoVersionRecord\0FileVersion\0001.0\0"s)) << "no end";
  EXPECT_FALSE(KoParseVersionRecord("KoVersionRecord\0FileVersion\0"s)) << "a name without its value";
  EXPECT_FALSE(KoParseVersionRecord("KoVersionRecord\0A\0x\0A\0y\0\0"s)) << "a name twice";
}

TEST_F(ElfFileTest, FindsTheRecordOfABuiltProgramWithoutRunningIt) {
  std::string contents, error;
  ASSERT_TRUE(KoReadElfSection(write("copy", self_), kKoVersionSection, contents, error)) << error;
  auto values = KoParseVersionRecord(contents);
  ASSERT_TRUE(values);
  EXPECT_EQ(values->at("FileVersion"), "2.5.1");
  EXPECT_EQ(values->at("ProductName"), "Prüfprogramm");

  EXPECT_FALSE(KoReadElfSection(write("copy", self_), ".no_such_section", contents, error));
  EXPECT_EQ(error, "the file has no section .no_such_section");
}

TEST_F(ElfFileTest, DamagedOrForeignFilesAreRefusedWithAReason) {
  std::string contents, error;
  EXPECT_FALSE(KoReadElfSection((dir_ / "missing.so").string(), kKoVersionSection, contents, error));
  EXPECT_EQ(error, "No such file or directory");
  EXPECT_FALSE(KoReadElfSection(dir_.string(), kKoVersionSection, contents, error)) << "a folder";
  EXPECT_FALSE(KoReadElfSection(write("text.so", "[Language]\nCode=ENG\n"), kKoVersionSection, contents, error));
  EXPECT_EQ(error, "not an ELF file");
  EXPECT_FALSE(KoReadElfSection(write("empty.so", ""), kKoVersionSection, contents, error));

  // Cut inside the header, before the section table or inside its last entry: never read past the end.
  for (std::size_t size : {std::size_t{20}, std::size_t{63}, self_.size() / 2, self_.size() - 30}) {
    EXPECT_FALSE(KoReadElfSection(write("cut.so", self_.substr(0, size)), kKoVersionSection, contents, error))
        << size;
    EXPECT_FALSE(error.empty());
  }

  // A section table that points beyond the file, and one whose entries point there.
  std::string damaged = self_;
  damaged[0x28 + 5] = '\x7f';
  EXPECT_FALSE(KoReadElfSection(write("far.so", damaged), kKoVersionSection, contents, error));
  damaged = self_;
  const std::uint64_t table = sectionTableOffset();
  for (std::size_t i = table; i < damaged.size(); ++i) damaged[i] = '\xff';
  EXPECT_FALSE(KoReadElfSection(write("garbage.so", damaged), kKoVersionSection, contents, error));
  EXPECT_TRUE(contents.empty());
}

}  // namespace
