#include "files/scenefile/SurfaceFields.h"

#include <bit>
#include <bitset>

namespace osg::scenefile
{

namespace
{

constexpr std::uint8_t doubleSidedFlag = 1;
constexpr std::uint8_t unlitFlag = 2;

using Wrap = TextureSampler::Wrap;
using Filter = TextureSampler::Filter;

fb::Vec2 stored(const Vec2f& vector)
{
    return {vector.x, vector.y};
}

Vec2f restored(const fb::Vec2& vector)
{
    return {vector.x(), vector.y()};
}

fb::Texture stored(TextureSlot slot, const Texture& texture, ObjectNumbers& numbers)
{
    const TextureSampler& sampler = texture.sampler;
    return {numbers.image(texture.image),
            std::uint8_t(slot),
            texture.set,
            std::uint8_t(sampler.wrapU),
            std::uint8_t(sampler.wrapV),
            std::uint8_t(sampler.magnify),
            std::uint8_t(sampler.minify),
            stored(texture.offset),
            stored(texture.scale),
            texture.rotation,
            texture.strength};
}

Texture restored(const fb::Texture& record, const NumberedObjects& objects)
{
    Texture texture;
    texture.image = objects.image(record.image());
    texture.set = record.set();
    texture.sampler = {Wrap(record.wrap_u()), Wrap(record.wrap_v()), Filter(record.magnify()), Filter(record.minify())};
    texture.offset = restored(record.offset());
    texture.scale = restored(record.scale());
    texture.rotation = record.rotation();
    texture.strength = record.strength();
    return texture;
}

bool isSound(const fb::Texture& record, std::uint64_t images)
{
    return record.image() > 0 && record.image() <= images && record.slot() < textureSlots && record.set() < 2 &&
           record.wrap_u() <= std::uint8_t(Wrap::Mirrored) && record.wrap_v() <= std::uint8_t(Wrap::Mirrored) &&
           record.magnify() <= std::uint8_t(Filter::Linear) &&
           record.minify() <= std::uint8_t(Filter::LinearMipmapLinear);
}

} // namespace

SurfaceFields surfaceFields(const PhysicalSurface& surface, ObjectNumbers& numbers)
{
    SurfaceFields fields;
    const int flags = (surface.doubleSided ? doubleSidedFlag : 0) | (surface.unlit ? unlitFlag : 0);
    fields.factors = fb::SurfaceFactors(
        surface.metalness, surface.roughness, surface.opacity, surface.alphaCutoff, surface.emissionStrength,
        surface.transmission, surface.refraction, surface.clearcoat, surface.clearcoatRoughness,
        std::bit_cast<fb::Color>(surface.sheenColor), surface.sheenRoughness, surface.specular,
        std::bit_cast<fb::Color>(surface.specularColor), std::uint8_t(surface.alphaMode), std::uint8_t(flags));
    for (const auto& [slot, texture] : surface.textures)
        fields.textures.push_back(stored(slot, texture, numbers));
    return fields;
}

std::uint64_t storedSize(const SurfaceFields& fields)
{
    return 2 * sizeof(fb::SurfaceFactors) + (fields.textures.size() + 1) * sizeof(fb::Texture);
}

flatbuffers::Offset<fb::Surface> storeSurface(const SurfaceFields& fields, flatbuffers::FlatBufferBuilder& builder)
{
    const auto textures = fields.textures.empty() ? 0 : builder.CreateVectorOfStructs(fields.textures);
    return fb::CreateSurface(builder, &fields.factors, textures);
}

bool isSound(const fb::Surface& record, std::uint64_t images)
{
    std::bitset<textureSlots> seen;
    if (record.factors()->alpha_mode() > std::uint8_t(AlphaMode::Blend))
        return false;
    if (!record.textures())
        return true;
    for (const fb::Texture* texture : *record.textures()) {
        if (!isSound(*texture, images) || seen[texture->slot()])
            return false;
        seen.set(texture->slot());
    }
    return true;
}

PhysicalSurface restoreSurface(const fb::Surface& record, const NumberedObjects& objects)
{
    const fb::SurfaceFactors& factors = *record.factors();
    PhysicalSurface surface;
    surface.metalness = factors.metalness();
    surface.roughness = factors.roughness();
    surface.opacity = factors.opacity();
    surface.alphaMode = AlphaMode(factors.alpha_mode());
    surface.alphaCutoff = factors.alpha_cutoff();
    surface.doubleSided = (factors.flags() & doubleSidedFlag) != 0;
    surface.unlit = (factors.flags() & unlitFlag) != 0;
    surface.emissionStrength = factors.emission_strength();
    surface.transmission = factors.transmission();
    surface.refraction = factors.refraction();
    surface.clearcoat = factors.clearcoat();
    surface.clearcoatRoughness = factors.clearcoat_roughness();
    surface.sheenColor = std::bit_cast<Color3f>(factors.sheen_color());
    surface.sheenRoughness = factors.sheen_roughness();
    surface.specular = factors.specular();
    surface.specularColor = std::bit_cast<Color3f>(factors.specular_color());
    if (record.textures())
        for (const fb::Texture* texture : *record.textures())
            surface.textures.emplace(TextureSlot(texture->slot()), restored(*texture, objects));
    return surface;
}

} // namespace osg::scenefile
