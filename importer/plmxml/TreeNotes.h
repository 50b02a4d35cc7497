#pragma once

#include "host/OSGSystem/Node.h"
#include "importer/plmxml/Structure.h"

namespace importer::plmxml
{

/// Gives the nodes that the loader made of a document what its form has no place for: attributes of instances, parts
/// and materials, names of single places, and what is switched off, where a whole branch is off at its top. Places
/// whose node is not found are left with what is below them, and counted.
///
/// @param root that the loader made of the document that `structure` was written as
/// @return how many places were not found
std::size_t applyNotes(const Structure& structure, const osg::NodePtr& root);

} // namespace importer::plmxml
