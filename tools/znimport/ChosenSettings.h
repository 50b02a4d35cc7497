#pragma once

#include <QString>

#include <optional>

namespace zn
{
class Settings;
}

namespace znimport
{

struct CommandLine;

/// Sets what the command line chooses: its options that stand for settings, then those of `--set`. Gives a sentence at
/// the first that is wrong, what came before it is set then, and when no files can go where the settings send them.
std::optional<QString> applySettings(const CommandLine& line, zn::Settings& settings);

} // namespace znimport
