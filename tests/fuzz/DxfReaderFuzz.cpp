// Feeds arbitrary bytes to the DXF reader. Whatever it accepts must come back byte for byte when written,
// and walking it through the document API must not fault; whatever it refuses must come with a message.
// Recovery gets the same bytes: what it opens must be a drawing that opens without recovery, and a drawing
// that needed no repair must come out as it went in.
#include "host/dxf/Document.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace {

void checkRecovery(const std::string& bytes) {
  std::string error;
  std::vector<std::string> repairs;
  auto doc = dxf::Document::parse(bytes, "fuzz.dxf", error, &repairs);
  if (!doc) {
    if (error.empty()) __builtin_trap();
    return;
  }
  const std::string repaired = doc->bytes();
  if (repairs.empty() && repaired != bytes) __builtin_trap();
  auto again = dxf::Document::parse(repaired, "fuzz-repaired.dxf", error);
  if (!again || again->bytes() != repaired) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string bytes(reinterpret_cast<const char*>(data), size);
  checkRecovery(bytes);
  std::string error;
  auto doc = dxf::Document::parse(bytes, "fuzz.dxf", error);
  if (!doc) {
    if (error.empty()) __builtin_trap();
    return 0;
  }
  if (doc->bytes() != bytes) __builtin_trap();

  for (std::size_t i = 0; i < doc->layerCount(); ++i) {
    const dxf::LayerRecord layer = doc->layer(i);
    (void)doc->findLayer(doc->layerName(layer));
    (void)(layer.frozen() || layer.locked() || layer.off() || layer.color() > 0);
  }
  (void)doc->blocks();
  (void)doc->headerText("$CLAYER");
  for (dxf::Entity* e : doc->modelSpace()) (void)doc->layerOf(*e);
  (void)doc->paperSpace();

  // Changes must write a drawing that reads again.
  std::string addError;
  (void)doc->addLayer("TRELLANOVA_KoVira", 6, "", addError);
  dxf::TagList point;
  point.append(100, "AcDbPoint");
  point.append(10, "2561234.567");
  point.append(20, "5634012.345");
  point.append(30, "0.0");
  doc->appendToModelSpace("POINT", point);
  const auto model = doc->modelSpace();
  if (!model.empty()) doc->erase(*model.front());
  auto again = dxf::Document::parse(doc->bytes(), "fuzz-saved.dxf", error);
  if (!again) __builtin_trap();
  return 0;
}
