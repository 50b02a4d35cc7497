#pragma once

#include <string>

namespace zn::utils
{

/// Makes `znFile::getTmpDir()` answer `folder` (UTF-8) from now on; an empty one brings back the system's.
void setTemporaryFolder(std::string folder);

} // namespace zn::utils
