#pragma once

#include "files/glb/packing/PackedFile.h"

#include <cstddef>
#include <vector>

namespace files::glb::gathering
{

/// Takes meshes from the nodes of a file, and in the end the nodes that have nothing left.
class Trimming
{
public:
    /// `file` must outlive this object.
    explicit Trimming(packing::PackedFile& file) : m_file(file), m_isEmptied(file.nodes.size()) {}

    /// Takes its mesh from `node`. Returns what a table is to say of it: its name, and its extras too when the node
    /// goes, unless it `isKept`.
    packing::Json takeMesh(std::size_t node, bool isKept);
    /// Hangs a new node below `parent`, or into the scene.
    void add(std::size_t parent, packing::Json node);
    /// Takes the nodes out that have lost their mesh or all of their children and have no content and no extras, and
    /// the meshes that no node draws. `order` has each node that was there at first before what hangs below it.
    void finish(const std::vector<std::size_t>& order);

private:
    void dropNodes(const std::vector<bool>& isGone);
    void dropMeshes();

    packing::PackedFile& m_file;
    std::vector<bool> m_isEmptied; ///< has lost its mesh or a child; for the nodes that were there at first
};

} // namespace files::glb::gathering
