#include "tools/ptxconvert/core/Stage.h"

#include <array>

namespace ptx
{

namespace
{

struct Row {
    const char* word;
    int start;
};

// Shares of the wall time of mid-sized STEP assemblies whose healing happens beside the meshing.
constexpr std::array<Row, 12> Rows = {{{"Unknown", 0},
                                       {"ReadAndProcess", 1},
                                       {"Convert", 40},
                                       {"ProcessStructure", 52},
                                       {"Merge", 54},
                                       {"Stitch", 62},
                                       {"FixSurfaceOrientation", 66},
                                       {"Tessellate", 67},
                                       {"BuildOsgTree", 92},
                                       {"Finalize", 95},
                                       {"Write", 96},
                                       {"Finished", 100}}};

} // namespace

const char* stageWord(Stage stage)
{
    return Rows[static_cast<std::size_t>(stage)].word;
}

int stageStart(Stage stage)
{
    return Rows[static_cast<std::size_t>(stage)].start;
}

int stageEnd(Stage stage)
{
    if (stage == Stage::Finished)
        return 100;
    return Rows[static_cast<std::size_t>(stage) + 1].start - 1;
}

} // namespace ptx
