// Shared by the database tests: a scratch folder per test, drawings made by ezdxf, and ezdxf's own view
// of what the host saved.
#pragma once

#include "host/db/Drawing.h"
#include "sdk/AcDbDatabase.h"
#include "sdk/AcDbHostApplicationServices.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

class DrawingTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  // Runs a Python script with the interpreter that has ezdxf; the script's standard output is returned.
  // The test fails when the script exits with an error.
  std::string python(const std::string& script, const std::string& args = "");

  // Writes a drawing with ezdxf in the given version ("R12", "R2000", "R2018", ...) and opens it:
  // layers Frozen, Off, Locked (each with one line), Survey (colour 3, current layer, a point at survey
  // coordinates), a circle, a light-weight polyline (R12: a 2D polyline) and a text on layer 0, one line in paper space.
  // Throws (ending the test) when the drawing cannot be made or opened.
  void openSample(const std::string& version = "R2000");

  // Saves the working drawing to `name` in the scratch folder and returns its path.
  std::string save(const std::string& name);

  // Runs ezdxf's audit on a saved drawing; the test fails on any audit error.
  void expectAuditClean(const std::string& path);

  AcDbDatabase* db() { return acdbHostApplicationServices()->workingDatabase(); }

  std::filesystem::path dir_;
};
