#pragma once

#include "render/studio/MipMap.h"

#include <memory>

namespace render::studio
{

/// A texture as a surface has it, ready to be read.
class SurfaceTexture
{
public:
    /// @param texture whose picture `picture` holds
    SurfaceTexture(std::shared_ptr<const MipMap> picture, const osg::Texture& texture);

    /// Which coordinates of the mesh it follows.
    unsigned set() const { return m_set; }
    float strength() const { return m_strength; }

    /// Coordinates of the mesh as they stand on the picture, from its upper left corner, v running down.
    Eigen::Vector2f onPicture(const Eigen::Vector2f& coordinates) const
    {
        return m_turn * Eigen::Vector2f(coordinates.x(), 1 - coordinates.y()) + m_offset;
    }
    /// A change of coordinates as it is on the picture.
    Eigen::Vector2f changeOnPicture(const Eigen::Vector2f& change) const
    {
        return m_turn * Eigen::Vector2f(change.x(), -change.y());
    }

    /// What the picture has there; see `MipMap::at`.
    /// @param size how large a point of what is drawn is, in coordinates of the mesh
    Eigen::Vector4f at(const Eigen::Vector2f& coordinates, float size) const
    {
        return m_picture->at(onPicture(coordinates), size * m_pixelsPerUnit, m_sampler);
    }

private:
    std::shared_ptr<const MipMap> m_picture;
    osg::TextureSampler m_sampler;
    Eigen::Matrix2f m_turn; ///< with the scale
    Eigen::Vector2f m_offset;
    float m_pixelsPerUnit; ///< of the coordinates of the mesh
    unsigned m_set;
    float m_strength;
};

} // namespace render::studio
