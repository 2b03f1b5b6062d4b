#include "host/db/Drawing.h"

#include "host/WideText.h"
#include "host/db/DbModel.h"

#include <new>

namespace {

std::unique_ptr<AcDbImpDatabase>& working() {
  static auto* drawing = new std::unique_ptr<AcDbImpDatabase>;
  return *drawing;
}

}  // namespace

namespace host {

namespace {

bool open(const std::string& path, std::string& error, std::vector<std::string>* repairs) {
  error.clear();
  try {
    std::unique_ptr<dxf::Document> doc = dxf::Document::load(path, error, repairs);
    if (!doc) {
      if (error.empty()) error = path + ": cannot be read as a drawing";
      return false;
    }
    // The new drawing is complete before the old one goes, so a failure above changes nothing.
    auto drawing = std::make_unique<AcDbImpDatabase>(std::move(doc), path);
    closeDrawing();
    working() = std::move(drawing);
  } catch (const std::bad_alloc&) {
    // What was built so far is gone again; the drawing open before stays.
    error = path + ": not enough memory to open this drawing";
    return false;
  }
  return true;
}

}  // namespace

bool openDrawing(const std::string& path, std::string& error) { return open(path, error, nullptr); }

bool recoverDrawing(const std::string& path, std::vector<std::string>& repairs, std::string& error) {
  return open(path, error, &repairs);
}

bool drawingIsRecoverable(const std::string& path) {
  std::string error;
  std::vector<std::string> repairs;
  try {
    return dxf::Document::recover(path, error, repairs) != nullptr;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

bool saveDrawing(const std::string& path, std::string& error) {
  error.clear();
  AcDbImpDatabase* drawing = working().get();
  if (drawing == nullptr) {
    error = "no drawing is open";
    return false;
  }
  const std::string& target = path.empty() ? drawing->path() : path;
  try {
    if (!drawing->doc().save(target, error)) {
      if (error.empty()) error = target + ": cannot be written";
      return false;
    }
  } catch (const std::bad_alloc&) {
    error = target + ": not enough memory to write the drawing; the file is unchanged";
    return false;
  }
  return true;
}

bool hasDrawing() { return working() != nullptr; }

std::string drawingPath() { return working() ? working()->path() : std::string(); }

void closeDrawing() { working().reset(); }

std::wstring currentLayerName() { return working() ? fromUtf8(working()->currentLayer()) : std::wstring(); }

dxf::Document* workingDocument() { return working() ? &working()->doc() : nullptr; }

}  // namespace host

namespace host::db {

AcDbImpDatabase* workingDrawing() { return working().get(); }

}  // namespace host::db
