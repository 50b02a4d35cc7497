#include "geometry/BakedGeometry.h"

#include "geometry/MeshTriangulation.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Node.h"
#include "scene/ContainerRegistry.h"
#include "scene/EigenValues.h"
#include "scene/GeometryWalk.h"
#include "scene/SceneEdits.h"

#include <Eigen/Dense>

#include <bit>

namespace geometry
{

namespace
{

std::vector<osg::Vec3f> placedPositions(const osg::Buffer<osg::Vec3f>& positions, const Eigen::Matrix4d& matrix)
{
    std::vector<osg::Vec3f> placed;
    placed.reserve(positions.size());
    for (const osg::Vec3f& p : positions) {
        const Eigen::Vector4d q = matrix * Eigen::Vector4d(double(p.x), double(p.y), double(p.z), 1);
        placed.push_back({float(q.x()), float(q.y()), float(q.z())});
    }
    return placed;
}

/// The matrix that keeps normals upright. The cofactors are the inverse transpose but for a factor, and exist for flat
/// matrices too; the sign of the determinant keeps the outside outside.
Eigen::Matrix3d normalMatrix(const Eigen::Matrix3d& m)
{
    Eigen::Matrix3d cofactors;
    cofactors.col(0) = m.col(1).cross(m.col(2));
    cofactors.col(1) = m.col(2).cross(m.col(0));
    cofactors.col(2) = m.col(0).cross(m.col(1));
    return m.determinant() < 0 ? Eigen::Matrix3d(-cofactors) : cofactors;
}

std::vector<osg::Vec3f> turnedNormals(const osg::Buffer<osg::Vec3f>& normals, const Eigen::Matrix3d& matrix)
{
    std::vector<osg::Vec3f> turned;
    turned.reserve(normals.size());
    for (const osg::Vec3f& n : normals) {
        const Eigen::Vector3d t = (matrix * Eigen::Vector3d(double(n.x), double(n.y), double(n.z))).normalized();
        turned.push_back({float(t.x()), float(t.y()), float(t.z())});
    }
    return turned;
}

std::vector<std::uint32_t> turnedTriangles(const osg::Buffer<std::uint32_t>& triangles)
{
    std::vector<std::uint32_t> turned(triangles.begin(), triangles.end());
    for (std::size_t i = 0; i + 2 < turned.size(); i += 3)
        std::swap(turned[i + 1], turned[i + 2]);
    return turned;
}

} // namespace

osg::Mesh transformed(const osg::Mesh& mesh, const osg::Matrix& matrix)
{
    const Eigen::Matrix4d m = osg::toEigen(matrix);
    const Eigen::Matrix3d axes = m.topLeftCorner<3, 3>();
    // Strips and fans have no order that turns them round.
    osg::Mesh result = axes.determinant() < 0 ? geometry::triangulated(mesh).mesh : mesh;
    result.positions = placedPositions(mesh.positions, m);
    result.normals = turnedNormals(mesh.normals, normalMatrix(axes));
    if (axes.determinant() < 0)
        result.triangles = turnedTriangles(result.triangles);
    result.brep = {};
    return result;
}

/// Zeros of either sign are equal, so they count alike.
std::uint64_t BakedGeometry::hashOf(const Key& key)
{
    std::uint64_t hash = key.sourceId;
    for (const float value : key.matrix)
        hash = (hash ^ std::bit_cast<std::uint32_t>(value + 0.0f)) * 0x9e3779b97f4a7c15u;
    return hash;
}

BakedGeometry::Entry* BakedGeometry::find(const Key& key, std::uint64_t hash)
{
    const std::uint32_t found = m_index.find(hash, [&](std::uint32_t entry) { return m_entries[entry].key == key; });
    return found == osg::HashIndex::None ? nullptr : &m_entries[found];
}

BakedGeometry::Entry& BakedGeometry::entryOf(const Key& key, std::uint64_t hash)
{
    if (Entry* known = find(key, hash))
        return *known;
    m_index.add(hash, static_cast<std::uint32_t>(m_entries.size()));
    m_entries.push_back({key, 0, {}, {}});
    return m_entries.back();
}

osg::GeometryPtr BakedGeometry::remembered(const osg::GeometryPtr& source, const Key& key, std::uint64_t hash)
{
    const Entry* found = find(key, hash);
    if (!found || found->source.lock() != osg::GeometryAccess::sharedMesh(*source))
        return {};
    const auto result = osg::fcCast<osg::Geometry>(osg::FieldContainerFactory::the()->getContainer(found->resultId));
    return result && osg::GeometryAccess::sharedMesh(*result) == found->result.lock() ? result : osg::GeometryPtr();
}

void BakedGeometry::bake(const osg::NodePtr& node, const osg::Matrix& matrix)
{
    const auto source = osg::fcCast<osg::Geometry>(node->getCore());
    const Key key{source->getContainerId(), matrix.values};
    const std::uint64_t hash = hashOf(key);
    if (const osg::GeometryPtr known = remembered(source, key, hash))
        return osg::exchangeCore(node, known);
    const std::shared_ptr<const osg::Mesh> original = osg::GeometryAccess::sharedMesh(*source);
    if (!original)
        return;
    auto mesh = std::make_shared<const osg::Mesh>(transformed(*original, matrix));
    if (source->getRefCount() == 1)
        return osg::exchangeMesh(source, std::move(mesh));
    const osg::GeometryPtr copy(static_cast<osg::Geometry*>(osg::ContainerAccess::copy(*source).get()));
    Entry& entry = entryOf(key, hash);
    entry.resultId = copy->getContainerId();
    entry.source = original;
    entry.result = mesh;
    osg::exchangeMesh(copy, std::move(mesh));
    osg::exchangeCore(node, copy);
}

} // namespace geometry
