#pragma once

#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Math.h"
#include "scene/Mesh.h"

#include <array>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <utility>

namespace geometry
{

/// `mesh` with `matrix` applied to its vertices. Normals stay upright on their faces and become unit vectors; a matrix
/// that mirrors turns the triangles round, so that they keep facing outward. What does not depend on the place is
/// shared with `mesh`; exact surfaces do not follow and are left out.
osg::Mesh transformed(const osg::Mesh& mesh, const osg::Matrix& matrix);

/// Geometries whose vertices were moved. It remembers what became of a geometry under a matrix, so that its other uses
/// under the same one share the result, for as long as neither is changed by somebody else.
class BakedGeometry
{
public:
    /// Gives `node`, whose core is a geometry, one with `matrix` in its vertices: the remembered one, or its own
    /// changed in place when no other node has it, else a copy.
    void bake(const osg::NodePtr& node, const osg::Matrix& matrix);

private:
    using Key = std::pair<std::uint32_t, std::array<float, 16>>; ///< id of the core and the matrix
    struct Entry {
        std::uint32_t resultId = 0;
        std::weak_ptr<const osg::Mesh> source;
        std::weak_ptr<const osg::Mesh> result;
    };

    osg::GeometryPtr remembered(const osg::GeometryPtr& source, const osg::Matrix& matrix) const;

    struct KeyHash {
        std::size_t operator()(const Key& key) const;
    };

    std::unordered_map<Key, Entry, KeyHash> m_entries;
};

} // namespace geometry
