#include "app/ViraResources.h"

namespace {

// PNG files of app/toolbar/, embedded at build time.
constexpr unsigned char kCoordDefImage[] = {
#include "ViraCoordDef.png.inc"
};
constexpr unsigned char kPtPickImage[] = {
#include "ViraPtPick.png.inc"
};

std::string bytesOf(const unsigned char* data, std::size_t size) {
  return std::string(reinterpret_cast<const char*>(data), size);
}

}  // namespace

std::vector<std::string> ViraToolbarImages() {
  return {bytesOf(kCoordDefImage, sizeof kCoordDefImage), bytesOf(kPtPickImage, sizeof kPtPickImage)};
}
