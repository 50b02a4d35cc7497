#pragma once

#include "bench/support/ProgramRun.h"
#include "bench/support/Ratio.h"

#include <benchmark/benchmark.h>

/// Runs `reference` and `subject`, calls that return a ProgramRun, in turn and tells with the counters "wall", "cpu"
/// and "memory" what the subject takes as a share of the reference: medians over the pairs. A run that fails ends it.
/// @return the median of "cpu", 0 after a failure
template <class Reference, class Subject>
double reportShares(benchmark::State& state, const Reference& reference, const Subject& subject)
{
    std::vector<double> wall, cpu, memory;
    for ([[maybe_unused]] auto pair : state) {
        const ProgramRun base = reference();
        const ProgramRun own = subject();
        if (!base.succeeded || !own.succeeded) {
            state.SkipWithError(base.succeeded ? "the program that is measured failed" : "the reference failed");
            return 0;
        }
        state.SetIterationTime(own.seconds);
        wall.push_back(own.seconds / base.seconds);
        cpu.push_back(own.cpuSeconds / base.cpuSeconds);
        memory.push_back(own.mebibytes / base.mebibytes);
    }
    state.counters["wall"] = median(wall);
    state.counters["cpu"] = median(cpu);
    state.counters["memory"] = median(memory);
    return median(cpu);
}
