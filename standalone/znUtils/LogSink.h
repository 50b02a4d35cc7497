#pragma once

#include <functional>

namespace zn::utils
{

using LogSink = std::function<void(const char* text)>;

/// Sends what `znLog` reports to `sink` from now on; an empty one brings back the standard error stream.
void setLogSink(LogSink sink);

} // namespace zn::utils
