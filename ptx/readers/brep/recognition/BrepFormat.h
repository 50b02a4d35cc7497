#pragma once

#include "ptx/readers/Reader.h"

namespace ptx::brep::recognition
{

/// What the program knows of BREP files without their reader: the row of the format, with nothing that reads.
const readers::Format& format();

/// Within how many bytes a file says what it is.
inline constexpr std::size_t MarkWithin = 256;

/// Whether the file that begins with `head` is of the binary kind.
bool isBinary(std::string_view head);

} // namespace ptx::brep::recognition
