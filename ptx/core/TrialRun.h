#pragma once

#include "ptx/core/Progress.h"

#include <cstddef>
#include <functional>
#include <vector>

namespace ptx::core
{

/// Does `work(0)` to `work(count - 1)` in copies of this process, where nothing of it stays, and touches `progress`
/// on the way. Exceptions count as work done.
/// @return for which numbers the copy crashed, rising. What lies behind the 200th crash, or behind an end of another
/// kind, is not tried.
std::vector<std::size_t> crashesOf(std::size_t count, const std::function<void(std::size_t)>& work, Progress& progress);

} // namespace ptx::core
