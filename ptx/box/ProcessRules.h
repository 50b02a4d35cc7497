#pragma once

namespace ptx::box
{

/// What any process can ask of itself for good: no core file, which would hold what it read, no more descriptors and no
/// larger files than a conversion needs, none of the descriptors that its parent left open beside the standard streams,
/// and of the environment only what language, libraries and allocators go by.
void restrictProcess();

} // namespace ptx::box
