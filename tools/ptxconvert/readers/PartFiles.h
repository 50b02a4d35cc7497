#pragma once

#include <string>

namespace ptx
{

/// Finds the file that a CAD file means when it names `written` as one of its parts.
///
/// Names are relative to `folder`, where the referring file lies. Separators may be those of another system and the
/// case of letters another one than on the disk. An absolute path that leads nowhere stems from another machine: then
/// the name alone is looked for in `folder`.
/// @return the absolute path of the file; where it would be expected if there is none
std::string partFile(const std::string& folder, const std::string& written);

/// The one path of an existing file that all its paths share, links resolved; `path` itself if there is no such file.
std::string canonicalPath(const std::string& path);

} // namespace ptx
