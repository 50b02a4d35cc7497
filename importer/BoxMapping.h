#pragma once

#include "host/OSGSystem/Node.h"
#include "standalone/session/SettingGroups.h"

namespace importer
{

/// Gives triangles at and below `root` without texture coordinates those of a box (`geometry::withBoxCoordinates`):
/// where a material with a texture may be seen on them, or everywhere, as `wish` says. What a switch material may show
/// counts, shown or not, as do hidden nodes. Where a texture asks for the second set, that is the same as the first.
/// Geometries that shared a mesh share the one that is made. Throws std::bad_alloc; what was not reached stays as it
/// is.
void mapBoxes(const osg::NodePtr& root, zn::MeshSettings::Uv wish);

} // namespace importer
