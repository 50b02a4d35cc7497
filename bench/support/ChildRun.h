#pragma once

#include <functional>

/// What one run of an action took.
struct ChildRun {
    double seconds = 0;   ///< processor time that the action measured for itself
    double mebibytes = 0; ///< peak of resident memory
    bool succeeded = false;
};

/// Runs an action in a process of its own, so that no run finds the heap that another one left behind. The action gives
/// the seconds that count.
ChildRun runInChild(const std::function<double()>& action);

/// Processor time of this process so far, in seconds.
double processorSeconds();
