#include "CorpusFiles.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

namespace dxfcorpus {

namespace fs = std::filesystem;

fs::path folder() {
  const char* chosen = std::getenv("VIRA_DXF_CORPUS");
  const fs::path dir = (chosen && *chosen) ? fs::path(chosen) : fs::path(VIRA_CORPUS_DIR);
  std::error_code ec;
  return fs::is_directory(dir, ec) ? dir : fs::path();
}

std::vector<fs::path> drawings() {
  std::vector<fs::path> found;
  const fs::path dir = folder();
  if (dir.empty()) return found;
  std::error_code ec;
  for (const fs::directory_entry& entry : fs::directory_iterator(dir, ec)) {
    std::string ext = entry.path().extension().string();
    std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if ((ext == ".dxf" || ext == ".dxfb") && entry.is_regular_file(ec)) found.push_back(entry.path());
  }
  std::sort(found.begin(), found.end());
  return found;
}

std::string testName(const fs::path& drawing) {
  std::string name = drawing.filename().string();
  for (char& c : name)
    if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
  return name;
}

}  // namespace dxfcorpus
