#include "scene/Bounds.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Transform.h"
#include "scene/MatrixMath.h"
#include "scene/Mesh.h"
#include "scene/NodeAccess.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <vector>

namespace osg
{

namespace
{

/// `node`'s own transform behind `above`.
Matrix below(const Matrix& above, const NodePtr& node)
{
    const TransformPtr transform = fcCast<Transform>(node->getCore());
    return transform ? above * transform->getMatrix() : above;
}

void addPoint(Box& box, const Matrix& m, const Vec3f& p)
{
    double placed[3];
    for (int row = 0; row < 3; ++row)
        placed[row] = double(m[row]) * double(p.x) + double(m[row + 4]) * double(p.y) +
                      double(m[row + 8]) * double(p.z) + double(m[row + 12]);
    if (std::isfinite(placed[0]) && std::isfinite(placed[1]) && std::isfinite(placed[2]))
        box.add(placed[0], placed[1], placed[2]);
}

/// The vertices of meshes that something draws, each once.
class UsedVertices
{
public:
    template <class Visit>
    void forEach(const Mesh& mesh, const Visit& visit)
    {
        m_seen.assign(mesh.positions.size(), false);
        for (const Buffer<std::uint32_t>* indices : {&mesh.triangles, &mesh.lines, &mesh.points}) {
            for (const std::uint32_t index : *indices) {
                if (index >= m_seen.size() || m_seen[index])
                    continue;
                m_seen[index] = true;
                visit(mesh.positions[index]);
            }
        }
    }

private:
    std::vector<bool> m_seen; ///< one for all meshes
};

/// Room for the rounding of coordinates that are computed in two ways, as a share of the larger one.
constexpr double rounding = 1e-12;

/// Whether `matrix` keeps all points of `inner` away from the sides of `outer`: a point of a box lies within what its
/// corners span.
bool staysWithin(const Box& inner, const Matrix& matrix, const Box& outer)
{
    for (int axis = 0; axis < 3; ++axis) {
        double low = double(matrix[axis + 12]);
        double high = low;
        double largest = std::abs(low);
        for (int column = 0; column < 3; ++column) {
            const double factor = double(matrix[axis + 4 * column]);
            const double ends[] = {factor * inner.low[column], factor * inner.high[column]};
            low += std::min(ends[0], ends[1]);
            high += std::max(ends[0], ends[1]);
            largest += std::max(std::abs(ends[0]), std::abs(ends[1]));
        }
        if (!(low - rounding * largest >= outer.low[axis] && high + rounding * largest <= outer.high[axis]))
            return false;
    }
    return true;
}

/// The box of many placed meshes. Of a mesh that is placed again, the vertices are looked at only where they may reach
/// beyond what the box holds already.
class PlacedBounds
{
public:
    void add(const Geometry& geometry, const Matrix& matrix)
    {
        const Mesh& mesh = GeometryAccess::mesh(geometry);
        if (!mayBePlacedAgain(geometry))
            return addVertices(mesh, matrix, m_box);
        const auto [own, isNew] = m_own.try_emplace(&mesh);
        if (isNew)
            addVertices(mesh, Matrix(), own->second);
        if (!own->second.isEmpty() && !staysWithin(own->second, matrix, m_box))
            addVertices(mesh, matrix, m_box);
    }
    const Box& box() const { return m_box; }

private:
    static bool mayBePlacedAgain(const Geometry& geometry)
    {
        constexpr long HereAndInGeometry = 2;
        return geometry.getRefCount() > 1 || GeometryAccess::sharedMesh(geometry).use_count() > HereAndInGeometry;
    }

    void addVertices(const Mesh& mesh, const Matrix& matrix, Box& box)
    {
        m_vertices.forEach(mesh, [&](const Vec3f& p) { addPoint(box, matrix, p); });
    }

    UsedVertices m_vertices;
    std::unordered_map<const Mesh*, Box> m_own; ///< without a place
    Box m_box;
};

} // namespace

void Box::add(double x, double y, double z)
{
    const double point[3] = {x, y, z};
    for (int axis = 0; axis < 3; ++axis) {
        low[axis] = std::min(low[axis], point[axis]);
        high[axis] = std::max(high[axis], point[axis]);
    }
}

Matrix worldMatrix(const NodePtr& node)
{
    std::vector<NodePtr> path;
    for (NodePtr step = node; step; step = step->getParent())
        path.push_back(step);
    Matrix matrix;
    for (auto step = path.rbegin(); step != path.rend(); ++step)
        matrix = below(matrix, *step);
    return matrix;
}

Box worldBounds(const NodePtr& node)
{
    struct Step {
        NodePtr node;
        Matrix matrix;
    };
    if (!node)
        return {};
    PlacedBounds bounds;
    std::vector<Step> steps{{node, worldMatrix(node)}};
    while (!steps.empty()) {
        const Step step = steps.back();
        steps.pop_back();
        if (const GeometryPtr geometry = fcCast<Geometry>(step.node->getCore()))
            bounds.add(*geometry, step.matrix);
        for (unsigned i = 0; i < step.node->getNChildren(); ++i) {
            NodeAccess::fetchChildrenAfter(*step.node, i);
            const NodePtr child = step.node->getChild(i);
            steps.push_back({child, below(step.matrix, child)});
        }
    }
    return bounds.box();
}

} // namespace osg
