// How long the occurrences of one product take to be placed: "ratio" is the time of the transfer of twice the
// occurrences over that of the occurrences, "places" the time of a place in microseconds.

#include "bench/support/Ratio.h"
#include "ptx/occt/OcctSetup.h"
#include "ptx/readers/step/placements/Placing.h"
#include "tests/roads/ptxconvert/TempFolder.h"
#include "tests/support/StepText.h"

#include <STEPControl_Reader.hxx>

#include <cstdlib>
#include <string>

namespace
{

std::string assembly(int occurrences)
{
    ptxtest::StepText step;
    ptxtest::StepProduct part = step.product("part");
    step.box(part, {}, {1, 2, 3});
    const ptxtest::StepProduct top = step.product("top");
    for (int i = 0; i < occurrences; ++i)
        step.place(top, part, "i", {4.0 * (i % 100), 4.0 * (i / 100), 0});
    return step.text();
}

double transferSeconds(const std::string& path, int occurrences)
{
    STEPControl_Reader reader;
    if (reader.ReadFile(path.c_str()) != IFSelect_RetDone)
        std::abort();
    return secondsOf([&] {
        if (ptx::step::placements::placeOccurrences(reader, {}, [](const TopoDS_Shape&) {}) !=
            static_cast<std::size_t>(occurrences))
            std::abort();
        reader.TransferRoots();
    });
}

void placeDoubled(benchmark::State& state)
{
    ptx::occt::setUpOcct();
    const auto occurrences = static_cast<int>(state.range(0));
    const ptxtest::TempFolder folder;
    const std::string once = folder.write("once.stp", assembly(occurrences));
    const std::string twice = folder.write("twice.stp", assembly(2 * occurrences));
    double seconds = 0;
    reportRatio(
        state, [&] { return transferSeconds(once, occurrences); },
        [&] { return seconds = transferSeconds(twice, 2 * occurrences); });
    state.counters["places"] = seconds * 1e6 / (2 * occurrences);
}

BENCHMARK(placeDoubled)->Arg(5000)->Arg(20000)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
