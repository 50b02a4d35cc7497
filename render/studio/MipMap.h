#pragma once

#include "host/OSGSystem/PhysicalSurface.h"

#include <Eigen/Core>

#include <QImage>

#include <vector>

namespace render::studio
{

/// A picture that is read between its pixels, and from farther away: level by level half as large.
class MipMap
{
public:
    /// @param picture not null, in the format QImage::Format_RGBA8888
    /// @param hasColors whether red, green and blue are display colours, which are read as amounts of light
    MipMap(const QImage& picture, bool hasColors);

    int width() const { return m_levels.front().width(); }
    int height() const { return m_levels.front().height(); }

    /// Red, green, blue and alpha, 0 to 1.
    /// @param place in pictures from the upper left corner, v running down
    /// @param footprint how many pixels a point of the picture that is drawn covers, along a side
    Eigen::Vector4f at(const Eigen::Vector2f& place, float footprint, const osg::TextureSampler& sampler) const;

private:
    Eigen::Vector4f inLevel(std::size_t level, const Eigen::Vector2f& place, bool isNearest,
                            const osg::TextureSampler& sampler) const;
    Eigen::Vector4f texel(const QImage& level, int column, int row) const;
    QImage halved(const QImage& level) const;

    std::vector<QImage> m_levels;
    bool m_hasColors;
};

} // namespace render::studio
