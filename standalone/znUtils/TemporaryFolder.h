#pragma once

#include <string>

namespace znUtils
{

/// Makes `znFile::getTmpDir()` answer `folder` (UTF-8) from now on; an empty one brings back the system's.
void setTemporaryFolder(std::string folder);

} // namespace znUtils
