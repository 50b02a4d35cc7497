#include "render/BackdropLight.h"

#include "geometry/rays/LightColor.h"
#include "render/Rays.h"

#include <algorithm>
#include <new>

namespace render
{

namespace
{

/// Its middle, as large as it covers `size`.
QImage covering(const QImage& picture, const QSize& size)
{
    const QSize part = size.scaled(picture.size(), Qt::KeepAspectRatio).expandedTo({1, 1});
    const QPoint corner((picture.width() - part.width()) / 2, (picture.height() - part.height()) / 2);
    const QImage result = picture.copy(QRect(corner, part))
                              .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                              .convertToFormat(QImage::Format_RGB32);
    if (result.isNull())
        throw std::bad_alloc();
    return result;
}

} // namespace

BackdropLight::BackdropLight(const Backdrop& backdrop, const QSize& size)
    : m_backdrop(backdrop), m_height(size.height())
{
    if (!backdrop.picture.isNull() && !backdrop.isTransparent)
        m_picture = covering(backdrop.picture, size);
}

Eigen::Vector3f BackdropLight::gradient(int row) const
{
    const float down = (float(row) + 0.5f) / float(m_height);
    const osg::Color3f& a = m_backdrop.top;
    const osg::Color3f& b = m_backdrop.bottom;
    return toLight(osg::Color3f{a.red + (b.red - a.red) * down, a.green + (b.green - a.green) * down,
                                a.blue + (b.blue - a.blue) * down});
}

Eigen::Vector3f BackdropLight::at(int column, int row) const
{
    if (m_backdrop.isTransparent)
        return Eigen::Vector3f::Zero();
    if (m_picture.isNull())
        return gradient(row);
    const QRgb pixel =
        m_picture.pixel(std::clamp(column, 0, m_picture.width() - 1), std::clamp(row, 0, m_picture.height() - 1));
    return toLight(osg::Color3f{float(qRed(pixel)) / 255, float(qGreen(pixel)) / 255, float(qBlue(pixel)) / 255});
}

Eigen::Vector3f BackdropLight::middle() const
{
    return m_backdrop.isTransparent ? Eigen::Vector3f(1, 1, 1) : at(m_picture.width() / 2, m_height / 2);
}

} // namespace render
