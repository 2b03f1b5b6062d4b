// Every drawing of the real-world corpus: it opens (a damaged one through recovery, which must say what it
// repaired), comes back byte for byte when saved untouched, in ASCII and binary alike, and takes a new
// layer in a way the independent reader (ezdxf) accepts wherever it accepts the original. The checks are
// general, not per file, so that they hold for a corpus they have not seen ($VIRA_DXF_CORPUS).
#include "CorpusFiles.h"

#include "host/dxf/Document.h"
#include "tests/dxf/DxfTestSupport.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

using dxftest::readFile;

fs::path scratchDir(const std::string& name) { return dxftest::scratchDir("corpus-" + name); }

// Runs check_corpus.py; its exit status, and what it printed in `output`.
int checkWithEzdxf(std::vector<std::string> args, std::string& output) {
  args.insert(args.begin(), std::string(VIRA_SOURCE_DIR) + "/tests/dxf_corpus/check_corpus.py");
  return dxftest::runPython(args, output);
}

// A drawing as a user gets it: opened as it stands, or else through recovery.
struct Opened {
  std::unique_ptr<dxf::Document> doc;
  std::vector<std::string> repairs;  // empty when the drawing opened as it stands
  std::string error;
};

Opened open(const fs::path& file) {
  Opened o;
  o.doc = dxf::Document::load(file, o.error);
  if (o.doc) return o;
  std::string recoverError;
  o.doc = dxf::Document::recover(file, recoverError, o.repairs);
  if (!o.doc) o.error += " / recovery: " + recoverError;
  return o;
}

class CorpusDrawing : public ::testing::TestWithParam<fs::path> {};

// A file that neither opens nor recovers must be one the independent reader cannot open either (the
// store's reason names the file).
void expectRefusedByBoth(const fs::path& file, const Opened& o) {
  EXPECT_EQ(o.error.rfind(file.string() + ": ", 0), 0u) << o.error;
  std::string report;
  EXPECT_NE(checkWithEzdxf({"opens", file.string()}, report), 0)
      << "ezdxf opens what the store refuses: " << o.error;
}

TEST_P(CorpusDrawing, OpensAndSavesBackUnchanged) {
  const fs::path& file = GetParam();
  const Opened o = open(file);
  if (!o.doc) return expectRefusedByBoth(file, o);
  const fs::path dir = scratchDir(dxfcorpus::testName(file) + "-unchanged");
  const fs::path saved = dir / file.filename();
  std::string error;
  ASSERT_TRUE(o.doc->save(saved, error)) << error;
  if (o.repairs.empty()) {
    EXPECT_TRUE(readFile(saved) == readFile(file)) << "the untouched drawing did not come back byte for byte";
    return;
  }
  // A recovered drawing says what was wrong, one line per kind of repair, and comes out sound: it opens
  // without recovery, and round-trips from then on. Recovery never touches the damaged file itself.
  for (const std::string& line : o.repairs) EXPECT_FALSE(line.empty());
  auto again = dxf::Document::load(saved, error);
  ASSERT_TRUE(again) << "the recovered drawing does not open as it stands: " << error;
  EXPECT_TRUE(again->bytes() == readFile(saved));
  std::vector<std::string> secondRepairs;
  auto twice = dxf::Document::recover(file, error, secondRepairs);
  ASSERT_TRUE(twice);
  EXPECT_EQ(secondRepairs, o.repairs);
  EXPECT_TRUE(twice->bytes() == readFile(saved)) << "recovery is not repeatable";
}

TEST_P(CorpusDrawing, TakesANewLayerThatTheIndependentReaderSees) {
  const fs::path& file = GetParam();
  Opened o = open(file);
  if (!o.doc) return expectRefusedByBoth(file, o);
  const std::size_t modelSpace = o.doc->modelSpace().size();
  const std::string layer = "VIRA_CORPUS_CHECK";
  std::string error;
  ASSERT_TRUE(o.doc->addLayer(layer, 3, "", error)) << error;

  const fs::path dir = scratchDir(dxfcorpus::testName(file) + "-layer");
  const fs::path saved = dir / file.filename();
  ASSERT_TRUE(o.doc->save(saved, error)) << error;
  auto again = dxf::Document::load(saved, error);
  ASSERT_TRUE(again) << error;
  EXPECT_EQ(again->version(), o.doc->version());
  EXPECT_EQ(again->versionCode(), o.doc->versionCode());
  EXPECT_TRUE(again->findLayer(layer));
  EXPECT_EQ(again->modelSpace().size(), modelSpace);

  std::string report;
  const std::string original = o.repairs.empty() ? file.string() : "-";
  EXPECT_EQ(checkWithEzdxf({original, saved.string(), layer}, report), 0) << report;
}

std::string nameOf(const ::testing::TestParamInfo<fs::path>& info) { return dxfcorpus::testName(info.param); }

INSTANTIATE_TEST_SUITE_P(Corpus, CorpusDrawing, ::testing::ValuesIn(dxfcorpus::drawings()), nameOf);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(CorpusDrawing);

TEST(CorpusFolder, HoldsDrawingsOrIsAbsent) {
  if (dxfcorpus::folder().empty()) GTEST_SKIP() << "no corpus beside the checkout";
  EXPECT_FALSE(dxfcorpus::drawings().empty());
}

}  // namespace
