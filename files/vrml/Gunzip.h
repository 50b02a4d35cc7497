#pragma once

#include "files/FileBytes.h"

namespace files::vrml
{

/// True when `bytes` begin as a gzip file does.
bool isGzip(std::string_view bytes);

/// What the gzip file `packed`, the content of the file `path`, holds; its members one after the other. What comes out
/// counts as read. Fails through `task`, naming `path`.
FileBytes gunzip(ReadTask& task, const QString& path, std::string_view packed);

} // namespace files::vrml
