#pragma once

#include <string>
#include <vector>

/// What a program's manual page and its completion are made of.
namespace manual
{

struct Option {
    std::vector<std::string> names; ///< with dashes, the short one first
    std::string value;              ///< what stands for the value; empty for an option without one
    std::string help;
};

struct Program {
    std::string name;
    std::string summary; ///< one line
    std::string version;
    std::string synopsis; ///< behind the name
    std::string notes;    ///< what it writes beside its output; may be empty
    std::string exitCodes;
    std::vector<std::string> related;
    std::vector<Option> options;
};

/// The page in the macros of man(7), for section 1.
std::string page(const Program& program);

/// A completion for bash: the options behind a dash, file names elsewhere.
std::string completion(const Program& program);

} // namespace manual
