#include "geometry/OcclusionRays.h"

namespace geometry
{

namespace
{

/// How far a lookout lies from its vertex towards the middle of the triangles around it.
constexpr float inward = 0.02f;

/// What the triangles around a vertex amount to.
struct Surroundings {
    Eigen::Vector3f centers = Eigen::Vector3f::Zero();
    Eigen::Vector3f normals = Eigen::Vector3f::Zero(); ///< weighted with the areas
    float triangles = 0;
};

std::vector<Surroundings> surroundingsOf(const osg::Mesh& mesh)
{
    std::vector<Surroundings> all(mesh.positions.size());
    for (std::size_t i = 0; i + 2 < mesh.triangles.size(); i += 3) {
        const std::uint32_t* corner = mesh.triangles.data() + i;
        if (std::any_of(corner, corner + 3,
                        [&](std::uint32_t c) { return c >= all.size() || !rays::isDrawable(mesh.positions[c]); }))
            continue;
        const Eigen::Vector3f a = osg::toEigen(mesh.positions[corner[0]]);
        const Eigen::Vector3f b = osg::toEigen(mesh.positions[corner[1]]);
        const Eigen::Vector3f c = osg::toEigen(mesh.positions[corner[2]]);
        const Eigen::Vector3f normal = (b - a).cross(c - a);
        for (std::size_t k = 0; k < 3; ++k) {
            all[corner[k]].centers += (a + b + c) / 3;
            all[corner[k]].normals += normal;
            all[corner[k]].triangles += 1;
        }
    }
    return all;
}

/// The mesh's own normal where it has a sensible one.
Eigen::Vector3f normalOf(const osg::Mesh& mesh, std::size_t vertex, const Surroundings& around)
{
    Eigen::Vector3f normal = around.normals;
    if (mesh.normals.size() == mesh.positions.size()) {
        const Eigen::Vector3f own = osg::toEigen(mesh.normals[vertex]);
        if (own.allFinite() && own.squaredNorm() > 0)
            normal = own;
    }
    return normal.allFinite() ? Eigen::Vector3f(normal.stableNormalized()) : Eigen::Vector3f::Zero();
}

/// Takes directions of normals to the stage; the cofactors are the inverse transpose but for a factor.
Eigen::Matrix3f normalMatrixOf(const Eigen::Affine3d& placement)
{
    const Eigen::Matrix3d m = placement.linear();
    Eigen::Matrix3d cofactors;
    cofactors << m.col(1).cross(m.col(2)), m.col(2).cross(m.col(0)), m.col(0).cross(m.col(1));
    const double largest = cofactors.cwiseAbs().maxCoeff();
    return (cofactors / (m.determinant() < 0 ? -largest : largest)).cast<float>();
}

} // namespace

std::vector<Lookout> lookoutsOf(const osg::Mesh& mesh)
{
    const std::vector<Surroundings> around = surroundingsOf(mesh);
    std::vector<Lookout> lookouts(around.size(), {Eigen::Vector3f::Zero(), Eigen::Vector3f::Zero()});
    for (std::size_t i = 0; i < around.size(); ++i) {
        if (around[i].triangles == 0)
            continue;
        const Eigen::Vector3f vertex = osg::toEigen(mesh.positions[i]);
        const Eigen::Vector3f middle = around[i].centers / around[i].triangles;
        lookouts[i] = {vertex + inward * (middle - vertex), normalOf(mesh, i, around[i])};
    }
    return lookouts;
}

void addOpenness(const rays::Sky& sky, const std::vector<Lookout>& lookouts, const Eigen::Affine3d& placement,
                 std::vector<float>& sums)
{
    const Eigen::Matrix3f normals = normalMatrixOf(placement);
    const rays::SkyRays rays = {0, 0, sky.raysPerPixel()};
    for (std::size_t i = 0; i < lookouts.size(); ++i) {
        const Eigen::Vector3f normal = (normals * lookouts[i].normal).stableNormalized();
        if (!(normal.squaredNorm() > 0.5f)) {
            sums[i] += 1;
            continue;
        }
        const Eigen::Vector3f position = (placement * lookouts[i].position.cast<double>()).cast<float>();
        sums[i] += sky.openness(position, normal, rays::skyReach, rays);
    }
}

} // namespace geometry
