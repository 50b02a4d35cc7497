#pragma once

#include "importer/materials/TableChoices.h"

namespace importer::materials
{

/// Puts `materials`, one for each row, on the places of a tree. Where some of the places that share a geometry or a
/// group are to have another material than others, each geometry with a material of its own gets a core of its own,
/// which shares the mesh. A switch material stays: its choices are exchanged by their own names, attributes and
/// colours.
/// @return at how many places each row has put its material; choices of a switch material count as one each
std::vector<std::size_t> putMaterials(const std::vector<DrawnPlace>& places,
                                      const std::vector<osg::MaterialPtr>& materials, TableChoices& choices);

} // namespace importer::materials
