#pragma once

namespace ptx
{

/// Version of the CAD kernel.
const char* occtVersion();

} // namespace ptx
