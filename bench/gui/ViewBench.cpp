// The drawing view on the 200,000-entity survey drawing (bench/dxf/make_survey.py): building the scene from the
// store after opening, drawing the whole drawing (zoom extents) and a zoomed part into a 1600 x 1000 view, and
// the snap query under the cursor. The window's own figures (first picture after start, a moved picture while
// panning) come from window_bench.sh, which runs cadhost --trace under Xvfb.
#include "host/dxf/Document.h"
#include "host/gui/scene/Raster.h"
#include "host/gui/scene/SceneBuilder.h"
#include "host/gui/scene/SnapIndex.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <random>

namespace {

namespace fs = std::filesystem;

constexpr int kEntities = 200000;

const dxf::Document& survey() {
  static const std::unique_ptr<dxf::Document> document = [] {
    const fs::path work = fs::path(VIRA_BINARY_DIR) / "bench" / "gui";
    fs::create_directories(work);
    const fs::path file = work / ("survey-" + std::to_string(kEntities) + ".dxf");
    if (!fs::exists(file)) {
      const std::string command = std::string(VIRA_PYTHON) + " " + VIRA_SOURCE_DIR + "/bench/dxf/make_survey.py '" +
                                  file.string() + "' " + std::to_string(kEntities);
      if (std::system(command.c_str()) != 0) {
        std::cerr << "cannot write the survey drawing\n";
        std::exit(1);
      }
    }
    std::string error;
    auto doc = dxf::Document::load(file, error);
    if (!doc) {
      std::cerr << error << "\n";
      std::exit(1);
    }
    return doc;
  }();
  return *document;
}

const host::gui::Scene& scene() {
  static const host::gui::Scene built = host::gui::buildScene(survey());
  return built;
}

void BM_BuildScene(benchmark::State& state) {
  const dxf::Document& doc = survey();
  for (auto _ : state) benchmark::DoNotOptimize(host::gui::buildScene(doc));
  state.counters["entities"] = static_cast<double>(scene().entities);
}
BENCHMARK(BM_BuildScene)->Unit(benchmark::kMillisecond);

void redraw(benchmark::State& state, double zoom) {
  host::gui::ViewTransform view;
  view.setSize(1600, 1000);
  view.zoomTo(scene().extents);
  view.zoomAbout({800, 500}, zoom);
  for (auto _ : state) {
    host::gui::Raster raster(1600, 1000, 0x212830);
    benchmark::DoNotOptimize(host::gui::drawScene(scene(), view, raster));
  }
}

void BM_RedrawExtents(benchmark::State& state) { redraw(state, 1.0); }
BENCHMARK(BM_RedrawExtents)->Unit(benchmark::kMillisecond);

// Zoomed in 16 times: about 800 entities in view, texts large enough to read (drawn by the window's font, not
// counted here).
void BM_RedrawZoomed(benchmark::State& state) { redraw(state, 16.0); }
BENCHMARK(BM_RedrawZoomed)->Unit(benchmark::kMillisecond);

void BM_BuildSnapIndex(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(host::gui::SnapIndex(scene().snaps));
  state.counters["points"] = static_cast<double>(scene().snaps.size());
}
BENCHMARK(BM_BuildSnapIndex)->Unit(benchmark::kMillisecond);

// A query as the cursor moves at zoom extents: 10 pixels of a 1600-pixel view over 5 km are about 31 m.
void BM_SnapQuery(benchmark::State& state) {
  static const host::gui::SnapIndex index(scene().snaps);
  const host::gui::Box& e = scene().extents;
  std::mt19937 random(3);
  std::uniform_real_distribution<double> x(e.minX, e.maxX), y(e.minY, e.maxY);
  const double radius = 10.0 * (e.maxX - e.minX) / 1600.0;
  for (auto _ : state) benchmark::DoNotOptimize(index.nearest({x(random), y(random)}, radius));
}
BENCHMARK(BM_SnapQuery)->Unit(benchmark::kMicrosecond);

}  // namespace
