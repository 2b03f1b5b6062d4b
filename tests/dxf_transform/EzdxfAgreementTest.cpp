// Every entity type, in R12, R2004 and R2018 drawings written by ezdxf, transformed by the host and compared
// with ezdxf's own transformation of the same entity by the same matrix (or, where ezdxf cannot, with
// values derived in the comparing script).
#include "host/dxf/Document.h"
#include "host/dxf/TransformDrawing.h"
#include "tests/dxf_transform/CompareRun.h"
#include "tests/dxf_transform/Matrices.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <unistd.h>

namespace dxf {
namespace {

using testing::operator*;
using testing::rotation;
using testing::scaling;
using testing::shift;
namespace fs = std::filesystem;

using testing::snapshot;
using testing::statusName;

std::string script(const char* name) { return std::string(VIRA_SOURCE_DIR) + "/tests/dxf_transform/" + name; }

// Runs a command, returns its exit status and collects what it printed.
int run(const std::string& command, std::string& output) {
  output.clear();
  FILE* pipe = popen((command + " 2>&1").c_str(), "r");
  if (pipe == nullptr) return -1;
  std::array<char, 4096> buf{};
  while (std::fgets(buf.data(), buf.size(), pipe) != nullptr) output += buf.data();
  return pclose(pipe);
}

class EzdxfAgreement : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    // One directory per test process: CTest runs the tests of this suite side by side, and each one
    // writes its own drawings.
    dir_ = fs::path(VIRA_BINARY_DIR) / "tests" / "dxf_transform" / ("work-" + std::to_string(::getpid()));
    fs::create_directories(dir_);
    std::string out;
    generated_ = run(std::string(VIRA_PYTHON) + " " + script("make_entities.py") + " " + dir_.string(), out) == 0;
    generationLog_ = out;
  }

  static void TearDownTestSuite() {
    std::error_code ignored;
    fs::remove_all(dir_, ignored);
  }

  void SetUp() override { ASSERT_TRUE(generated_) << generationLog_; }

  struct Outcome {
    std::map<std::string, std::set<TransformStatus>> byType;
    std::string failures;  // entities that refused but changed anyway
  };

  // Transforms every model-space entity of one source drawing, saves the result and lets ezdxf judge it.
  Outcome transformAndCompare(const char* source, const Matrix44& m, const std::string& tag) {
    Outcome outcome;
    std::string error;
    const fs::path src = dir_ / source;
    auto doc = Document::load(src, error);
    if (!doc) {
      ADD_FAILURE() << error;
      return outcome;
    }
    std::ostringstream statuses;
    for (Entity* e : doc->modelSpace()) {
      const std::string before = snapshot(*e);
      const TransformStatus s = transformInDrawing(*doc, *e, m);
      outcome.byType[std::string(e->type.view())].insert(s);
      statuses << e->type << " " << statusName(s) << "\n";
      if (s != TransformStatus::Ok && (snapshot(*e) != before || e->modified()))
        outcome.failures += std::string(e->type.view()) + " changed although it answered " + statusName(s) + "\n";
    }
    const fs::path result = dir_ / (tag + "-" + source);
    const fs::path statusFile = dir_ / (tag + "-" + std::string(source) + ".status");
    std::ofstream(statusFile) << statuses.str();
    if (!doc->save(result, error)) {
      ADD_FAILURE() << error;
      return outcome;
    }
    std::string out;
    EXPECT_EQ(testing::compareDrawing(src, result, statusFile, m, out), 0) << source << " / " << tag << ":\n" << out;
    return outcome;
  }

  void expectAgreement(const Matrix44& m, const std::string& tag) {
    for (const char* source : {"r12.dxf", "r2004.dxf", "r2018.dxf"}) {
      const Outcome o = transformAndCompare(source, m, tag);
      EXPECT_EQ(o.failures, "");
      // A similarity is taken by every type.
      for (const auto& [type, statuses] : o.byType)
        EXPECT_EQ(statuses, std::set<TransformStatus>{TransformStatus::Ok}) << source << " " << type;
    }
  }

  static inline fs::path dir_;
  static inline bool generated_ = false;
  static inline std::string generationLog_;
};

const Matrix44 kSurveyFrom = shift(-2561234.567, -5634012.345, -312.25);

TEST_F(EzdxfAgreement, PlanRotationWithSurveyShiftAndScale) {
  // Turn about a survey point, scale slightly, move it onto the target point: the two-point solution.
  const Matrix44 m = shift(2561500.125, 5633900.75, 315.5) * rotation(0, 0, 1, 33.3) *
                     scaling(1.0004, 1.0004, 1.0004) * kSurveyFrom;
  expectAgreement(m, "plan");
}

TEST_F(EzdxfAgreement, SpatialRotationAboutSkewAxis) {
  const Matrix44 m = shift(1000.0, -2000.0, 50.0) * rotation(1, 2, 3, 47.0) * scaling(0.8, 0.8, 0.8) * kSurveyFrom;
  expectAgreement(m, "spatial");
}

TEST_F(EzdxfAgreement, RotationsNearHalfTurn) {
  // Near 180 degrees the arc orientation checks and the arbitrary axis algorithm meet their edge cases.
  expectAgreement(shift(2561234.567, 5634012.345, 0.0) * rotation(0, 0, 1, 179.9999999) * kSurveyFrom, "half-plan");
  expectAgreement(rotation(0.2, -0.3, 0.93, 179.99999) * kSurveyFrom, "half-skew");
}

TEST_F(EzdxfAgreement, MirrorFlipsPlanarEntitiesOver) {
  expectAgreement(shift(100.0, 0.0, 0.0) * scaling(-1.0, 1.0, 1.0) * kSurveyFrom, "mirror");
}

TEST_F(EzdxfAgreement, NonUniformMatrixSplitsTypesAndLeavesRefusersUntouched) {
  // A stretch along y, and the spatial solution whose diagonal was forced to 1 (no scale wanted): neither
  // keeps angles.
  Matrix44 forced = rotation(1, 2, 3, 20.0);
  for (int i = 0; i < 3; ++i) forced.m[i][i] = 1.0;
  const std::set<std::string> refuse = {"CIRCLE",    "ARC",         "ELLIPSE",       "TEXT",  "MTEXT",
                                        "INSERT",    "DIMENSION",   "LEADER",        "IMAGE", "WIPEOUT",
                                        "MLINE",     "MULTILEADER", "ARC_DIMENSION", "SHAPE", "TOLERANCE",
                                        "HELIX",     "3DSOLID",     "PDFUNDERLAY"};
  const std::set<std::string> take = {"POINT", "LINE", "3DFACE", "SOLID", "TRACE", "SPLINE",
                                      "RAY",   "XLINE", "MESH",  "LIGHT"};
  for (const auto& [m, tag] : {std::pair{scaling(1.0, 2.0, 1.0) * kSurveyFrom, "stretch"},
                               std::pair{forced * kSurveyFrom, "forced"}}) {
    for (const char* source : {"r12.dxf", "r2004.dxf", "r2018.dxf"}) {
      const Outcome o = transformAndCompare(source, m, tag);
      EXPECT_EQ(o.failures, "") << tag;
      for (const auto& [type, statuses] : o.byType) {
        if (refuse.count(type)) {
          EXPECT_EQ(statuses, std::set<TransformStatus>{TransformStatus::CannotScaleNonUniformly}) << type;
        } else if (take.count(type)) {
          EXPECT_EQ(statuses, std::set<TransformStatus>{TransformStatus::Ok}) << type;
        }
      }
      // Polylines and hatches decide by their content: arcs refuse, straight segments take the matrix.
      for (const char* mixed : {"POLYLINE", "LWPOLYLINE", "HATCH"}) {
        if (!o.byType.count(mixed)) continue;
        EXPECT_EQ(o.byType.at(mixed), (std::set<TransformStatus>{TransformStatus::Ok,
                                                                TransformStatus::CannotScaleNonUniformly}))
            << mixed;
      }
    }
  }
}

}  // namespace
}  // namespace dxf
