#pragma once

#include <QString>

/// What one import of an assembly took.
struct AssemblyRun {
    double seconds = 0;
    double peakMebibytes = 0;  ///< of this process, since its start
    double startMebibytes = 0; ///< resident before the import
    int descriptors = 0;       ///< the most that were open at a time
    int watchers = 0;          ///< notification instances among them
    int conversions = 0;       ///< of part files
    double waitShare = 0;      ///< of the process slots' time, from the end of a conversion until the wait noticed it
    std::size_t geometries = 0;
    std::size_t placedGeometries = 0;
    bool succeeded = false;
};

/// Converts `file` and loads it with its parts in a session of its own, with at most `processes` converters at a time.
/// Needs an application object.
AssemblyRun runAssembly(const QString& file, int processes);
