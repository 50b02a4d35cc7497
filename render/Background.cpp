#include "render/Background.h"

#include <QColor>
#include <QCoreApplication>
#include <QFileInfo>
#include <QImageReader>

namespace render
{

namespace
{

QString text(const char* source)
{
    return QCoreApplication::translate("Snapshot", source);
}

BackgroundChoice refused(const QString& message)
{
    return {std::nullopt, message};
}

BackgroundChoice pictureOf(const QString& path, std::size_t maxPixels)
{
    QImageReader reader(path);
    const QSize size = reader.size();
    if (!reader.canRead() || size.isEmpty())
        return refused(
            text("The background \"%1\" is no picture that can be read: %2").arg(path, reader.errorString()));
    if (std::size_t(size.width()) * std::size_t(size.height()) > maxPixels)
        return refused(text("The background \"%1\" has %2x%3 pixels, and %4 are possible")
                           .arg(path)
                           .arg(size.width())
                           .arg(size.height())
                           .arg(qulonglong(maxPixels)));
    Backdrop backdrop;
    backdrop.picture = reader.read();
    if (backdrop.picture.isNull())
        return refused(
            text("The background \"%1\" is no picture that can be read: %2").arg(path, reader.errorString()));
    return {backdrop, QString()};
}

} // namespace

BackgroundChoice backgroundFromText(const QString& text, std::size_t maxPixels)
{
    Backdrop backdrop;
    if (text.compare(QLatin1String("transparent"), Qt::CaseInsensitive) == 0) {
        backdrop.isTransparent = true;
        return {backdrop, QString()};
    }
    const bool isNumber = text.startsWith(QLatin1Char('#'));
    if (const QColor color(text); color.isValid() && (!isNumber || text.size() == 7)) {
        backdrop.top = {float(color.redF()), float(color.greenF()), float(color.blueF())};
        backdrop.bottom = backdrop.top;
        return {backdrop, QString()};
    }
    if (QFileInfo(text).isFile())
        return pictureOf(text, maxPixels);
    return refused(render::text("The background \"%1\" is neither a colour (#rrggbb or a name) nor transparent nor the "
                                "file of a picture")
                       .arg(text));
}

} // namespace render
