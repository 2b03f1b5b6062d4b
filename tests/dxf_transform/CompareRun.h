// What the agreement tests share: the status names the comparing script reads, a snapshot of an entity to
// see that a refusing entity stayed untouched, and running the script over a transformed drawing.
#pragma once

#include "host/dxf/Entity.h"
#include "host/dxf/Transform.h"
#include "tests/support/ShellRun.h"

#include <filesystem>
#include <sstream>
#include <string>

namespace dxf::testing {

inline const char* statusName(TransformStatus s) {
  switch (s) {
    case TransformStatus::Ok: return "Ok";
    case TransformStatus::CannotScaleNonUniformly: return "CannotScaleNonUniformly";
    case TransformStatus::NotSupported: return "NotSupported";
    case TransformStatus::InvalidData: return "InvalidData";
    case TransformStatus::NotFinite: return "NotFinite";
  }
  return "?";
}

// The entity's tags and children as text.
inline std::string snapshot(const Entity& e) {
  std::string s = std::string(e.type.view()) + "\n";
  for (const Tag& t : e.tags) s.append(std::to_string(t.code)).append(" ").append(t.text).append("\n");
  for (const Entity& c : e.children) s += snapshot(c);
  return s;
}

// Runs compare_drawing.py on a source, the host's result and the statuses ("TYPE STATUS" per model-space
// entity); answers the script's exit status (0 agreement, 1 differences, 2 ezdxf cannot read the source)
// and what it printed.
inline int compareDrawing(const std::filesystem::path& source, const std::filesystem::path& result,
                          const std::filesystem::path& statuses, const Matrix44& m, std::string& output) {
  std::ostringstream cmd;
  cmd.precision(17);
  cmd << VIRA_PYTHON << " " << VIRA_SOURCE_DIR << "/tests/dxf_transform/compare_drawing.py " << source << " "
      << result << " " << statuses;
  for (const auto& row : m.m)
    for (double v : row) cmd << " " << v;
  return runForOutput(cmd.str() + " 2>&1", output);
}

}  // namespace dxf::testing
