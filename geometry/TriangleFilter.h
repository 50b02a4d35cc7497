#pragma once

#include "scene/Mesh.h"

#include <algorithm>

namespace geometry
{

/// Triangles that were kept, and the faces that they lie in.
struct FilteredTriangles {
    std::vector<std::uint32_t> triangles;
    std::vector<osg::FaceRange> faces; ///< as many as before; a face may have become empty
};

/// The ranges of `faces` cover all of `triangles` in order.
inline bool coversAll(const osg::Buffer<osg::FaceRange>& faces, std::size_t triangles)
{
    std::uint64_t next = 0;
    const bool inOrder = std::all_of(faces.begin(), faces.end(), [&](const osg::FaceRange& face) {
        const bool follows = face.first == next;
        next += face.count;
        return follows;
    });
    return inOrder && next == triangles;
}

/// The whole triangles of `mesh` for which `keep` is true. Faces that do not cover the triangles in order are dropped.
template <class Keep>
FilteredTriangles filteredTriangles(const osg::Mesh& mesh, Keep keep)
{
    FilteredTriangles result;
    const std::size_t count = mesh.triangles.size() / 3;
    if (coversAll(mesh.faces, count))
        result.faces.resize(mesh.faces.size());
    std::size_t face = 0;
    for (std::size_t i = 0; i < count; ++i) {
        while (face < result.faces.size() && i >= std::size_t(mesh.faces[face].first) + mesh.faces[face].count)
            ++face;
        const std::uint32_t* corners = mesh.triangles.data() + 3 * i;
        if (!keep(corners))
            continue;
        result.triangles.insert(result.triangles.end(), corners, corners + 3);
        if (face < result.faces.size())
            ++result.faces[face].count;
    }
    for (std::size_t i = 1; i < result.faces.size(); ++i)
        result.faces[i].first = result.faces[i - 1].first + result.faces[i - 1].count;
    return result;
}

} // namespace geometry
