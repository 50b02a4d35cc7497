#pragma once

namespace znimport
{

struct CommandLine;

/// Prints what is installed and where, imports a cube of its own through the converter with the settings of the command
/// line, and says in the end what is missing. Needs an application object.
/// @return the exit code: 0 all is there, 1 something is missing, 2 a setting is wrong
int selfCheck(const CommandLine& commandLine);

} // namespace znimport
