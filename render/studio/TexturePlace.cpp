#include "render/studio/TexturePlace.h"

#include <cmath>

namespace render::studio
{

TexturePlace::TexturePlace(const osg::Mesh& mesh, const geometry::rays::Hit& hit, const Eigen::Affine3d& toStage,
                           float pointSize)
    : m_mesh(mesh), m_hit(hit), m_corners(mesh.triangles.data() + std::size_t(3) * hit.primitive),
      m_pointSize(pointSize)
{
    const Eigen::Vector3d first = osg::toEigen(mesh.positions[m_corners[0]]).cast<double>();
    m_edge1 = toStage.linear() * (osg::toEigen(mesh.positions[m_corners[1]]).cast<double>() - first);
    m_edge2 = toStage.linear() * (osg::toEigen(mesh.positions[m_corners[2]]).cast<double>() - first);
}

std::optional<TexturePlace::Coordinates> TexturePlace::coordinates(unsigned set) const
{
    const osg::Buffer<osg::Vec2f>& all = set == 0 ? m_mesh.texCoords : m_mesh.texCoords1;
    if (all.size() != m_mesh.positions.size())
        return std::nullopt;
    const auto corner = [&](int i) { return Eigen::Vector2f(all[m_corners[i]].x, all[m_corners[i]].y); };
    const Eigen::Vector2f first = corner(0), along1 = corner(1) - first, along2 = corner(2) - first;
    const Eigen::Vector2f place = first + along1 * m_hit.u + along2 * m_hit.v;
    if (!place.allFinite())
        return std::nullopt;
    const double area = std::abs(double(along1.x()) * along2.y() - double(along1.y()) * along2.x());
    const double stageArea = m_edge1.cross(m_edge2).norm();
    const double scale = stageArea > 0 ? std::sqrt(area / stageArea) : 0;
    return Coordinates{place, along1, along2, m_pointSize * float(scale)};
}

std::optional<Eigen::Vector4f> TexturePlace::read(const SurfaceTexture& texture) const
{
    const std::optional<Coordinates> here = coordinates(texture.set());
    return here ? std::optional(texture.at(here->place, here->size)) : std::nullopt;
}

std::optional<Eigen::Matrix<float, 3, 2>> TexturePlace::axes(const SurfaceTexture& texture,
                                                             const Eigen::Vector3f& normal) const
{
    const std::optional<Coordinates> here = coordinates(texture.set());
    if (!here)
        return std::nullopt;
    const Eigen::Vector2d a = texture.changeOnPicture(here->along1).cast<double>();
    const Eigen::Vector2d b = texture.changeOnPicture(here->along2).cast<double>();
    const double turn = a.x() * b.y() - b.x() * a.y();
    if (!(std::abs(turn) > 0) || !std::isfinite(turn))
        return std::nullopt;
    const double side = turn > 0 ? 1 : -1; // the lengths do not matter
    const Eigen::Vector3f right = (side * (m_edge1 * b.y() - m_edge2 * a.y())).normalized().cast<float>();
    const Eigen::Vector3f down = (side * (m_edge2 * a.x() - m_edge1 * b.x())).normalized().cast<float>();
    const Eigen::Vector3f x = right - normal * normal.dot(right);
    const float length = x.norm();
    if (!(length > 1e-6f))
        return std::nullopt;
    Eigen::Matrix<float, 3, 2> result;
    result.col(0) = x / length;
    result.col(1) = normal.cross(result.col(0));
    if (result.col(1).dot(down) > 0)
        result.col(1) *= -1;
    return result;
}

} // namespace render::studio
