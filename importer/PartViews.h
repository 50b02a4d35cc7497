#pragma once

#include "host/OSGSystem/Node.h"

#include <cstddef>

namespace importer
{

/// Takes the bookmarks out that came into the tree at `root` with part files: a view that was saved in the file of a
/// part belongs to the part alone, and what it shows and hides there goes with it. Only those directly
/// below `root` are views of the whole; other bookmarks that no reference holds stay as they are.
/// @return how many there were
std::size_t dropPartViews(const osg::NodePtr& root);

} // namespace importer
