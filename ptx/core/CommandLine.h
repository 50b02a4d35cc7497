#pragma once

#include "files/references/ReferencePolicy.h"
#include "ptx/core/Outcome.h"
#include "ptx/core/Settings.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ptx::core
{

/// Whether a conversion locks itself in.
enum class Sandbox {
    On,     ///< as far as the kernel can
    Off,    ///< not at all
    Require ///< or it does not begin
};

/// "on", "off", "require".
const char* word(Sandbox sandbox);
/// What that word means; nothing for any other word.
std::optional<Sandbox> sandboxOf(std::string_view word);

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
    /// Which files the input may name; without a folder of its own, that of the input counts.
    files::references::Policy references;
    Sandbox sandbox = Sandbox::On;
    unsigned jobs = 0;      ///< how many of them at a time; 0 for one for each core
    int attempt = 0;        ///< how often the conversion began anew after a crash
    std::int64_t begun = 0; ///< when it first began, in ns of the steady clock; 0 if this is the first
    std::string readers;    ///< folder of code that the program loads; empty for none
    /// What this was understood from, for a program that may run itself anew; empty for any other.
    std::vector<std::string> arguments;

    /// Which files may be named, with a folder for those below in any case.
    files::references::Policy referencePolicy() const;
};

/// Understands the arguments, the program's name not among them. Relative paths are made absolute, because OCCT
/// looks for part files in the working directory otherwise. "--" ends the options.
Outcome<CommandLine> parseCommandLine(const std::vector<std::string>& arguments);

/// The words that ask for `attempt` of the conversion that `arguments` (again without the program's name) ask for and
/// that began at `begun`. They are between the program and itself, and no option of the table.
std::vector<std::string> commandOfAttempt(int attempt, std::int64_t begun, const std::vector<std::string>& arguments);

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
