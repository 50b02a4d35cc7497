// What each step of the optimisation takes: on generated trees of 200,000 and of 400,000 nodes, with the counter
// "ratio" to the time on one of half as many, the median of seven rounds that take the sizes in turn; and on imported
// files: an assembly below the folder that ZN_CORPUS names, or the files named on the command line.

#include "bench/optimize/OptimizationRun.h"
#include "bench/support/Ratio.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <iterator>
#include <map>

namespace
{

constexpr std::array<unsigned, 3> sizes = {100'000, 200'000, 400'000};
constexpr int rounds = 7;
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

/// The seconds of the rounds, for each of the sizes.
using Growth = std::array<std::vector<double>, sizes.size()>;

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
    for (int i = 0; isNew && i < rounds; ++i) {
        for (std::size_t size = 0; size < sizes.size(); ++size) {
            const StepSeconds steps = optimizeGenerated(sizes[size], profile.settings);
            for (const auto& [step, seconds] : steps)
                growth[step][size].push_back(seconds);
            growth["whole"][size].push_back(sum(steps));
        }
    }
    return growth;
}

/// Against half the size, in the same rounds.
double ratioOf(const Growth& growth, std::size_t size)
{
    std::vector<double> ratios;
    std::transform(growth[size].begin(), growth[size].end(), growth[size - 1].begin(), std::back_inserter(ratios),
                   std::divides<>());
    return median(std::move(ratios));
}

void generated(benchmark::State& state, const Profile& profile, std::size_t size, const std::string& step)
{
    const auto& growth = growthOf(profile);
    const auto found = growth.find(step);
    if (found == growth.end() || found->second[size].size() != rounds || found->second[size - 1].size() != rounds)
        return state.SkipWithError("the optimisation failed");
    const double seconds = median(found->second[size]);
    for (auto _ : state)
        state.SetIterationTime(seconds);
    if (seconds >= leastSeconds)
        state.counters["ratio"] = ratioOf(found->second, size);
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
        for (std::size_t size = 1; size < sizes.size(); ++size)
            for (const auto& step : steps)
                registerOnce(std::string(profile.name) + "/" + std::to_string(sizes[size]) + "/" + step.first,
                             [&profile, size, name = step.first](benchmark::State& state) {
                                 generated(state, profile, size, name);
                             });
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
