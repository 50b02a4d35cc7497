#pragma once

namespace ptx
{

/// Version of the CAD kernel.
const char* kernelVersion();

} // namespace ptx
