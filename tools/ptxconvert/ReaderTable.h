#pragma once

#include "ptx/readers/Reader.h"

#include <string>

namespace ptxconvert
{

/// The formats of this program, in the order in which they are probed.
ptx::readers::Formats formats();

/// Whether the name of `file` tells that its reader is a library of its own.
bool needsModule(const std::string& file);

/// A line for each reader that is a library of its own: the format, and the version of its CAD kernel or why it cannot
/// be used.
std::string readerVersions();

///@{
/// Loads all readers of CAD formats or all readers for hosts that are libraries of their own, so that copies of this
/// process need not. What cannot be loaded now is told by the copy that needs it.
void prepareReaders();
void prepareReadersForHosts();
///@}

} // namespace ptxconvert
