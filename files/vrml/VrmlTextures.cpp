#include "files/vrml/VrmlTextures.h"

#include "files/TexturePlacement.h"
#include "files/vrml/PixelPicture.h"

#include <QUrl>

#include <cmath>

namespace files::vrml
{

namespace
{

osg::Vec2f vectorOf(std::span<const float> numbers, const osg::Vec2f& otherwise)
{
    return numbers.size() < 2 ? otherwise : osg::Vec2f{numbers[0], numbers[1]};
}

/// The placement of a TextureTransform: coordinates are moved by the translation, then turned and then scaled about the
/// centre (-C x S x R x C x T).
UpwardPlacement placementOf(const Node& transform)
{
    const osg::Vec2f center = vectorOf(transform.floats("center"), {});
    const osg::Vec2f scale = vectorOf(transform.floats("scale"), {1, 1});
    const osg::Vec2f translation = vectorOf(transform.floats("translation"), {});
    const double rotation = transform.number("rotation", 0);
    const double cosine = std::cos(rotation), sine = std::sin(rotation);
    const double u = double(translation.x) + center.x, v = double(translation.y) + center.y;
    UpwardPlacement placement;
    placement.uu = scale.x * cosine;
    placement.uv = -scale.x * sine;
    placement.u0 = placement.uu * u + placement.uv * v - center.x;
    placement.vu = scale.y * sine;
    placement.vv = scale.y * cosine;
    placement.v0 = placement.vu * u + placement.vv * v - center.y;
    return placement;
}

/// What a path may be that is written as an address: as it stands, or with percent signs.
std::vector<QString> pathsOf(std::span<const std::string> urls)
{
    std::vector<QString> paths;
    for (const std::string& url : urls) {
        QString path = QString::fromStdString(url);
        if (path.startsWith(QLatin1String("file://")))
            path.remove(0, 7);
        if (path.isEmpty() || path.contains(QLatin1String("://")))
            continue;
        paths.push_back(path);
        if (path.contains(QLatin1Char('%')))
            paths.push_back(QUrl::fromPercentEncoding(path.toUtf8()));
    }
    return paths;
}

osg::TextureSampler::Wrap wrapOf(const Node& texture, std::string_view field)
{
    return texture.flag(field, true) ? osg::TextureSampler::Wrap::Repeat : osg::TextureSampler::Wrap::Clamp;
}

} // namespace

const AppearanceTexture* Textures::of(const Node* appearance, const Source& source)
{
    const Node* texture = appearance ? appearance->node("texture") : nullptr;
    if (!texture || (texture->kind() != NodeKind::ImageTexture && texture->kind() != NodeKind::PixelTexture))
        return nullptr;
    const Node* transform = appearance->node("textureTransform");
    if (transform && transform->kind() != NodeKind::TextureTransform)
        transform = nullptr;
    const auto [entry, isNew] = m_made.try_emplace({texture, transform});
    if (isNew)
        entry->second = made(*texture, transform, source);
    return entry->second ? &*entry->second : nullptr;
}

std::optional<AppearanceTexture> Textures::made(const Node& texture, const Node* transform, const Source& source)
{
    AppearanceTexture result;
    result.texture.image = imageOf(texture, source);
    if (!result.texture.image)
        return std::nullopt;
    result.channels = channelsOf(result.texture.image->bytes());
    result.texture.sampler.wrapU = wrapOf(texture, "repeatS");
    result.texture.sampler.wrapV = wrapOf(texture, "repeatT");
    if (transform && !place(result.texture, placementOf(*transform)))
        source.warn(tr("a picture that is turned and stretched is not drawn askew as it should be"), transform->offset);
    return result;
}

osg::EncodedImagePtr Textures::imageOf(const Node& texture, const Source& source)
{
    if (texture.kind() == NodeKind::PixelTexture) {
        const std::span<const std::int32_t> pixels = texture.ints("image");
        source.task().takeMemory(2 * pixels.size_bytes(), source.place(texture.offset));
        std::vector<std::byte> png = pngOfPixels(pixels);
        if (!png.empty())
            return osg::EncodedImage::share(std::move(png), "image/png", texture.name);
        if (pixels.size() > 3 || std::any_of(pixels.begin(), pixels.end(), [](std::int32_t n) { return n != 0; }))
            source.warn(tr("the pixels of a picture are not as many as it says; it was left out"), texture.offset);
        return nullptr;
    }
    const std::span<const std::string> urls = texture.strings("url");
    if (urls.empty())
        return nullptr;
    ImageFiles& images = m_files.try_emplace(source.path(), source.task(), source.path()).first->second;
    const std::vector<QString> paths = pathsOf(urls);
    if (paths.empty() || urls.front().starts_with("data:"))
        return images.atAddress(urls.front(), {}, texture.name, source.place(texture.offset));
    return images.firstAt(paths, source.place(texture.offset));
}

} // namespace files::vrml
