#pragma once

#include "files/glb/packing/Affine.h"

namespace files::glb::packing
{

/// A box along the axes.
struct Box {
    Vector least;
    Vector most;

    double longestSide() const;
};

/// The boxes of the meshes of `file` in their own spaces, as the accessors of their positions tell them.
std::vector<Box> boxesOf(const PackedFile& file);

/// The numbers of the nodes that take the place of `node` from afar (`MSFT_lod`), the finest first.
std::vector<std::size_t> levelsOf(const Json& node);

/// What the nodes of a file do with its meshes.
struct MeshPlaces {
    std::vector<double> scales; ///< by mesh: the most that any node enlarges it, 1 for one that no node draws
    double extent = 0;          ///< the longest side of the box of all that is drawn
};

/// Includes the corners of `box`, which `place` brings into the space of `all`.
void include(Box& all, const Affine& place, const Box& box);

/// A box that holds nothing.
Box emptyBox();

/// The box of the vertices of `mesh` of `file`.
Box boxOf(const PackedFile& file, const Json& mesh);

/// `boxes` are those of the meshes of `file` in their own spaces. What is shrunk because it is hidden counts as it is
/// when it is shown, and the lower levels of a node where it stands.
MeshPlaces placesOfMeshes(const PackedFile& file, const std::vector<Box>& boxes);

} // namespace files::glb::packing
