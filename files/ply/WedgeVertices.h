#pragma once

#include "files/ReadTask.h"
#include "scene/MeshArrays.h"

#include <unordered_map>
#include <utility>
#include <vector>

namespace files::ply
{

/// Gives the vertices of a mesh the texture coordinates that corners of faces carry: a vertex whose corners carry
/// different ones is there once for each.
class WedgeVertices
{
public:
    /// `arrays` have all vertices, and outlive this object; they get texture coordinates if they have none.
    WedgeVertices(osg::MeshArrays& arrays, ReadTask& task);

    /// The vertex at the place of `vertex`, one of the first, for a corner with these coordinates. New ones count
    /// against the limits of the task.
    std::uint32_t vertexFor(std::uint32_t vertex, const osg::Vec2f& coordinates, const QString& place);

private:
    using Key = std::pair<std::uint32_t, std::pair<std::uint32_t, std::uint32_t>>; ///< with the bits of the coordinates
    struct Hash {
        std::size_t operator()(const Key& key) const;
    };

    osg::MeshArrays& m_arrays;
    ReadTask& m_task;
    std::vector<bool> m_isGiven; ///< of the first vertices, those that have the coordinates of a corner
    std::unordered_map<Key, std::uint32_t, Hash> m_more;
};

} // namespace files::ply
