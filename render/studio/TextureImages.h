#pragma once

#include "host/OSGSystem/EncodedImage.h"

#include <QImage>
#include <QStringList>

#include <cstddef>
#include <map>

namespace render::studio
{

/// Decodes images, each once, as long as there is room for them.
class TextureImages
{
public:
    /// @param mostPixels of all images together
    explicit TextureImages(std::size_t mostPixels) : m_room(mostPixels) {}

    /// The picture, in the format QImage::Format_RGBA8888; null for one that is not drawn, which `warnings` tells of.
    const QImage& decoded(const osg::EncodedImagePtr& image);

    /// One for each image that is not drawn.
    const QStringList& warnings() const { return m_warnings; }

private:
    QImage decode(const osg::EncodedImage& image);

    std::size_t m_room;
    std::map<osg::EncodedImagePtr, QImage> m_images;
    QStringList m_warnings;
};

} // namespace render::studio
