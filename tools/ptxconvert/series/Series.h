#pragma once

#include "tools/ptxconvert/series/SeriesPlan.h"

#include <functional>
#include <vector>

namespace ptxconvert
{

/// What a forked process does with its item; it ends with the code.
using SeriesWork = std::function<int(const SeriesItem& item)>;

/// Forks a process for each item, in their order, `most` at a time, and waits for all of them: what becomes of one is
/// nothing to the others. This process has one thread. For each that has ended a line on standard output tells exit
/// code (128 + n after the fatal signal n), seconds and input; what it has said on its standard error comes before
/// that, in one piece. A line in the end counts those that ended with 0.
///
/// SIGTERM, SIGINT and SIGHUP are passed on to those that run, and no other begins.
/// @return 0 when all ended with 0, otherwise the code of the first item that did not; 21 after such a signal
int runSeries(const std::vector<SeriesItem>& items, unsigned most, const SeriesWork& work);

} // namespace ptxconvert
