#pragma once

#include "host/OSGSystem/Node.h"

class znVariantSet;

namespace optimization
{

/// Turns the bookmarks that a converted model tells by tags (see BookmarkTags.h) into variants of the scene, and takes
/// the bookmark nodes out of the tree at `root`. The tree must hang in the scene and its materials be in the pool.
///
/// Each child of `root` with the tag of a bookmark node gives a variant set of its name, in the group that its last
/// group tag names, with its material switches and its cameras as viewpoints. A set that is there already takes them up
/// and keeps its group. Then the visibilities are taken over; they are looked for in the whole tree.
///
/// A visibility tag without a value throws `std::out_of_range`, and what was done until then stays.
/// @param reserved is not looked at
void convertStylarBookmarks(osg::NodePtr& root, bool reserved);

/// Puts the material switches of `bookmarkNode` into `set`. One of an unknown material is ignored. Nothing happens when
/// `set` is null.
void initMaterialVariants(osg::NodePtr& bookmarkNode, znVariantSet* set);

/// Makes a node variant from each visibility of the marked nodes at and below `root`, in the set that it names, and
/// takes these tags and the marks away. A visibility in an unknown set is dropped.
void initVisibility(osg::NodePtr& root);

} // namespace optimization
