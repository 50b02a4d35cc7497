#include "bench/assembly/AssemblyRun.h"
#include "tests/support/AssemblyBuilder.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace
{

void tell(benchmark::State& state, const AssemblyRun& run)
{
    state.counters["peak_MiB"] = run.peakMebibytes;
    state.counters["start_MiB"] = run.startMebibytes;
    state.counters["descriptors"] = run.descriptors;
    state.counters["watchers"] = run.watchers;
    state.counters["conversions"] = run.conversions;
    state.counters["wait_share"] = run.waitShare;
    state.counters["geometries"] = double(run.geometries);
    state.counters["placed"] = double(run.placedGeometries);
}

/// Parts in files of their own, `range(1)` references, `range(2)` processes. The counter "ratio" is the time against
/// that of one process which takes all parts in.
void importOfManyParts(benchmark::State& state)
{
    const QTemporaryDir folder;
    const AssemblyPlan plan{static_cast<int>(state.range(0)), static_cast<int>(state.range(1))};
    const QString file = QString::fromStdString(plan.write(folder.path().toStdString()));
    for (auto _ : state) {
        const AssemblyRun inlined = runAssembly(file, 1);
        const AssemblyRun run = runAssembly(file, static_cast<int>(state.range(2)));
        if (!run.succeeded || !inlined.succeeded || run.placedGeometries != static_cast<std::size_t>(plan.references))
            return state.SkipWithError("the assembly did not come in whole");
        state.SetIterationTime(run.seconds);
        tell(state, run);
        state.counters["ratio"] = run.seconds / inlined.seconds;
    }
}

BENCHMARK(importOfManyParts)
    ->Args({100, 1000, 2})
    ->Args({1000, 10000, 2})
    ->Args({2000, 10000, 2})
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kSecond);

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
