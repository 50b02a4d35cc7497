#pragma once

namespace ptx
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

/// The word of the progress file; lives as long as the program.
const char* stageWord(Stage stage);

/// The whole-conversion percent at which `stage` starts. It rises from stage to stage; `Finished` is 100.
int stageStart(Stage stage);

/// The percent that the work of `stage` may rise to.
int stageEnd(Stage stage);

} // namespace ptx
