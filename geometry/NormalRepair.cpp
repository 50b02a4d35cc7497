#include "geometry/NormalRepair.h"

#include "geometry/VertexCopies.h"
#include "scene/GeometryWalk.h"
#include "scene/SceneEdits.h"

#include <Eigen/Dense>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace geometry
{

namespace
{

/// Of 60 degrees.
constexpr double leastCosine = 0.5;

Eigen::Vector3d vectorOf(const osg::Vec3f& v)
{
    return {double(v.x), double(v.y), double(v.z)};
}

/// A triangle of a mesh with normals, and how its corners are lit.
class LitTriangle
{
public:
    LitTriangle(const osg::Mesh& mesh, const std::uint32_t* corners)
    {
        const Eigen::Vector3d a = vectorOf(mesh.positions[corners[0]]);
        m_plane = (vectorOf(mesh.positions[corners[1]]) - a).cross(vectorOf(mesh.positions[corners[2]]) - a);
        m_hasArea = m_plane.norm() > 0;
        m_plane.normalize();
        for (std::size_t i = 0; i < 3; ++i) {
            m_normals[i] = vectorOf(mesh.normals[corners[i]]).normalized();
            m_cosines[i] = m_normals[i].dot(m_plane);
        }
    }

    bool isOff(std::size_t corner) const { return m_hasArea && m_cosines[corner] < leastCosine; }
    bool isOff() const { return isOff(0) || isOff(1) || isOff(2); }
    bool isInverted() const { return m_hasArea && *std::max_element(m_cosines.begin(), m_cosines.end()) < 0; }

    /// All normals say that its back is its front.
    bool isTheWrongWayRound() const
    {
        return m_hasArea && *std::max_element(m_cosines.begin(), m_cosines.end()) <= -leastCosine &&
               m_normals[0].dot(m_normals[1]) >= leastCosine && m_normals[1].dot(m_normals[2]) >= leastCosine &&
               m_normals[2].dot(m_normals[0]) >= leastCosine;
    }

    osg::Vec3f plane() const { return {float(m_plane.x()), float(m_plane.y()), float(m_plane.z())}; }

private:
    Eigen::Vector3d m_plane;
    std::array<Eigen::Vector3d, 3> m_normals;
    std::array<double, 3> m_cosines{};
    bool m_hasArea = false;
};

/// The triangles of a mesh with normals; none for another one, and none that name a vertex which is not there.
template <class Visit>
void eachLitTriangle(const osg::Mesh& mesh, Visit visit)
{
    const std::size_t vertices = mesh.positions.size();
    if (mesh.normals.size() != vertices)
        return;
    for (std::size_t i = 0; i + 2 < mesh.triangles.size(); i += 3) {
        const std::uint32_t* corners = mesh.triangles.data() + i;
        if (corners[0] < vertices && corners[1] < vertices && corners[2] < vertices)
            visit(i, LitTriangle(mesh, corners));
    }
}

void add(WrongNormals& sum, const WrongNormals& more)
{
    sum.offPlane += more.offPlane;
    sum.inverted += more.inverted;
}

} // namespace

WrongNormals wrongNormals(const osg::Mesh& mesh)
{
    WrongNormals count;
    eachLitTriangle(mesh, [&](std::size_t, const LitTriangle& triangle) {
        count.offPlane += triangle.isOff() ? 1 : 0;
        count.inverted += triangle.isInverted() ? 1 : 0;
    });
    return count;
}

osg::Mesh withRightNormals(const osg::Mesh& mesh)
{
    std::vector<std::uint32_t> triangles(mesh.triangles.begin(), mesh.triangles.end());
    std::vector<std::uint32_t> copies; // of which vertices
    std::vector<osg::Vec3f> normals(mesh.normals.begin(), mesh.normals.end());
    eachLitTriangle(mesh, [&](std::size_t first, const LitTriangle& triangle) {
        if (triangle.isTheWrongWayRound())
            return std::swap(triangles[first + 1], triangles[first + 2]);
        for (std::size_t i = 0; i < 3; ++i)
            if (triangle.isOff(i)) {
                copies.push_back(triangles[first + i]);
                triangles[first + i] = static_cast<std::uint32_t>(normals.size());
                normals.push_back(triangle.plane());
            }
    });
    osg::Mesh result = mesh;
    appendVertexCopies(result, copies);
    result.normals = std::move(normals);
    result.triangles = std::move(triangles);
    result.brep = {};
    return result;
}

WrongNormals wrongNormals(const osg::NodePtr& root)
{
    WrongNormals count;
    for (const osg::GeometryPtr& geometry : osg::geometriesBelow(root))
        add(count, wrongNormals(osg::GeometryAccess::mesh(*geometry)));
    return count;
}

WrongNormals repairNormals(const osg::NodePtr& root)
{
    WrongNormals count;
    for (const osg::GeometryPtr& geometry : osg::geometriesBelow(root)) {
        const osg::Mesh& mesh = osg::GeometryAccess::mesh(*geometry);
        const WrongNormals here = wrongNormals(mesh);
        if (here == WrongNormals())
            continue;
        osg::exchangeMesh(geometry, std::make_shared<const osg::Mesh>(withRightNormals(mesh)));
        add(count, here);
    }
    return count;
}

} // namespace geometry
