#pragma once

#include "ptx/core/Outcome.h"
#include "ptx/readers/Reader.h"

#include <string>

namespace ptx::readers
{

/// The one of `formats` that reads `path`, a file of `size` bytes that begins with `head`. The extension decides; a
/// content that belies it is damaged input, an extension without reader is unsupported, and the sentence names the
/// format.
core::Outcome<const Format*> chooseFormat(Formats formats, const std::string& path, std::string_view head,
                                          std::uint64_t size);

} // namespace ptx::readers
