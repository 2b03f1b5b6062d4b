// Drawings written by other CAD programs (the corpus beside the checkout), moved by the two-pair solution
// of a surveyor's job: every entity the host transforms must agree with an independent transformation of
// it, every entity it refuses must stay exactly as it was and is listed as left behind.
#include "CorpusFiles.h"
#include "host/dxf/Document.h"
#include "host/dxf/TransformDrawing.h"
#include "tests/dxf_transform/CompareRun.h"
#include "tests/dxf_transform/Matrices.h"

#include <gtest/gtest.h>

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

using testing::snapshot;
using testing::statusName;

// Turned by 30 degrees and scaled by 1.5 about a control point, then shifted onto its target.
const Matrix44 kTwoPairs = testing::shift(2561500.0, 5633900.0, 0.0) * testing::rotation(0, 0, 1, 30.0) *
                           testing::scaling(1.5, 1.5, 1.5) * testing::shift(-120.0, -80.0, 0.0);

class CorpusAgreement : public ::testing::TestWithParam<fs::path> {};

TEST_P(CorpusAgreement, MovesAsAnIndependentTransformationSaysOrStaysAndIsReported) {
  // The drawing as a user gets it: opened as it stands, or else through recovery.
  std::string error, recoverError;
  std::vector<std::string> repairs;
  std::unique_ptr<Document> doc = Document::load(GetParam(), error);
  if (!doc) doc = Document::recover(GetParam(), recoverError, repairs);
  // Opening is the reading suite's business; a drawing that cannot be opened has nothing to move.
  if (!doc) GTEST_SKIP() << error << " / " << recoverError;

  const std::string name = GetParam().filename().string();
  const fs::path dir = fs::path(VIRA_BINARY_DIR) / "tests" / "dxf_transform" / ("corpus-" + std::to_string(::getpid()));
  fs::create_directories(dir);
  // The independent reader starts from the drawing as opened (a recovered one as repaired).
  const fs::path source = dir / ("source-" + name);
  ASSERT_TRUE(doc->save(source, error)) << error;

  std::ostringstream statuses;
  std::string changedAnyway;
  for (Entity* e : doc->modelSpace()) {
    const std::string before = snapshot(*e);
    const TransformStatus s = transformInDrawing(*doc, *e, kTwoPairs);
    statuses << e->type << " " << statusName(s) << "\n";
    if (s != TransformStatus::Ok && snapshot(*e) != before)
      changedAnyway += std::string(e->type.view()) + " changed although it answered " + statusName(s) + "\n";
  }
  EXPECT_EQ(changedAnyway, "");

  const fs::path result = dir / name;
  const fs::path statusFile = dir / (name + ".status");
  std::ofstream(statusFile) << statuses.str();
  ASSERT_TRUE(doc->save(result, error)) << error;

  std::string out;
  const int code = testing::compareDrawing(source, result, statusFile, kTwoPairs, out);
  std::error_code ignored;
  fs::remove_all(dir, ignored);
  if (code == 2) GTEST_SKIP() << out;  // the independent reader cannot read the source
  EXPECT_EQ(code, 0) << name << ":\n" << out;
  // The entities left behind and the count compared, for the log.
  std::istringstream lines(out);
  for (std::string line; std::getline(lines, line);)
    if (line.rfind("left behind", 0) == 0 || line.find("entities compared") != std::string::npos)
      std::cout << name << ": " << line << "\n";
}

INSTANTIATE_TEST_SUITE_P(Corpus, CorpusAgreement, ::testing::ValuesIn(dxfcorpus::drawings()),
                         [](const ::testing::TestParamInfo<fs::path>& info) {
                           return dxfcorpus::testName(info.param);
                         });
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(CorpusAgreement);

TEST(CorpusAgreementSetup, CorpusIsBesideTheCheckout) {
  if (dxfcorpus::drawings().empty()) GTEST_SKIP() << "no corpus beside the checkout";
  SUCCEED();
}

}  // namespace
}  // namespace dxf
