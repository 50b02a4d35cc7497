#include "scene/Bounds.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Transform.h"
#include "scene/MatrixMath.h"
#include "scene/Mesh.h"

#include <algorithm>
#include <cmath>
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

void addMesh(Box& box, const Matrix& matrix, const Mesh& mesh)
{
    std::vector<bool> seen(mesh.positions.size(), false);
    for (const Buffer<std::uint32_t>* indices : {&mesh.triangles, &mesh.lines, &mesh.points}) {
        for (const std::uint32_t index : *indices) {
            if (index >= seen.size() || seen[index])
                continue;
            seen[index] = true;
            addPoint(box, matrix, mesh.positions[index]);
        }
    }
}

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
    Box box;
    if (!node)
        return box;
    std::vector<Step> steps{{node, worldMatrix(node)}};
    while (!steps.empty()) {
        const Step step = steps.back();
        steps.pop_back();
        if (const GeometryPtr geometry = fcCast<Geometry>(step.node->getCore()))
            addMesh(box, step.matrix, GeometryAccess::mesh(*geometry));
        for (unsigned i = 0; i < step.node->getNChildren(); ++i) {
            const NodePtr child = step.node->getChild(i);
            steps.push_back({child, below(step.matrix, child)});
        }
    }
    return box;
}

} // namespace osg
