#include "bench/plmxmlimport/PlmxmlDocument.h"
#include "bench/plmxmlimport/PlmxmlRun.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace
{

void tell(benchmark::State& state, const PlmxmlRun& run)
{
    state.SetIterationTime(run.total);
    state.counters["document_s"] = run.document;
    state.counters["conversion_s"] = run.conversion;
    state.counters["loading_s"] = run.loading;
    state.counters["merging_s"] = run.merging;
    state.counters["waiting_s"] = run.waiting;
    state.counters["converters_s"] = run.converters;
    state.counters["geometries"] = double(run.geometries);
    state.counters["placed"] = double(run.placedGeometries);
}

bool isWhole(const PlmxmlRun& run, const PlmxmlDocument& document)
{
    const auto instances = static_cast<std::size_t>(document.instances);
    return run.succeeded && run.geometries == static_cast<std::size_t>(document.parts) &&
           run.placedGeometries == instances &&
           run.placedTriangles == instances * 12 * static_cast<std::size_t>(document.boxesOfPart);
}

/// Where the time of a large document with small parts goes: `range(0)` instances over `range(1)` part files.
void importOfManyInstances(benchmark::State& state)
{
    const QTemporaryDir folder;
    const PlmxmlDocument document{static_cast<int>(state.range(0)), static_cast<int>(state.range(1)), 1};
    const QString file = QString::fromStdString(document.write(folder.path().toStdString()));
    for (auto _ : state) {
        const PlmxmlRun run = runDocument(file, 2);
        if (!isWhole(run, document))
            return state.SkipWithError("the document did not come in whole");
        tell(state, run);
    }
}

/// What a second process brings where each part takes a while. The counter "speedup" is the time of one process over
/// that of two; "part_s" is what a part takes with one.
void importOfSlowParts(benchmark::State& state)
{
    const QTemporaryDir folder;
    const int parts = static_cast<int>(state.range(0));
    const PlmxmlDocument document{parts, parts, static_cast<int>(state.range(1))};
    const QString file = QString::fromStdString(document.write(folder.path().toStdString()));
    for (auto _ : state) {
        const PlmxmlRun one = runDocument(file, 1);
        const PlmxmlRun two = runDocument(file, 2);
        if (!isWhole(one, document) || !isWhole(two, document))
            return state.SkipWithError("the document did not come in whole");
        tell(state, two);
        state.counters["speedup"] = one.total / two.total;
        state.counters["part_s"] = one.converters / parts;
    }
}

BENCHMARK(importOfManyInstances)->Args({10000, 500})->Iterations(1)->UseManualTime()->Unit(benchmark::kSecond);
BENCHMARK(importOfSlowParts)->Args({8, 400})->Iterations(1)->UseManualTime()->Unit(benchmark::kSecond);

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
