#pragma once

#include "tools/ptxconvert/core/Outcome.h"
#include "tools/ptxconvert/core/Settings.h"

#include <string>
#include <vector>

namespace ptx
{

/// What the process was asked to do.
struct CommandLine {
    enum class Task { Convert, Help, Version, HelpSettings };

    Task task = Task::Convert;
    bool externalParts = false;
    Settings settings;
    std::vector<std::string> assignments; ///< the --set arguments as given, for the log
    std::string input;                    ///< absolute
    std::string output;                   ///< absolute
};

/// Understands the arguments, the program's name not among them. Relative paths are made absolute, because the CAD
/// kernel looks for part files in the working directory otherwise. "--" ends the options.
Outcome<CommandLine> parseCommandLine(const std::vector<std::string>& arguments);

std::string usageText();

} // namespace ptx
