// A long capture session: the surveyor clicks the next point while the dialog already lists N of them. What
// one click costs: naming and appending the point, the table rebuilding its rows from the observed list, and
// the window drawing the rows it shows at the end of the list. An appended point adds one row, so the cost
// per click hardly grows with N (the complexity fit below is per round of clicks; items/s gives the rate).
#include <benchmark/benchmark.h>

#include "capture/CDlgPickPoints.h"

namespace {

constexpr int kVisibleRows = 25;
// Clicks per timed round; the list goes back to its length between rounds, outside the timing.
constexpr int kClicks = 50;

void BM_CapturePointIntoList(benchmark::State& state) {
  const int length = static_cast<int>(state.range(0));
  CDlgPickPoints* dialog = CDlgPickPoints::GetOrCreate();
  if (dialog == nullptr) {
    state.SkipWithError("the capture dialog cannot be made");
    return;
  }
  for (int i = 0; i < length; ++i) dialog->AddPoint(KoPoint(0, 4500000.0 + i * 0.5, 5600000.0 - i * 0.25, 98.5, 0));
  CCoordListCtrl& list = dialog->List();
  KoPoint picked(0, 4501234.567, 5601234.567, 101.25, 0);
  for (auto _ : state) {
    for (int click = 0; click < kClicks; ++click) {
      dialog->AddPoint(picked);
      // The rows the window repaints: the newest ones at the end of the list.
      const int rows = list.GetItemCount();
      for (int row = std::max(0, rows - kVisibleRows); row < rows; ++row)
        for (int column = 0; column < 4; ++column) benchmark::DoNotOptimize(list.GetItemText(row, column));
    }
    state.PauseTiming();
    // Back to the same length for the next round of clicks.
    for (int click = 0; click < kClicks; ++click) dialog->Points().Delete(dialog->Points().Last());
    state.ResumeTiming();
  }
  state.SetComplexityN(length);
  state.SetItemsProcessed(state.iterations() * kClicks);
  dialog->Close();
}
BENCHMARK(BM_CapturePointIntoList)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(2500)
    ->Arg(5000)
    ->Arg(10000)
    ->Arg(20000)
    ->Complexity()
    ->Unit(benchmark::kMicrosecond);

}  // namespace
