// Loading a document against what the parser alone takes for the same file in the same run, and the growth of searches
// for occurrences.

#include "bench/caddocument/SampleDocuments.h"
#include "bench/support/ChildRun.h"
#include "cad/xml/CADDocument.h"
#include "cad/xml/CADOccurrence.h"
#include "cad/xml/CADProductDef.h"

#include <benchmark/benchmark.h>
#include <tinyxml.h>

#include <algorithm>
#include <exception>
#include <optional>
#include <string>
#include <vector>

using HB::XML::CAD::CADDocument;

namespace
{

const SampleFolder& samples()
{
    static const SampleFolder folder;
    return folder;
}

double secondsOfParserAlone(const std::string& file)
{
    const auto start = processorSeconds();
    {
        TiXmlDocument xml(file);
        if (!xml.LoadFile())
            throw std::exception();
    }
    return processorSeconds() - start;
}

double secondsOfLoad(const std::string& file)
{
    CADDocument document;
    const auto start = processorSeconds();
    document.load(file);
    return processorSeconds() - start;
}

double secondsOfLoadAndDestroy(const std::string& file)
{
    const auto start = processorSeconds();
    std::optional<CADDocument> document(std::in_place);
    document->load(file);
    document.reset();
    return processorSeconds() - start;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

void load(benchmark::State& state)
{
    const auto file = samples().instances(static_cast<std::size_t>(state.range(0))).string();
    std::vector<double> timeRatios;
    std::vector<double> wholeTimeRatios;
    std::vector<double> memoryRatios;
    for (auto _ : state) {
        const auto reference = runInChild([&file] { return secondsOfParserAlone(file); });
        const auto load = runInChild([&file] { return secondsOfLoad(file); });
        const auto whole = runInChild([&file] { return secondsOfLoadAndDestroy(file); });
        if (!reference.succeeded || !load.succeeded || !whole.succeeded)
            return state.SkipWithError("a run failed");
        state.SetIterationTime(load.seconds);
        timeRatios.push_back(load.seconds / reference.seconds);
        wholeTimeRatios.push_back(whole.seconds / reference.seconds);
        memoryRatios.push_back(load.mebibytes / reference.mebibytes);
    }
    state.counters["time_to_parser"] = median(timeRatios);
    state.counters["time_with_destroy_to_parser"] = median(wholeTimeRatios);
    state.counters["peak_memory_to_parser"] = median(memoryRatios);
}

/// The seconds of one search for each of `count` occurrences by its path, the first of which builds the index.
double secondsOfSearches(std::size_t count)
{
    CADDocument document;
    document.load(samples().occurrences(count).string());
    const auto& productDef = *document.getProductDef(0);
    std::vector<std::vector<std::string>> paths;
    for (std::size_t i = 0; i < count; ++i)
        paths.push_back(document.findOccurrence("occ" + std::to_string(i))->getInstanceRefs());
    const auto start = processorSeconds();
    for (const auto& path : paths) {
        if (productDef.findOccurrences(path).size() != 1)
            throw std::exception();
    }
    return processorSeconds() - start;
}

void findOccurrences(benchmark::State& state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    std::vector<double> ratios;
    for (auto _ : state) {
        const auto once = runInChild([count] { return secondsOfSearches(count); });
        const auto twice = runInChild([count] { return secondsOfSearches(2 * count); });
        if (!once.succeeded || !twice.succeeded)
            return state.SkipWithError("a run failed");
        state.SetIterationTime(once.seconds);
        ratios.push_back(twice.seconds / once.seconds);
    }
    state.counters["time_of_twice"] = median(ratios);
}

} // namespace

BENCHMARK(load)->Arg(100'000)->Iterations(7)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(load)->Arg(1'000'000)->Iterations(3)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(findOccurrences)->Arg(100'000)->Iterations(9)->UseManualTime()->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
