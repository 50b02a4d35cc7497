#pragma once

#include "host/OSGSystem/PhysicalSurface.h"

#include <QByteArray>

#include <string>
#include <vector>

/// Surfaces that differ from a plain one in one thing each, and pictures for them.
namespace surfacesamples
{

/// PNG files of 2 x 2 pixels.
inline const QByteArray& redPng()
{
    static const QByteArray bytes = QByteArray::fromBase64(
        "iVBORw0KGgoAAAANSUhEUgAAAAIAAAACCAIAAAD91JpzAAAAEElEQVR4nGP4z8AARAwQCgAf7gP9i18U1AAAAABJRU5ErkJggg==");
    return bytes;
}

inline const QByteArray& bluePng()
{
    static const QByteArray bytes = QByteArray::fromBase64(
        "iVBORw0KGgoAAAANSUhEUgAAAAIAAAACCAIAAAD91JpzAAAAD0lEQVR4nGNgaPgPQhAKACX2Bf2gcp/LAAAAAElFTkSuQmCC");
    return bytes;
}

inline osg::EncodedImagePtr imageOf(const QByteArray& bytes, const std::string& name = {})
{
    const auto* data = reinterpret_cast<const std::byte*>(bytes.constData());
    return osg::EncodedImage::share(std::vector<std::byte>(data, data + bytes.size()), {}, name);
}

struct Sample {
    std::string name;
    osg::PhysicalSurface surface;
};

inline osg::PhysicalSurface withTexture(osg::TextureSlot slot, const osg::Texture& texture)
{
    osg::PhysicalSurface surface;
    surface.roughness = 0.5f;
    surface.textures[slot] = texture;
    return surface;
}

inline std::vector<Sample> textureSamples()
{
    using Sampler = osg::TextureSampler;
    const osg::Texture plain{imageOf(redPng(), "red"), {}, 0, {}, {1, 1}, 0, 1};
    std::vector<Sample> samples;
    for (std::size_t slot = 0; slot < osg::textureSlots; ++slot)
        samples.push_back({"slot " + std::to_string(slot), withTexture(osg::TextureSlot(slot), plain)});
    // Without a normal map there would be no tangent space for it.
    samples[std::size_t(osg::TextureSlot::ClearcoatNormal)].surface.textures[osg::TextureSlot::Normal] = plain;
    const auto add = [&](const char* name, auto&& change) {
        osg::Texture texture = plain;
        change(texture);
        samples.push_back({name, withTexture(osg::TextureSlot::Normal, texture)});
    };
    add("other image", [](osg::Texture& t) { t.image = imageOf(bluePng(), "blue"); });
    add("clamp u", [](osg::Texture& t) { t.sampler.wrapU = Sampler::Wrap::Clamp; });
    add("mirror v", [](osg::Texture& t) { t.sampler.wrapV = Sampler::Wrap::Mirrored; });
    for (int filter = 1; filter <= 6; ++filter)
        add("minify", [&](osg::Texture& t) { t.sampler.minify = Sampler::Filter(filter); });
    add("magnify nearest", [](osg::Texture& t) { t.sampler.magnify = Sampler::Filter::Nearest; });
    add("magnify linear", [](osg::Texture& t) { t.sampler.magnify = Sampler::Filter::Linear; });
    add("second set", [](osg::Texture& t) { t.set = 1; });
    add("offset u", [](osg::Texture& t) { t.offset.x = 0.25f; });
    add("offset v", [](osg::Texture& t) { t.offset.y = 0.25f; });
    add("scale u", [](osg::Texture& t) { t.scale.x = 4; });
    add("scale v", [](osg::Texture& t) { t.scale.y = 4; });
    add("rotation", [](osg::Texture& t) { t.rotation = 0.5f; });
    add("strength", [](osg::Texture& t) { t.strength = 0.5f; });
    return samples;
}

/// No two of them are equal.
inline std::vector<Sample> all()
{
    std::vector<Sample> samples = textureSamples();
    const auto add = [&](const char* name, auto&& change) {
        osg::PhysicalSurface surface;
        surface.roughness = 0.5f;
        change(surface);
        samples.push_back({name, surface});
    };
    add("none", [](osg::PhysicalSurface&) {});
    add("metalness", [](osg::PhysicalSurface& s) { s.metalness = 0.75f; });
    add("roughness", [](osg::PhysicalSurface& s) { s.roughness = 0.25f; });
    add("opacity", [](osg::PhysicalSurface& s) { s.opacity = 0.5f; });
    add("mask", [](osg::PhysicalSurface& s) { s.alphaMode = osg::AlphaMode::Mask; });
    add("cutoff", [](osg::PhysicalSurface& s) { s.alphaMode = osg::AlphaMode::Mask, s.alphaCutoff = 0.25f; });
    add("blend", [](osg::PhysicalSurface& s) { s.alphaMode = osg::AlphaMode::Blend; });
    add("one side", [](osg::PhysicalSurface& s) { s.doubleSided = false; });
    add("unlit", [](osg::PhysicalSurface& s) { s.unlit = true; });
    add("emission strength", [](osg::PhysicalSurface& s) { s.emissionStrength = 8; });
    add("transmission", [](osg::PhysicalSurface& s) { s.transmission = 0.75f; });
    add("refraction", [](osg::PhysicalSurface& s) { s.refraction = 1.25f; });
    add("no refraction", [](osg::PhysicalSurface& s) { s.refraction = 0; });
    add("clearcoat", [](osg::PhysicalSurface& s) { s.clearcoat = 0.75f; });
    add("clearcoat roughness", [](osg::PhysicalSurface& s) { s.clearcoatRoughness = 0.75f; });
    add("sheen red", [](osg::PhysicalSurface& s) { s.sheenColor.red = 0.25f; });
    add("sheen green", [](osg::PhysicalSurface& s) { s.sheenColor.green = 0.25f; });
    add("sheen blue", [](osg::PhysicalSurface& s) { s.sheenColor.blue = 0.25f; });
    add("sheen roughness", [](osg::PhysicalSurface& s) { s.sheenRoughness = 0.25f; });
    add("specular", [](osg::PhysicalSurface& s) { s.specular = 0.25f; });
    add("no specular", [](osg::PhysicalSurface& s) { s.specular = 0; });
    add("specular red", [](osg::PhysicalSurface& s) { s.specularColor.red = 2; });
    add("specular green", [](osg::PhysicalSurface& s) { s.specularColor.green = 2; });
    add("specular blue", [](osg::PhysicalSurface& s) { s.specularColor.blue = 2; });
    return samples;
}

} // namespace surfacesamples
