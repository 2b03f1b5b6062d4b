// Drawings written by other CAD programs (the corpus beside the checkout), moved by the two-pair solution
// of a surveyor's job: every entity the host transforms must agree with an independent transformation of
// it, every entity it refuses must stay exactly as it was and is listed as left behind.
#include "host/dxf/Document.h"
#include "host/dxf/TransformDrawing.h"
#include "tests/dxf_transform/CompareRun.h"
#include "tests/dxf_transform/Matrices.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace dxf {
namespace {

namespace fs = std::filesystem;
using testing::operator*;

fs::path corpusDir() { return fs::path(VIRA_SOURCE_DIR) / ".." / "shared" / "dxf-corpus"; }

std::vector<std::string> corpusFiles() {
  std::vector<std::string> names;
  std::error_code ec;
  for (const auto& entry : fs::directory_iterator(corpusDir(), ec)) {
    std::string ext = entry.path().extension().string();
    std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char ch) { return char(std::tolower(ch)); });
    if (entry.is_regular_file() && (ext == ".dxf" || ext == ".dxfb")) names.push_back(entry.path().filename());
  }
  std::sort(names.begin(), names.end());
  return names;
}

using testing::snapshot;
using testing::statusName;

// Turned by 30 degrees and scaled by 1.5 about a control point, then shifted onto its target.
const Matrix44 kTwoPairs = testing::shift(2561500.0, 5633900.0, 0.0) * testing::rotation(0, 0, 1, 30.0) *
                           testing::scaling(1.5, 1.5, 1.5) * testing::shift(-120.0, -80.0, 0.0);

class CorpusAgreement : public ::testing::TestWithParam<std::string> {};

TEST_P(CorpusAgreement, MovesAsAnIndependentTransformationSaysOrStaysAndIsReported) {
  const fs::path source = corpusDir() / GetParam();
  std::string error;
  auto doc = Document::load(source, error);
  // Loading and recovering are the business of the reading suite; a file this host cannot read yet has no
  // entities to move.
  if (!doc) GTEST_SKIP() << error;

  std::ostringstream statuses;
  std::string changedAnyway;
  for (Entity* e : doc->modelSpace()) {
    const std::string before = snapshot(*e);
    const TransformStatus s = transformInDrawing(*doc, *e, kTwoPairs);
    statuses << e->type << " " << statusName(s) << "\n";
    if (s != TransformStatus::Ok && snapshot(*e) != before)
      changedAnyway += e->type + " changed although it answered " + statusName(s) + "\n";
  }
  EXPECT_EQ(changedAnyway, "");

  const fs::path dir = fs::path(VIRA_BINARY_DIR) / "tests" / "dxf_transform" / ("corpus-" + std::to_string(::getpid()));
  fs::create_directories(dir);
  const fs::path result = dir / GetParam();
  const fs::path statusFile = dir / (GetParam() + ".status");
  std::ofstream(statusFile) << statuses.str();
  ASSERT_TRUE(doc->save(result, error)) << error;

  std::string out;
  const int code = testing::compareDrawing(source, result, statusFile, kTwoPairs, out);
  std::error_code ignored;
  fs::remove_all(dir, ignored);
  if (code == 2) GTEST_SKIP() << out;  // the independent reader cannot read the source
  EXPECT_EQ(code, 0) << GetParam() << ":\n" << out;
  // The entities left behind and the count compared, for the log.
  std::istringstream lines(out);
  for (std::string line; std::getline(lines, line);)
    if (line.rfind("left behind", 0) == 0 || line.find("entities compared") != std::string::npos)
      std::cout << GetParam() << ": " << line << "\n";
}

INSTANTIATE_TEST_SUITE_P(Corpus, CorpusAgreement, ::testing::ValuesIn(corpusFiles()),
                         [](const ::testing::TestParamInfo<std::string>& info) {
                           std::string name = info.param;
                           for (char& ch : name)
                             if (!std::isalnum(static_cast<unsigned char>(ch))) ch = '_';
                           return name;
                         });
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(CorpusAgreement);

TEST(CorpusAgreementSetup, CorpusIsBesideTheCheckout) {
  if (corpusFiles().empty()) GTEST_SKIP() << "no corpus at " << corpusDir();
  SUCCEED();
}

}  // namespace
}  // namespace dxf
