#pragma once

#include <array>
#include <cstddef>

namespace protocol
{

/// Stages of a conversion in the order in which they come; a conversion may leave some out.
enum class Stage : int {
    Unknown = 0,
    ReadAndProcess,
    Convert,
    ProcessStructure,
    Merge,
    Stitch,
    FixSurfaceOrientation,
    Tessellate,
    BuildOsgTree,
    Finalize,
    Write,
    Finished
};

inline constexpr std::size_t StageCount = static_cast<std::size_t>(Stage::Finished) + 1;

/// The word by which the progress file names the stage; lives as long as the program.
constexpr const char* stageWord(Stage stage)
{
    constexpr std::array<const char*, StageCount> words = {"Unknown",
                                                           "ReadAndProcess",
                                                           "Convert",
                                                           "ProcessStructure",
                                                           "Merge",
                                                           "Stitch",
                                                           "FixSurfaceOrientation",
                                                           "Tessellate",
                                                           "BuildOsgTree",
                                                           "Finalize",
                                                           "Write",
                                                           "Finished"};
    return words[static_cast<std::size_t>(stage)];
}

} // namespace protocol
