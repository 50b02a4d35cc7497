// How long the records of a STEP text take to be found, against a bare scan that only looks at each letter.
//
// "ratio" is the time of the reader over the time of the scan, "MB/s" the speed of the reader. `list` has all of its
// text in one list, `doubled` is the time for twice the text over the time for the text.

#include "bench/support/Ratio.h"
#include "ptx/readers/step/p21/Scan.h"

#include <algorithm>
#include <cstdlib>
#include <string>

using namespace ptx::step;

namespace
{

std::string fileWith(const std::string& data)
{
    return "ISO-10303-21;\nHEADER;ENDSEC;\nDATA;\n" + data + "ENDSEC;\nEND-ISO-10303-21;\n";
}

/// Points, faces and units as exporters write them.
std::string records(std::size_t bytes)
{
    std::string text;
    text.reserve(bytes + 1000);
    for (int number = 1; text.size() < bytes; number += 4) {
        const std::string name = std::to_string(number);
        text += "#" + name + "=CARTESIAN_POINT('',(-12.7000000001,3.5E-3," + name + ".));\n";
        text += "#" + std::to_string(number + 1) + "=EDGE_CURVE('',#" + name + ",#" + name + ",#1,.T.);\n";
        text += "#" + std::to_string(number + 2) + "=ADVANCED_FACE('a face''s name',(#" + name + ",#1),#2,.F.);\n";
        text += "#" + std::to_string(number + 3) + "=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));\n";
    }
    return fileWith(text);
}

std::string list(std::size_t bytes)
{
    std::string text = "#1=COORDINATES_LIST('',3,((0.,0.,0.)";
    while (text.size() < bytes)
        text += ",(1.25,-2.5E-3,17.)";
    return fileWith(text + "));\n");
}

double scanSeconds(const std::string& text, unsigned threads)
{
    std::size_t count = 0;
    const double seconds = secondsOf([&] { count = p21::scan(text, threads).recordCount(); });
    if (count < 2)
        std::abort();
    return seconds;
}

double bareSeconds(const std::string& text)
{
    std::size_t ends = 0;
    const double seconds = secondsOf([&] {
        bool isText = false;
        for (const char c : text) {
            isText ^= c == '\'';
            ends += !isText && (c == ';' || c == ',' || c == ')') ? 1 : 0;
        }
    });
    benchmark::DoNotOptimize(ends);
    return seconds;
}

void readRecords(benchmark::State& state, const std::string& text, unsigned threads)
{
    double best = 1e9;
    reportRatio(
        state, [&] { return bareSeconds(text); },
        [&] {
            const double seconds = scanSeconds(text, threads);
            best = std::min(best, seconds);
            return seconds;
        });
    state.counters["MB"] = static_cast<double>(text.size()) / 1e6;
    state.counters["MB/s"] = static_cast<double>(text.size()) / 1e6 / best;
}

void readDoubled(benchmark::State& state, const std::string& text, const std::string& twice)
{
    reportRatio(
        state, [&] { return scanSeconds(text, 1); }, [&] { return scanSeconds(twice, 1); });
}

constexpr std::size_t Size = 30'000'000;

BENCHMARK_CAPTURE(readRecords, oneThread, records(Size), 1U)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(readRecords, twoThreads, records(Size), 2U)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(readRecords, list, list(Size), 1U)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(readDoubled, records, records(Size / 2), records(Size))
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(readDoubled, list, list(Size / 2), list(Size))->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
