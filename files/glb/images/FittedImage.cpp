#include "files/glb/images/FittedImage.h"

#include "files/Text.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>

#include <algorithm>
#include <limits>

namespace files::glb::images
{

namespace
{

constexpr int jpegQuality = 90;

bool isOneOf(const std::string& mimeType, std::initializer_list<const char*> list)
{
    return std::find(list.begin(), list.end(), mimeType) != list.end();
}

files::Error cannot(const QString& reason)
{
    return {{reason, {}, {}}, files::ErrorCode::Unsupported};
}

/// The bytes as Qt takes them, without a copy.
QByteArray viewOf(std::span<const std::byte> bytes)
{
    return QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.data()), static_cast<int>(bytes.size()));
}

/// What `mimeType` is called by the writers of Qt.
QByteArray formatFor(const std::string& mimeType)
{
    const bool canWrite = mimeType == "image/jpeg" ||
                          (mimeType == "image/webp" && QImageWriter::supportedImageFormats().contains("webp"));
    return canWrite ? QByteArray::fromStdString(mimeType.substr(6)) : QByteArray("png");
}

files::Expected<FittedImage> encoded(const QImage& picture, const std::string& mimeType)
{
    const QByteArray format = formatFor(mimeType);
    const auto bytes = std::make_shared<QByteArray>();
    QBuffer buffer(bytes.get());
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    if (format == "jpeg")
        writer.setQuality(jpegQuality);
    if (!writer.write(picture))
        return cannot(writer.errorString());
    const std::span<const std::byte> span(reinterpret_cast<const std::byte*>(bytes->constData()),
                                          static_cast<std::size_t>(bytes->size()));
    return FittedImage{bytes, span, "image/" + format.toStdString()};
}

} // namespace

files::Expected<FittedImage> fitted(const osg::EncodedImagePtr& image, int mostSide)
{
    const bool isKnown = isOneOf(image->mimeType(), {"image/png", "image/jpeg", "image/webp"});
    const FittedImage same{image, image->bytes(), image->mimeType()};
    if (isOneOf(image->mimeType(), {"image/ktx2", "image/vnd-ms.dds"}) || (isKnown && mostSide <= 0))
        return same;
    if (image->bytes().size() > std::size_t(std::numeric_limits<int>::max()))
        return cannot(files::tr("it is too large to be decoded"));
    QByteArray bytes = viewOf(image->bytes());
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    const QSize size = reader.size();
    const bool isSmallEnough = mostSide <= 0 || std::max(size.width(), size.height()) <= mostSide;
    if (isKnown && size.isValid() && isSmallEnough)
        return same;
    if (!size.isValid())
        return cannot(reader.errorString());
    if (std::int64_t(size.width()) * size.height() > mostPixels)
        return cannot(files::tr("its %1 x %2 pixels are too many").arg(size.width()).arg(size.height()));
    QImage picture = reader.read();
    if (picture.isNull())
        return cannot(reader.errorString());
    if (!isSmallEnough)
        picture = picture.scaled(mostSide, mostSide, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return encoded(picture, image->mimeType());
}

} // namespace files::glb::images
