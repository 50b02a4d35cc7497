#include "files/gltf/GltfTextures.h"

#include "files/gltf/JsonMembers.h"

#include <array>

namespace files::gltf
{

namespace
{

using Json = nlohmann::json;
using Wrap = osg::TextureSampler::Wrap;
using Filter = osg::TextureSampler::Filter;

/// Where a texture names its image when its kind is none that every program reads.
constexpr std::array<const char*, 4> imageExtensions = {"KHR_texture_basisu", "EXT_texture_webp", "EXT_texture_avif",
                                                        "MSFT_texture_dds"};

Wrap wrapOf(std::uint64_t number)
{
    return number == 33071 ? Wrap::Clamp : number == 33648 ? Wrap::Mirrored : Wrap::Repeat;
}

Filter filterOf(std::uint64_t number)
{
    switch (number) {
    case 9728:
        return Filter::Nearest;
    case 9729:
        return Filter::Linear;
    case 9984:
        return Filter::NearestMipmapNearest;
    case 9985:
        return Filter::LinearMipmapNearest;
    case 9986:
        return Filter::NearestMipmapLinear;
    case 9987:
        return Filter::LinearMipmapLinear;
    default:
        return Filter::Any;
    }
}

osg::Vec2f pairIn(const Json& object, const char* key, const osg::Vec2f& otherwise)
{
    const Json& pair = memberOf(object, key);
    const bool isPair = pair.is_array() && pair.size() == 2 && pair[0].is_number() && pair[1].is_number();
    return isPair ? osg::Vec2f{pair[0].get<float>(), pair[1].get<float>()} : otherwise;
}

/// The image that `texture` names: that which every program reads if it has one.
std::optional<std::uint64_t> sourceOf(const Json& texture)
{
    if (const auto source = indexIn(texture, "source"))
        return source;
    for (const char* extension : imageExtensions)
        if (const auto source = indexIn(memberOf(memberOf(texture, "extensions"), extension), "source"))
            return source;
    return std::nullopt;
}

} // namespace

GltfTextures::GltfTextures(const Json& document, const std::vector<GltfBuffer>& buffers, ReadTask& task)
    : m_document(document), m_buffers(buffers), m_task(task), m_files(task, task.path())
{
}

std::optional<osg::Texture> GltfTextures::texture(const Json& info, const QString& place)
{
    const auto index = indexIn(info, "index");
    if (!index)
        return std::nullopt;
    const Json& from = entryOf(m_document, "textures", *index);
    if (!from.is_object()) {
        m_task.warn(tr("the texture %1 does not exist").arg(static_cast<qulonglong>(*index)), place);
        return std::nullopt;
    }
    osg::Texture texture;
    texture.image = image(from, place);
    if (!texture.image)
        return std::nullopt;
    texture.sampler = sampler(from);
    const Json& transform = memberOf(memberOf(info, "extensions"), "KHR_texture_transform");
    texture.offset = pairIn(transform, "offset", {0, 0});
    texture.scale = pairIn(transform, "scale", {1, 1});
    texture.rotation = numberIn(transform, "rotation", 0);
    const std::uint64_t set = indexIn(transform, "texCoord").value_or(indexIn(info, "texCoord").value_or(0));
    if (set > 1) {
        m_task.warn(tr("a texture follows the texture coordinates %1; only 0 and 1 are read, and it was left out")
                        .arg(static_cast<qulonglong>(set)),
                    place);
        return std::nullopt;
    }
    texture.set = static_cast<std::uint8_t>(set);
    return texture;
}

osg::EncodedImagePtr GltfTextures::image(const Json& texture, const QString& place)
{
    const auto source = sourceOf(texture);
    if (!source) {
        m_task.warn(tr("a texture has no picture that is read; it was left out"), place);
        return nullptr;
    }
    const auto [entry, isNew] = m_images.try_emplace(*source);
    if (isNew)
        entry->second = load(entryOf(m_document, "images", *source),
                             QStringLiteral("/images/%1").arg(static_cast<qulonglong>(*source)));
    return entry->second;
}

osg::EncodedImagePtr GltfTextures::load(const Json& image, const QString& place)
{
    if (const auto view = indexIn(image, "bufferView"))
        return fromView(*view, image, place);
    const std::string address = textIn(image, "uri");
    if (!address.empty())
        return m_files.atAddress(address, textIn(image, "mimeType"), textIn(image, "name"), place);
    m_task.warn(tr("this picture does not exist; it was left out"), place);
    return nullptr;
}

osg::EncodedImagePtr GltfTextures::fromView(std::uint64_t view, const Json& image, const QString& place)
{
    const Json& from = entryOf(m_document, "bufferViews", view);
    const std::uint64_t buffer = indexIn(from, "buffer").value_or(m_buffers.size());
    const std::uint64_t offset = indexIn(from, "byteOffset").value_or(0);
    const std::uint64_t length = indexIn(from, "byteLength").value_or(0);
    const bool isThere = buffer < m_buffers.size() && length > 0 && offset <= m_buffers[buffer].size &&
                         length <= m_buffers[buffer].size - offset;
    if (!isThere) {
        m_task.warn(tr("the bytes of this picture lie outside the file; it was left out"), place);
        return nullptr;
    }
    const GltfBuffer& bytes = m_buffers[buffer];
    return osg::EncodedImage::share(bytes.owner, {bytes.data + offset, static_cast<std::size_t>(length)},
                                    textIn(image, "mimeType"), textIn(image, "name"));
}

osg::TextureSampler GltfTextures::sampler(const Json& texture) const
{
    const auto index = indexIn(texture, "sampler");
    if (!index)
        return {};
    const Json& from = entryOf(m_document, "samplers", *index);
    return {wrapOf(indexIn(from, "wrapS").value_or(0)), wrapOf(indexIn(from, "wrapT").value_or(0)),
            filterOf(indexIn(from, "magFilter").value_or(0)), filterOf(indexIn(from, "minFilter").value_or(0))};
}

} // namespace files::gltf
