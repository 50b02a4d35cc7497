#include "render/studio/SurfaceTexture.h"

#include <Eigen/LU>

#include <cmath>

namespace render::studio
{

/// The order is that of KHR_texture_transform: scaled, turned, moved.
SurfaceTexture::SurfaceTexture(std::shared_ptr<const MipMap> picture, const osg::Texture& texture)
    : m_picture(std::move(picture)), m_sampler(texture.sampler), m_offset(texture.offset.x, texture.offset.y),
      m_set(texture.set), m_strength(texture.strength)
{
    const float c = std::cos(texture.rotation), s = std::sin(texture.rotation);
    m_turn << c * texture.scale.x, s * texture.scale.y, -s * texture.scale.x, c * texture.scale.y;
    const Eigen::Vector2f pixels(float(m_picture->width()), float(m_picture->height()));
    m_pixelsPerUnit = std::sqrt(std::abs(m_turn.determinant()) * pixels.x() * pixels.y());
}

} // namespace render::studio
