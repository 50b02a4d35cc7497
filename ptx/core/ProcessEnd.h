#pragma once

#include "ptx/core/Log.h"
#include "ptx/core/Outcome.h"
#include "ptx/core/Progress.h"
#include "ptx/core/Rescue.h"

#include <string>
#include <vector>

/// How the process ends when it cannot end by itself. Signals make this one state of the process.
namespace ptx::core::processend
{

/// From now on a fatal signal n ends the process with 128 + n, and SIGTERM, SIGINT and SIGHUP end it at once with 21,
/// each with a line in the log that names the stage. Both remove `unfinished`, the file that is being written.
/// `log` and `progress` must live until the process ends.
void install(const Log& log, const Progress& progress, const std::string& unfinished);

/// From now on a crash of this process while `rescue` knows of something at work does not end it: the process runs its
/// own program anew with `command`, whose first word is the program's name; the log alone tells. `rescue` must live
/// until `crashForGood`, and its file goes with every other end.
void beginAnewAfterCrash(const Rescue& rescue, std::vector<std::string> command);

/// From now on a crash ends the process again.
void crashForGood();

/// Whether `signal` tells of a fault in the program that it ends.
bool isCrash(int signal);

/// For a copy of the process: from now on a signal does what it does without all this.
void forget();

/// From now on such an end moves the file `aside` to `place`, if it is there; empty names end that.
void putBack(const std::string& aside, const std::string& place);

/// The output stands under its name: a request to stop comes too late and is ignored.
void outputStands();

/// Ends the process from any thread: the reason goes into the log and to standard error, the unfinished file goes.
[[noreturn]] void end(Log& log, const Failure& failure);

} // namespace ptx::core::processend
