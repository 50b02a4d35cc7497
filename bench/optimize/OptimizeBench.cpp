// What each step of the optimisation takes: on a generated tree of 200,000 nodes, with the counter "ratio" to the time
// on one of half as many in the same run, the least of five times each; and on imported files: an assembly below the
// folder that ZN_CORPUS names, or the files named on the command line.

#include "bench/optimize/OptimizationRun.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <limits>
#include <map>

namespace
{

constexpr unsigned fullSize = 200'000;
constexpr int runs = 5;
/// Ratios of shorter times say nothing.
constexpr double leastSeconds = 0.0005;

struct Profile {
    const char* name;
    RunSettings settings;
};

const Profile profiles[] = {
    {"usual", {}},
    {"all",
     {{"optimize.flushTransformations", "on"},
      {"optimize.mergeGeometries", "on"},
      {"optimize.unshareNodes", "on"},
      {"scene.centerInOrigin", "on"},
      {"scene.putOnGround", "on"}}},
};

/// The least seconds of all runs: what else the machine does only adds.
struct Growth {
    double half = std::numeric_limits<double>::infinity();
    double full = half;

    void add(double halfSeconds, double fullSeconds)
    {
        half = std::min(half, halfSeconds);
        full = std::min(full, fullSeconds);
    }
};

double sum(const StepSeconds& steps)
{
    double seconds = 0;
    for (const auto& step : steps)
        seconds += step.second;
    return seconds;
}

/// Measured at the first question.
const std::map<std::string, Growth>& growthOf(const Profile& profile)
{
    static std::map<std::string, std::map<std::string, Growth>> known;
    const auto [found, isNew] = known.try_emplace(profile.name);
    std::map<std::string, Growth>& growth = found->second;
    for (int i = 0; isNew && i < runs; ++i) {
        const StepSeconds half = optimizeGenerated(fullSize / 2, profile.settings);
        const StepSeconds full = optimizeGenerated(fullSize, profile.settings);
        for (std::size_t step = 0; step < full.size(); ++step)
            growth[full[step].first].add(half[step].second, full[step].second);
        growth["whole"].add(sum(half), sum(full));
    }
    return growth;
}

void generated(benchmark::State& state, const Profile& profile, const std::string& step)
{
    const auto& growth = growthOf(profile);
    const auto found = growth.find(step);
    if (found == growth.end())
        return state.SkipWithError("the optimisation failed");
    const auto& [half, full] = found->second;
    for (auto _ : state)
        state.SetIterationTime(full);
    state.counters["half_ms"] = 1000 * half;
    if (full >= leastSeconds)
        state.counters["ratio"] = full / half;
}

void imported(benchmark::State& state, const StepSeconds& steps, const std::string& step, std::size_t nodes)
{
    for (const auto& [name, seconds] : steps)
        if (name == step)
            for (auto _ : state)
                state.SetIterationTime(seconds);
    state.counters["nodes"] = double(nodes);
}

void registerOnce(const std::string& name, const std::function<void(benchmark::State&)>& run)
{
    benchmark::RegisterBenchmark(name.c_str(), run)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(1);
}

void registerGenerated()
{
    for (const Profile& profile : profiles) {
        StepSeconds steps = optimizeGenerated(200, profile.settings);
        steps.emplace_back("whole", 0);
        for (const auto& step : steps)
            registerOnce(std::string(profile.name) + "/" + step.first,
                         [&profile, name = step.first](benchmark::State& state) { generated(state, profile, name); });
    }
}

void registerImported(const QString& file)
{
    std::size_t nodes = 0;
    const StepSeconds steps = optimizeImported(file, nodes);
    if (steps.empty())
        std::fprintf(stderr, "%s was not optimised\n", qPrintable(file));
    for (const auto& step : steps)
        registerOnce(
            QFileInfo(file).fileName().toStdString() + "/" + step.first,
            [steps, nodes, name = step.first](benchmark::State& state) { imported(state, steps, name, nodes); });
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    registerGenerated();
    QStringList files = QCoreApplication::arguments().mid(1);
    files.erase(std::remove_if(files.begin(), files.end(),
                               [](const QString& word) { return word.startsWith(QLatin1String("--")); }),
                files.end());
    if (files.isEmpty() && qEnvironmentVariableIsSet("ZN_CORPUS"))
        files << qEnvironmentVariable("ZN_CORPUS") + QStringLiteral("/step/SCDR.stp");
    for (const QString& file : files)
        registerImported(file);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
