#pragma once

#include "ptx/box/FileRules.h"
#include "ptx/core/CommandLine.h"
#include "ptx/core/Outcome.h"

#include <string>
#include <vector>

/// The box that a conversion locks itself into before it opens its input: a file that takes it over has this process,
/// and little else.
namespace ptx::box
{

/// What a conversion has to do with.
struct Work {
    std::vector<std::string> inputs;      ///< files; the folder of each is readable
    std::vector<std::string> folders;     ///< further ones to read
    std::string output;                   ///< its folder is writable
    std::string readers;                  ///< the folder of further code to load; may be empty
    std::vector<std::string> listed = {}; ///< folders of which nothing but names is read, with all below them
};

/// What is open to such work, with the libraries of the system.
FileAccess accessFor(const Work& work);

/// Locks this process in as far as the kernel can, before it starts a thread.
/// @return a line for the log that tells what holds; a failure where all of it is required and not all holds
core::Outcome<std::string> lock(core::Sandbox wish, const Work& work);

/// What the kernel of this machine can, in words: "files (Landlock 4) and system calls"; what it cannot.
std::string abilities();

} // namespace ptx::box
