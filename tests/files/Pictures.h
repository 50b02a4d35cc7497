#pragma once

#include "host/OSGSystem/PhysicalSurface.h"

#include <QByteArray>

#include <cmath>

/// What passes for a PNG file where nobody decodes it; other contents are other pictures.
inline QByteArray pngOf(const QByteArray& content)
{
    return QByteArray("\x89PNG\r\n\x1a\n", 8) + content;
}

/// The same for JPEG.
inline QByteArray jpegOf(const QByteArray& content)
{
    return QByteArray("\xff\xd8\xff\xe0", 4) + content;
}

inline QByteArray bytesOf(const osg::EncodedImagePtr& image)
{
    if (!image)
        return "(none)";
    return {reinterpret_cast<const char*>(image->bytes().data()), int(image->bytes().size())};
}

/// Where a texture looks the coordinates of a vertex up, both with v upwards: scaled, then turned counter-clockwise as
/// seen with v downwards, then moved.
inline osg::Vec2f lookedUp(const osg::Texture& texture, const osg::Vec2f& coordinates)
{
    const double u = double(coordinates.x) * texture.scale.x, v = (1.0 - coordinates.y) * texture.scale.y;
    const double cosine = std::cos(double(texture.rotation)), sine = std::sin(double(texture.rotation));
    return {float(cosine * u + sine * v + texture.offset.x), float(1 - (cosine * v - sine * u + texture.offset.y))};
}
