// Building the scene of an assembly against loading its document in the same run, and what a record and a node take.

#include "bench/productstructure/AssemblyDocuments.h"
#include "bench/support/ChildRun.h"
#include "cad/visualization/PLMXMLProductStructure.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "standalone/startup/StandaloneSession.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>

#include <algorithm>
#include <exception>
#include <string>
#include <vector>

#include <malloc.h>

using HB::Visualization::PLMXMLProductStructure;

namespace
{

const AssemblyDocuments& documents()
{
    static const AssemblyDocuments folder;
    return folder;
}

/// What one run measures; which of it comes back is the caller's choice.
struct Run {
    double load = 0;
    double scene = 0;
    double bytesPerPlace = 0; ///< of a record with its share of nodes and cores
};

Run measure(const std::string& file)
{
    const zn::StandaloneSession session;
    PLMXMLProductStructure structure;
    structure.setLoadFiles(false);
    Run run;
    const double start = processorSeconds();
    if (!structure.loadDocument(file))
        throw std::exception();
    run.load = processorSeconds() - start;
    const std::size_t before = mallinfo2().uordblks;
    const double loaded = processorSeconds();
    const osg::RefPtr<osg::NodePtr> root(structure.createScene());
    run.scene = processorSeconds() - loaded;
    if (!root)
        throw std::exception();
    run.bytesPerPlace = static_cast<double>(mallinfo2().uordblks - before) / structure.getNodeCount();
    return run;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

/// One value of a run in a process of its own; a negative number when it failed.
double inChild(const std::string& file, double Run::*value)
{
    const auto child = runInChild([&file, value] { return measure(file).*value; });
    return child.succeeded ? child.seconds : -1;
}

double sceneToLoad(const std::string& file)
{
    const auto child = runInChild([&file] {
        const Run run = measure(file);
        return run.scene / run.load;
    });
    return child.succeeded ? child.seconds : -1;
}

void createScene(benchmark::State& state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    const auto file = documents().assembly(count, state.range(1) != 0).string();
    const auto tenth = documents().assembly(count / 10, state.range(1) != 0).string();
    std::vector<double> ratios, growths;
    for (auto _ : state) {
        const double scene = inChild(file, &Run::scene);
        ratios.push_back(sceneToLoad(file));
        growths.push_back(scene / inChild(tenth, &Run::scene));
        if (scene < 0 || ratios.back() < 0 || growths.back() < 0)
            return state.SkipWithError("a run failed");
        state.SetIterationTime(scene);
    }
    state.counters["scene_to_load"] = median(ratios);
    state.counters["time_to_that_of_a_tenth"] = median(growths);
    state.counters["bytes_a_record"] = inChild(file, &Run::bytesPerPlace);
}

} // namespace

BENCHMARK(createScene)
    ->Args({100'000, 0})
    ->Args({100'000, 1})
    ->Iterations(7)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(createScene)
    ->Args({1'000'000, 0})
    ->Args({1'000'000, 1})
    ->Iterations(3)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
