#include "host/editor/SystemVariables.h"

#include "host/WideText.h"
#include "host/db/Drawing.h"
#include "host/editor/CommandLine.h"
#include "sdk/AcEd.h"

#include <algorithm>
#include <filesystem>
#include <map>

namespace host::editor {
namespace {

struct NoCaseLess {
  bool operator()(const std::wstring& a, const std::wstring& b) const {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](wchar_t x, wchar_t y) { return foldCase(x) < foldCase(y); });
  }
};

using Table = std::map<std::wstring, SystemVariableReader, NoCaseLess>;

// The variables the host answers itself: the drawing's name and folder, its current layer, and whether
// a command runs.
Table* builtInVariables() {
  auto* table = new Table;
  (*table)[L"CLAYER"] = [](resbuf& rb) {
    std::wstring layer = host::currentLayerName();
    if (layer.empty()) return false;
    setStringValue(rb, layer);
    return true;
  };
  (*table)[L"DWGNAME"] = [](resbuf& rb) {
    std::filesystem::path path = host::drawingPath();
    setStringValue(rb, path.empty() ? L"Drawing1.dxf" : fromUtf8(path.filename().string()));
    return true;
  };
  (*table)[L"DWGPREFIX"] = [](resbuf& rb) {
    std::filesystem::path path = host::drawingPath();
    std::string folder = std::filesystem::absolute(path.empty() ? "." : path).parent_path().string();
    if (folder.empty() || folder.back() != '/') folder += '/';
    setStringValue(rb, fromUtf8(folder));
    return true;
  };
  (*table)[L"CMDACTIVE"] = [](resbuf& rb) {
    setShortValue(rb, activeCommand().empty() ? 0 : 1);
    return true;
  };
  return table;
}

Table& variables() {
  static Table* table = builtInVariables();
  return *table;
}

}  // namespace

void registerSystemVariable(const std::wstring& name, SystemVariableReader reader) {
  variables()[name] = std::move(reader);
}

void setStringValue(resbuf& rb, const std::wstring& value) {
  rb.restype = RTSTR;
  rb.resval.rstring = acutNewString(value.c_str());
}

void setShortValue(resbuf& rb, short value) {
  rb.restype = RTSHORT;
  rb.resval.rint = value;
}

}  // namespace host::editor

int acedGetVar(const ACHAR* name, resbuf* result) {
  if (!name || !result) return RTERROR;
  auto& table = host::editor::variables();
  auto it = table.find(name);
  if (it == table.end() || !it->second) return RTERROR;
  resbuf value;
  if (!it->second(value)) return RTERROR;
  value.rbnext = result->rbnext;
  *result = value;
  return RTNORM;
}
