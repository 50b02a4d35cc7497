#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <vector>

/// Seconds that one call of `work` takes.
template <class Work>
double secondsOf(const Work& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Seconds of the processor that one call of `work` takes, which other programs on the machine change little.
template <class Work>
double processorSecondsOf(const Work& work)
{
    const std::clock_t start = std::clock();
    work();
    return double(std::clock() - start) / CLOCKS_PER_SEC;
}

inline double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

/// Runs `reference` and `subject` in turn and reports the time of the subject with the counter "ratio": the median of
/// subject / reference over the pairs. Each is a call that returns the seconds of the part of it that counts.
template <class Reference, class Subject>
void reportRatio(benchmark::State& state, const Reference& reference, const Subject& subject)
{
    std::vector<double> ratios;
    for (auto _ : state) {
        const double base = reference();
        const double seconds = subject();
        state.SetIterationTime(seconds);
        ratios.push_back(seconds / base);
    }
    state.counters["ratio"] = median(ratios);
}
