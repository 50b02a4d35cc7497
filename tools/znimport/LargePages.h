#pragma once

namespace znimport
{

/// From now on the allocator asks for memory in pages of 2 MB where the system has such for everybody. To fork a program
/// with a large scene, which is done for each converter, costs a fraction then, and so do the faults of a growing scene.
/// Does nothing where an administrator has set large pages aside, which are for others, and without the allocator.
void useLargePages();

} // namespace znimport
