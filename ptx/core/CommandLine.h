#pragma once

#include "ptx/core/Outcome.h"
#include "ptx/core/Settings.h"

#include <string>
#include <vector>

namespace ptx::core
{

/// What the process was asked to do.
struct CommandLine {
    enum class Task { Convert, ConvertSeveral, Help, Version, HelpSettings };

    Task task = Task::Convert;
    bool externalParts = false;
    Settings settings;
    std::vector<std::string> assignments; ///< the --set arguments as given, for the log
    std::string input;                    ///< absolute
    std::string output;                   ///< absolute
    std::vector<std::string> inputs;      ///< of several conversions, absolute
    std::string folder;                   ///< for their outputs, absolute
    unsigned jobs = 0;                    ///< how many of them at a time; 0 for one for each core
};

/// Understands the arguments, the program's name not among them. Relative paths are made absolute, because OCCT
/// looks for part files in the working directory otherwise. "--" ends the options.
Outcome<CommandLine> parseCommandLine(const std::vector<std::string>& arguments);

/// One option of the command line. Usage text and manual follow from the table of these.
struct OptionRow {
    const char* name;      ///< with its dashes
    const char* valueName; ///< null for an option without a value
    const char* help;
};

/// All options, in the order in which they are shown.
const std::vector<OptionRow>& optionTable();

/// What the process does, beyond its options, in whole sentences.
const char* synopsis();
const char* summary();
std::string filesText();
std::string exitCodesText();

/// The text of --help, which stands on the standard error stream after wrong use.
std::string usageText();

} // namespace ptx::core
