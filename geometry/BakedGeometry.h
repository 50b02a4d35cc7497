#pragma once

#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Math.h"
#include "scene/HashIndex.h"
#include "scene/Mesh.h"

#include <array>
#include <cstdint>
#include <deque>
#include <memory>

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
    struct Key {
        std::uint32_t sourceId = 0;
        std::array<float, 16> matrix;
        friend bool operator==(const Key&, const Key&) = default;
    };
    struct Entry {
        Key key;
        std::uint32_t resultId = 0;
        std::weak_ptr<const osg::Mesh> source;
        std::weak_ptr<const osg::Mesh> result;
    };

    static std::uint64_t hashOf(const Key& key);
    /// What became of `source`, whose id the key has.
    osg::GeometryPtr remembered(const osg::GeometryPtr& source, const Key& key, std::uint64_t hash);
    /// The entry of `key`, a new one when there is none.
    Entry& entryOf(const Key& key, std::uint64_t hash);
    Entry* find(const Key& key, std::uint64_t hash);

    std::deque<Entry> m_entries; ///< they are many, and stay where they are
    osg::HashIndex m_index;
};

} // namespace geometry
