#include "render/studio/TextureImages.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QImageReader>

#include <new>
#include <string_view>

namespace render::studio
{

namespace
{

/// No encoding that is read here has more pixels for a byte, but for small pictures: deflate makes 1032 bytes of one at
/// most, and a byte has 8 pixels at most. A picture whose header says more is none.
constexpr std::size_t mostPixelsPerByte = 8 * 1032;
constexpr std::size_t smallPicture = 1 << 16;

QString text(const char* source)
{
    return QCoreApplication::translate("Textures", source);
}

/// What the bytes are, by their beginning, as Qt calls it; empty for encodings that are not decoded here.
QByteArray formatOf(const osg::EncodedImage& image)
{
    const std::string mime = osg::imageMimeType(image.bytes());
    for (const std::string_view kind : {"png", "jpeg", "webp", "gif", "bmp"})
        if (mime == "image/" + std::string(kind))
            return QByteArray(kind.data(), int(kind.size()));
    return {};
}

QString kindOf(const osg::EncodedImage& image)
{
    return image.mimeType().empty() ? text("unknown") : QString::fromStdString(image.mimeType());
}

} // namespace

const QImage& TextureImages::decoded(const osg::EncodedImagePtr& image)
{
    const auto [entry, isNew] = m_images.try_emplace(image);
    if (isNew)
        entry->second = decode(*image);
    return entry->second;
}

QImage TextureImages::decode(const osg::EncodedImage& image)
{
    const QString name = image.name().empty() ? text("without a name") : QString::fromStdString(image.name());
    const auto refuse = [&](const QString& cause) {
        m_warnings << text("The texture \"%1\" is not drawn: %2").arg(name, cause);
        return QImage();
    };
    const QByteArray format = formatOf(image);
    const std::size_t bytes = image.bytes().size();
    if (format.isEmpty() || !QImageReader::supportedImageFormats().contains(format) || bytes > 0x7FFFFFFF)
        return refuse(text("pictures of the kind %1 are not decoded").arg(kindOf(image)));
    QByteArray encoded =
        QByteArray::fromRawData(reinterpret_cast<const char*>(image.bytes().data()), static_cast<int>(bytes));
    QBuffer buffer(&encoded);
    QImageReader reader(&buffer, format);
    const QSize size = reader.size();
    if (size.isEmpty())
        return refuse(text("it is damaged"));
    const std::size_t pixels = std::size_t(size.width()) * std::size_t(size.height());
    if (pixels > m_room)
        return refuse(text("with its %1x%2 pixels there would be too many for the textures of a picture")
                          .arg(size.width())
                          .arg(size.height()));
    if (pixels > smallPicture && pixels / mostPixelsPerByte > bytes)
        return refuse(text("it is damaged"));
    QImage picture = reader.read();
    if (picture.isNull())
        return refuse(text("it is damaged (%1)").arg(reader.errorString()));
    picture = std::move(picture).convertToFormat(QImage::Format_RGBA8888);
    if (picture.isNull())
        throw std::bad_alloc();
    m_room -= pixels;
    return picture;
}

} // namespace render::studio
