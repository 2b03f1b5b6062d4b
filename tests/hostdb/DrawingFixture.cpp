#include "DrawingFixture.h"

#include "tests/support/ShellRun.h"

#include <cstdio>
#include <fstream>
#include <stdexcept>

void DrawingTest::SetUp() {
  const ::testing::TestInfo* info = ::testing::UnitTest::GetInstance()->current_test_info();
  dir_ = std::filesystem::path(VIRA_BINARY_DIR) / "hostdb-scratch" / (std::string(info->test_suite_name()) + "." + info->name());
  std::filesystem::remove_all(dir_);
  std::filesystem::create_directories(dir_);
}

void DrawingTest::TearDown() { host::closeDrawing(); }

std::string DrawingTest::python(const std::string& script, const std::string& args) {
  std::filesystem::path file = dir_ / "script.py";
  std::ofstream(file) << script;
  std::string command = std::string(VIRA_PYTHON) + " '" + file.string() + "' " + args + " 2>&1";
  std::string out;
  EXPECT_EQ(runForOutput(command, out), 0) << command << " failed:\n" << out;
  return out;
}

void DrawingTest::openSample(const std::string& version) {
  std::string path = (dir_ / ("sample-" + version + ".dxf")).string();
  python(R"(
import sys, ezdxf
doc = ezdxf.new(sys.argv[2])
doc.layers.add("Frozen").freeze()
doc.layers.add("Off").off()
doc.layers.add("Locked").lock()
doc.layers.add("Survey", color=3)
doc.header["$CLAYER"] = "Survey"
msp = doc.modelspace()
msp.add_point((2561234.567, 5634012.345, 101.5), dxfattribs={"layer": "Survey"})
for name in ("Frozen", "Off", "Locked"):
    msp.add_line((0, 0, 0), (10, 0, 0), dxfattribs={"layer": name})
msp.add_circle((5, 5), 2)
if doc.dxfversion == "AC1009":
    msp.add_polyline2d([(0, 0), (1, 1), (2, 0)])
else:
    msp.add_lwpolyline([(0, 0), (1, 1), (2, 0)])
msp.add_text("Hoehe", dxfattribs={"insert": (1, 2), "height": 0.5})
doc.layouts.active_layout().add_line((0, 0), (1, 1))
doc.saveas(sys.argv[1])
)",
         "'" + path + "' " + version);
  std::string error;
  // Nothing after this makes sense without the drawing: end the test here.
  if (!host::openDrawing(path, error)) throw std::runtime_error("cannot open the sample drawing: " + error);
}

std::string DrawingTest::save(const std::string& name) {
  std::string path = (dir_ / name).string();
  std::string error;
  EXPECT_TRUE(host::saveDrawing(path, error)) << error;
  return path;
}

void DrawingTest::expectAuditClean(const std::string& path) {
  std::string out = python(R"(
import sys, ezdxf
doc = ezdxf.readfile(sys.argv[1])
auditor = doc.audit()
for e in auditor.errors:
    print("audit:", e.message)
)",
                           "'" + path + "'");
  EXPECT_EQ(out.find("audit:"), std::string::npos) << out;
}
