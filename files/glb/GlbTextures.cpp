#include "files/glb/GlbTextures.h"

#include "files/Text.h"
#include "files/glb/GlbNumbers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

namespace files::glb
{

namespace
{

using Wrap = osg::TextureSampler::Wrap;
using Filter = osg::TextureSampler::Filter;

constexpr std::uint64_t alignment = 4;

std::uint64_t filledUp(std::uint64_t size)
{
    return (size + alignment - 1) / alignment * alignment;
}

int numberOf(Wrap wrap)
{
    return wrap == Wrap::Clamp ? 33071 : wrap == Wrap::Mirrored ? 33648 : 10497;
}

/// None for what whoever draws may choose.
std::optional<int> numberOf(Filter filter)
{
    switch (filter) {
    case Filter::Any:
        return std::nullopt;
    case Filter::Nearest:
        return 9728;
    case Filter::Linear:
        return 9729;
    case Filter::NearestMipmapNearest:
        return 9984;
    case Filter::LinearMipmapNearest:
        return 9985;
    case Filter::NearestMipmapLinear:
        return 9986;
    case Filter::LinearMipmapLinear:
        return 9987;
    }
    return std::nullopt;
}

/// The extension that a picture of this kind needs; null for one that every program reads.
const char* extensionFor(const std::string& mimeType)
{
    return mimeType == "image/webp"         ? "EXT_texture_webp"
           : mimeType == "image/ktx2"       ? "KHR_texture_basisu"
           : mimeType == "image/vnd-ms.dds" ? "MSFT_texture_dds"
                                            : nullptr;
}

const char* suffixFor(const std::string& mimeType)
{
    return mimeType == "image/webp"         ? "webp"
           : mimeType == "image/ktx2"       ? "ktx2"
           : mimeType == "image/vnd-ms.dds" ? "dds"
           : mimeType == "image/jpeg"       ? "jpg"
                                            : "png";
}

Json pairOf(const osg::Vec2f& pair)
{
    return {pair.x, pair.y};
}

/// Empty where the picture stands as the coordinates say.
Json transformOf(const osg::Texture& texture)
{
    Json transform = Json::object();
    if (texture.offset != osg::Vec2f())
        transform["offset"] = pairOf(texture.offset);
    if (texture.rotation != 0)
        transform["rotation"] = texture.rotation;
    if (texture.scale != osg::Vec2f{1, 1})
        transform["scale"] = pairOf(texture.scale);
    return transform;
}

/// `name` without its suffix and without what names of files should not have.
QString plainName(const std::string& name)
{
    QString plain = QFileInfo(QString::fromStdString(name)).completeBaseName();
    for (QChar& letter : plain)
        if (!letter.isLetterOrNumber() && letter != QLatin1Char('-') && letter != QLatin1Char('_'))
            letter = QLatin1Char('_');
    return plain.left(100);
}

} // namespace

GlbTextures::GlbTextures(const WriteOptions& options, const QString& path) : m_options(options), m_path(path) {}

std::optional<Json> GlbTextures::info(const osg::Texture& texture)
{
    if (!areWritten() || !texture.image)
        return std::nullopt;
    const std::optional<std::size_t> source = image(texture.image);
    if (!source)
        return std::nullopt;
    const TextureKey key(*source, sampler(texture.sampler));
    const auto [entry, isNew] = m_textureNumbers.try_emplace(key, m_textures.size());
    if (isNew) {
        Json json = Json::object();
        if (const char* extension = extensionFor(m_images[*source].fitted.mimeType)) {
            json["extensions"][extension]["source"] = *source;
            m_required.insert(extension);
        } else {
            json["source"] = *source;
        }
        if (std::get<1>(key) >= 0)
            json["sampler"] = std::get<1>(key);
        m_textures.add(json);
    }
    Json info = {{"index", entry->second}};
    if (texture.set != 0)
        info["texCoord"] = texture.set;
    if (Json transform = transformOf(texture); !transform.empty()) {
        info["extensions"]["KHR_texture_transform"] = std::move(transform);
        m_hasTransforms = true;
    }
    return info;
}

std::optional<std::size_t> GlbTextures::image(const osg::EncodedImagePtr& image)
{
    const auto [entry, isNew] = m_imageNumbers.try_emplace(image);
    if (!isNew)
        return entry->second;
    const files::Expected<images::FittedImage> fitted = images::fitted(image, m_options.mostTextureSide);
    if (!fitted) {
        m_warnings << files::tr("the picture '%1' was left out: %2")
                          .arg(QString::fromStdString(image->name()), fitted.error().message);
        return std::nullopt;
    }
    Image made{image, fitted.value(), {}};
    if (m_options.textures == Textures::External)
        made.fileName = fileNameFor(made);
    else
        m_size += filledUp(made.fitted.bytes.size());
    m_images.push_back(std::move(made));
    return entry->second = m_images.size() - 1;
}

std::string GlbTextures::fileNameFor(const Image& image)
{
    const QString own = plainName(image.from->name());
    const QString name =
        QFileInfo(m_path).completeBaseName() + QLatin1Char('_') + (own.isEmpty() ? QStringLiteral("texture") : own);
    return m_fileNames.unique(name.toStdString()) + '.' + suffixFor(image.fitted.mimeType);
}

int GlbTextures::sampler(const osg::TextureSampler& sampler)
{
    if (sampler == osg::TextureSampler())
        return -1;
    Json json = Json::object();
    if (const auto filter = numberOf(sampler.magnify))
        json["magFilter"] = *filter;
    if (const auto filter = numberOf(sampler.minify))
        json["minFilter"] = *filter;
    if (sampler.wrapU != Wrap::Repeat)
        json["wrapS"] = numberOf(sampler.wrapU);
    if (sampler.wrapV != Wrap::Repeat)
        json["wrapT"] = numberOf(sampler.wrapV);
    const std::string text = textOf(json);
    const auto [entry, isNew] = m_samplerNumbers.try_emplace(text, static_cast<int>(m_samplers.size()));
    if (isNew)
        m_samplers.addText(text);
    return entry->second;
}

JsonList GlbTextures::images(std::size_t firstView) const
{
    JsonList list;
    for (const Image& image : m_images) {
        Json json = {{"mimeType", image.fitted.mimeType}};
        if (!image.from->name().empty())
            json["name"] = decodedName(image.from->name().c_str());
        if (image.fileName.empty())
            json["bufferView"] = firstView++;
        else
            json["uri"] = QUrl::toPercentEncoding(QString::fromStdString(image.fileName)).toStdString();
        list.add(json);
    }
    return list;
}

JsonList GlbTextures::views(std::uint64_t firstByte) const
{
    JsonList list;
    for (const Image& image : m_images)
        if (image.fileName.empty()) {
            list.add({{"buffer", 0}, {"byteOffset", firstByte}, {"byteLength", image.fitted.bytes.size()}});
            firstByte += filledUp(image.fitted.bytes.size());
        }
    return list;
}

void GlbTextures::write(files::OutputFile& output) const
{
    constexpr char zeros[alignment] = {};
    for (const Image& image : m_images)
        if (image.fileName.empty()) {
            const std::uint64_t size = image.fitted.bytes.size();
            output.write(image.fitted.bytes.data(), size);
            output.write(zeros, filledUp(size) - size);
        }
}

files::Expected<void> GlbTextures::writeFiles() const
{
    const QDir folder = QFileInfo(m_path).dir();
    QStringList fresh;
    for (const Image& image : m_images) {
        if (image.fileName.empty())
            continue;
        const QString path = folder.absoluteFilePath(QString::fromStdString(image.fileName));
        const bool isFresh = !QFile::exists(path);
        files::OutputFile output(path);
        output.write(image.fitted.bytes.data(), image.fitted.bytes.size());
        if (const files::Expected<void> complete = output.commit(); !complete) {
            for (const QString& written : fresh)
                QFile::remove(written);
            return complete.error();
        }
        if (isFresh)
            fresh << path;
    }
    return {};
}

} // namespace files::glb
