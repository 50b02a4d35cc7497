#pragma once

#include "host/OSGSystem/Node.h"

#include <QString>

#include <cstddef>

namespace importer
{

/// Puts the materials of the PLMXML document at `file` onto the geometry of `root`, the tree that the loader made of
/// it.
///
/// The loader leaves them beside the parts, as leaf groups without effect. Here the content of each part file comes
/// below a group of the material that holds for it, over the file's own materials: that of the nearest instance around
/// it, and before all those of instances that of the nearest occurrence.
/// @return at how many places a material was put
std::size_t applyDocumentMaterials(const QString& file, const osg::NodePtr& root);

} // namespace importer
