#pragma once

namespace ptx::occt
{

/// Version of OCCT.
const char* occtVersion();

} // namespace ptx::occt
