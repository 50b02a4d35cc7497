#pragma once

#include "files/glb/gathering/MaterialGroups.h"
#include "files/glb/packing/Affine.h"

#include <map>
#include <string>
#include <vector>

namespace files::glb::gathering
{

/// What a primitive has to have in common with others to become one with them: the group of its material, mode,
/// attributes, and what extensions say. Where a variant set changes the material, it is that material.
std::string mergeKey(const packing::PackedFile& file, const MaterialGroups& groups, const packing::Json& primitive);

/// Parts that are becoming one mesh, with a primitive for each `mergeKey`. Each primitive lists its parts in
/// `extras.parts`: the number of the part, how many triangles, lines or points it has, and an object with the extras
/// that the primitive had in the part, and with the name of its material where the primitive has those of several as
/// colours of its vertices; without either there is none.
class MergedMesh
{
public:
    /// `groups` are those of the materials of the file, and must outlive this object.
    explicit MergedMesh(MaterialGroups& groups) : m_groups(groups) {}

    /// Adds what `mesh` draws at `place` as part number `part`.
    void add(const packing::PackedFile& file, const packing::Json& mesh, const packing::Affine& place,
             std::size_t part);

    /// The mesh, whose arrays are added to `file`.
    packing::Json take(packing::PackedFile& file);

private:
    /// Vertices with the same attributes.
    struct Vertices {
        std::map<std::string, std::vector<float>> attributes; ///< by name
        std::map<std::string, std::string> types;             ///< such as "VEC3"
        std::size_t count = 0;
    };
    /// Vertices that one part brought, and its material.
    struct Run {
        std::size_t first = 0;
        std::size_t count = 0;
        std::size_t material = 0;
    };
    struct Primitive {
        packing::Json members;
        std::string vertices; ///< their key
        std::vector<std::uint32_t> indices;
        packing::Json parts = packing::Json::array();
        std::vector<Run> runs; ///< one for each of the parts

        bool hasSeveralMaterials() const;
    };

    void colorByMaterial(packing::PackedFile& file, Primitive& primitive);
    static void append(const packing::PackedFile& file, const packing::Json& attributes, const packing::Affine& place,
                       Vertices& vertices);

    MaterialGroups& m_groups;
    std::map<std::string, Vertices> m_vertices;
    std::vector<Primitive> m_primitives;
    std::map<std::pair<std::string, std::string>, std::size_t> m_numbers; ///< by the keys of primitive and vertices
};

} // namespace files::glb::gathering
