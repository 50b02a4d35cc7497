#include "files/ImageFiles.h"

#include "files/Failure.h"

#include <QDir>
#include <QFileInfo>
#include <QUrl>

#include <algorithm>
#include <limits>

namespace files
{

namespace
{

/// Whether `path` begins as no path of this computer does, with the letter of a drive or two backslashes.
bool isOfAnotherSystem(const QString& path)
{
    return path.startsWith(QLatin1String("\\\\")) ||
           (path.size() > 1 && path[0].isLetter() && path[1] == QLatin1Char(':'));
}

} // namespace

std::optional<DataAddress> decodedAddress(std::string_view address, ReadTask& task, const QString& place)
{
    constexpr std::string_view scheme = "data:";
    constexpr std::string_view marker = ";base64,";
    const std::size_t start = address.find(marker);
    if (!address.starts_with(scheme) || start == std::string_view::npos)
        return std::nullopt;
    const std::string_view digits = address.substr(start + marker.size());
    if (digits.size() > std::size_t(std::numeric_limits<int>::max()))
        return std::nullopt;
    task.takeMemory(digits.size() * 2, place);
    const auto encoded = QByteArray::fromRawData(digits.data(), static_cast<int>(digits.size()));
    const auto result = QByteArray::fromBase64Encoding(encoded, QByteArray::AbortOnBase64DecodingErrors);
    if (!result)
        return std::nullopt;
    const std::string_view type = address.substr(scheme.size(), start - scheme.size());
    const auto size = static_cast<std::size_t>(result.decoded.size());
    auto bytes = std::make_shared_for_overwrite<std::byte[]>(size);
    std::copy_n(reinterpret_cast<const std::byte*>(result.decoded.constData()), size, bytes.get());
    return DataAddress{std::string(type.substr(0, type.find(';'))), {std::move(bytes), size}};
}

osg::EncodedImagePtr ImageFiles::at(const QString& path, const QString& place)
{
    const QString file = placeOf(path);
    const auto [entry, isNew] = m_images.try_emplace(file);
    if (isNew)
        entry->second = taken(file, place);
    return entry->second;
}

osg::EncodedImagePtr ImageFiles::firstAt(const std::vector<QString>& paths, const QString& place)
{
    for (const QString& path : paths) {
        const QString file = placeOf(path);
        if (m_task.refusal(references::Use::Bytes, file, m_from) || !QFileInfo(file).isFile())
            continue;
        if (osg::EncodedImagePtr image = at(path, place))
            return image;
    }
    return at(paths.front(), place);
}

osg::EncodedImagePtr ImageFiles::atAddress(const std::string& address, const std::string& mimeType,
                                           const std::string& name, const QString& place)
{
    const QString text = QString::fromStdString(address);
    if (address.starts_with("data:")) {
        const std::optional<DataAddress> data = decodedAddress(address, m_task, place);
        if (data && data->bytes.size > 0)
            return osg::EncodedImage::share(data->bytes.owner, {data->bytes.owner.get(), data->bytes.size},
                                            mimeType.empty() ? data->mimeType : mimeType, name);
        m_task.warnIn(m_from, tr("the data of a picture are not in base 64; it was left out"), place);
        return nullptr;
    }
    if (text.contains(QLatin1String("://"))) {
        m_task.warnIn(m_from, tr("a picture is not on this computer and was left out: %1").arg(text), place);
        return nullptr;
    }
    return at(QUrl::fromPercentEncoding(QByteArray::fromStdString(address)), place);
}

/// Looks at the disk only for files in the very folder: what lies elsewhere is not asked for before it is allowed.
QString ImageFiles::placeOf(const QString& path) const
{
    const QDir folder = QFileInfo(m_from).dir();
    const auto isBeside = [&](const QString& name) { return QFileInfo(folder.absoluteFilePath(name)).isFile(); };
    QString said = path;
    if (path.contains(QLatin1Char('\\')) && (path.contains(QLatin1Char('/')) || !isBeside(path)))
        said.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (const QString name = said.section(QLatin1Char('/'), -1); isOfAnotherSystem(path) && isBeside(name))
        said = name;
    return QDir::cleanPath(folder.absoluteFilePath(said));
}

osg::EncodedImagePtr ImageFiles::taken(const QString& path, const QString& place)
{
    if (const auto refusal = m_task.refusal(references::Use::Bytes, path, m_from)) {
        m_task.warnIn(m_from, tr("the picture %1 was left out: %2").arg(path, files::textOf(*refusal)), place);
        return nullptr;
    }
    try {
        const FileBytes file = readFile(m_task, path);
        if (file.size > 0)
            return osg::EncodedImage::share(file.owner, {file.owner.get(), file.size}, {},
                                            QFileInfo(path).fileName().toStdString());
        m_task.warnIn(m_from, tr("the picture %1 was left out: %2").arg(path, tr("the file is empty")), place);
    } catch (const Failure& failure) {
        m_task.warnIn(m_from, tr("the picture %1 was left out: %2").arg(path, failure.error().message), place);
    }
    return nullptr;
}

} // namespace files
