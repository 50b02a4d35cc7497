#pragma once

namespace ptx::occt
{

/// Version of the CAD kernel.
const char* occtVersion();

} // namespace ptx::occt
