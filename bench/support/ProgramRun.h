#pragma once

#include <string>
#include <vector>

/// What one run of a program took.
struct ProgramRun {
    bool succeeded = false;
    double seconds = 0;    ///< wall time from start to end
    double cpuSeconds = 0; ///< of all its threads
    double mebibytes = 0;  ///< peak of resident memory
};

/// Runs `arguments`, the program's path first, with standard output into the file `output`.
ProgramRun runProgram(const std::vector<std::string>& arguments, const std::string& output);
