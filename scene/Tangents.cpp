#include "scene/Tangents.h"

#include <Eigen/Core>
#include <Eigen/Geometry>

#include <cmath>

namespace osg
{

namespace
{

using Vector = Eigen::Vector3d;

Vector vectorOf(const Vec3f& v)
{
    return {v.x, v.y, v.z};
}

/// Where u and v grow around a vertex.
struct Directions {
    Vector alongU = Vector::Zero();
    Vector alongV = Vector::Zero();
};

/// The gradients of u and v on a triangle, times its area twice over, the sign of which is that of its picture.
Directions directionsOf(const Mesh& mesh, const Buffer<Vec2f>& texCoords, const std::uint32_t* corners)
{
    const Vector origin = vectorOf(mesh.positions[corners[0]]);
    const Vector first = vectorOf(mesh.positions[corners[1]]) - origin;
    const Vector second = vectorOf(mesh.positions[corners[2]]) - origin;
    const Vec2f& start = texCoords[corners[0]];
    const double u1 = double(texCoords[corners[1]].x) - start.x, v1 = double(texCoords[corners[1]].y) - start.y;
    const double u2 = double(texCoords[corners[2]].x) - start.x, v2 = double(texCoords[corners[2]].y) - start.y;
    const double area = u1 * v2 - u2 * v1;
    Directions result{first * v2 - second * v1, second * u1 - first * u2};
    const double weight = first.cross(second).norm();
    const double length = std::max(result.alongU.norm(), result.alongV.norm());
    if (!(std::abs(area) > 0) || !(length > 0) || !std::isfinite(length) || !std::isfinite(weight))
        return {};
    const double factor = (area < 0 ? -1 : 1) * weight / length;
    result.alongU *= factor;
    result.alongV *= factor;
    return result;
}

Vector anyAcross(const Vector& normal)
{
    return normal.squaredNorm() > 0 ? normal.unitOrthogonal() : Vector::UnitX();
}

Tangent tangentOf(const Vector& normal, const Directions& directions)
{
    const Vector across = directions.alongU - normal * normal.dot(directions.alongU);
    const double length = across.norm();
    const bool isSound = std::isfinite(length) && length > 1e-6 * directions.alongU.norm() && length > 0;
    const Vector direction = isSound ? Vector(across / length) : anyAcross(normal);
    const double side = normal.cross(direction).dot(directions.alongV);
    const Eigen::Vector3f rounded = direction.cast<float>();
    return {{rounded.x(), rounded.y(), rounded.z()}, side < 0 ? -1.0f : 1.0f};
}

/// Of length 1; 0 for what has no direction.
Vector unit(const Vector& v)
{
    const double length = v.norm();
    return length > 0 && std::isfinite(length) ? Vector(v / length) : Vector(Vector::Zero());
}

} // namespace

std::vector<Tangent> tangentsOf(const Mesh& mesh, const Buffer<Vec2f>& texCoords)
{
    std::vector<Tangent> tangents;
    if (mesh.normals.empty() || texCoords.size() != mesh.positions.size())
        return tangents;
    std::vector<Directions> sums(mesh.positions.size());
    for (std::size_t i = 0; i + 3 <= mesh.triangles.size(); i += 3) {
        const std::uint32_t* corners = &mesh.triangles[i];
        const Directions directions = directionsOf(mesh, texCoords, corners);
        for (std::size_t corner = 0; corner < 3; ++corner) {
            sums[corners[corner]].alongU += directions.alongU;
            sums[corners[corner]].alongV += directions.alongV;
        }
    }
    tangents.reserve(sums.size());
    for (std::size_t i = 0; i < sums.size(); ++i)
        tangents.push_back(tangentOf(unit(vectorOf(mesh.normals[i])), sums[i]));
    return tangents;
}

} // namespace osg
