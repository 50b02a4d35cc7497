#include "ptx/core/Stage.h"

#include <array>

namespace ptx::core
{

namespace
{

// Shares of the wall time of mid-sized STEP assemblies whose healing happens beside the meshing, in the order of the
// enumeration.
constexpr std::array<int, protocol::StageCount> Starts = {0, 1, 40, 52, 54, 62, 66, 67, 92, 95, 96, 100};

} // namespace

int stageStart(Stage stage)
{
    return Starts[static_cast<std::size_t>(stage)];
}

int stageEnd(Stage stage)
{
    if (stage == Stage::Finished)
        return 100;
    return Starts[static_cast<std::size_t>(stage) + 1] - 1;
}

} // namespace ptx::core
