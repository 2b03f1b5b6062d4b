// Point list growth and table-form output at survey-job sizes.

#include <benchmark/benchmark.h>

#include <sstream>
#include <vector>

#include "points/KoPointList.h"
#include "points/KoPointTable.h"

namespace {

KoPoint* MakePoint(std::uint32_t i)
{
    auto* p = new KoPoint(i, 4500000.0 + i * 0.001, 5400000.0 - i * 0.002, 100.0 + (i % 1000) * 0.01, 7);
    p->dx = 0.001 * (i % 7);
    return p;
}

// Appending one million points to an observed list (one observer, as a list view would be),
// then deleting the list.
void BM_AppendPoints(benchmark::State& state)
{
    const auto count = static_cast<std::uint32_t>(state.range(0));
    struct Counter : KoObserver {
        using KoObserver::KoObserver;
        void Update(const KoEvent&) override { ++events; }
        long events = 0;
    };
    for (auto _ : state) {
        KoPointList list;
        Counter counter(&list.Notifier());
        for (std::uint32_t i = 0; i < count; ++i)
            list.Append(MakePoint(i));
        benchmark::DoNotOptimize(list.Last());
    }  // the figure includes deleting the points again
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(BM_AppendPoints)->Arg(1000000)->Unit(benchmark::kMillisecond);

// Baseline: the same points constructed into a std::vector, then freed.
void BM_AppendPointsVectorBaseline(benchmark::State& state)
{
    const auto count = static_cast<std::uint32_t>(state.range(0));
    for (auto _ : state) {
        std::vector<KoPoint> points;
        for (std::uint32_t i = 0; i < count; ++i) {
            points.emplace_back(i, 4500000.0 + i * 0.001, 5400000.0 - i * 0.002, 100.0 + (i % 1000) * 0.01, 7);
            points.back().dx = 0.001 * (i % 7);
        }
        benchmark::DoNotOptimize(points.data());
    }
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(BM_AppendPointsVectorBaseline)->Arg(1000000)->Unit(benchmark::kMillisecond);

// Writing one hundred thousand points in table form: number, name, code and coordinates.
void BM_WriteTableForm(benchmark::State& state)
{
    const auto count = static_cast<std::uint32_t>(state.range(0));
    KoPointList list;
    for (std::uint32_t i = 0; i < count; ++i) {
        KoPoint* p = list.Append(MakePoint(i));
        p->name = String::Format("P%u", i);
    }
    const std::vector<eKoPointRWMask> mask = {eKoRWNumber, eKoRWName, eKoRWCodeText, eKoRWX,
                                              eKoRWY,      eKoRWZ,    eKoRWDx,       eKoRWDS};
    std::size_t bytes = 0;
    for (auto _ : state) {
        std::ostringstream out;
        KoWritePointHeader(out, mask);
        out << '\n';
        for (const KoPoint& p : list) {
            KoWritePoint(out, p, mask);
            out << '\n';
        }
        bytes = out.str().size();
        benchmark::DoNotOptimize(bytes);
    }
    state.SetItemsProcessed(state.iterations() * count);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
}
BENCHMARK(BM_WriteTableForm)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
