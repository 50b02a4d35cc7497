#pragma once

#include "host/OSGSystem/PhysicalSurface.h"

#include <functional>
#include <string>
#include <vector>

/// Surfaces that differ from one another in a single value.
namespace surfacedifferences
{

inline osg::EncodedImagePtr image(const std::string& content)
{
    const auto* bytes = reinterpret_cast<const std::byte*>(content.data());
    return osg::EncodedImage::share(std::vector<std::byte>(bytes, bytes + content.size()), "image/png", content);
}

/// With a texture in two of its slots.
inline osg::PhysicalSurface surface()
{
    osg::PhysicalSurface result;
    result.alphaMode = osg::AlphaMode::Mask;
    result.textures[osg::TextureSlot::BaseColor].image = image("oak");
    result.textures[osg::TextureSlot::Normal].image = image("grain");
    return result;
}

struct Difference {
    std::string what;
    std::function<void(osg::PhysicalSurface&)> make;
};

/// One for each field of a surface, of a texture and of a sampler.
inline std::vector<Difference> all()
{
    using S = osg::PhysicalSurface;
    using Slot = osg::TextureSlot;
    using Wrap = osg::TextureSampler::Wrap;
    using Filter = osg::TextureSampler::Filter;
    const auto texture = [](S& s) -> osg::Texture& { return s.textures.at(Slot::BaseColor); };
    return {
        {"metalness", [](S& s) { s.metalness = 0.5f; }},
        {"roughness", [](S& s) { s.roughness = 0.5f; }},
        {"opacity", [](S& s) { s.opacity = 0.5f; }},
        {"alphaMode", [](S& s) { s.alphaMode = osg::AlphaMode::Opaque; }},
        {"alphaCutoff", [](S& s) { s.alphaCutoff = 0.25f; }},
        {"doubleSided", [](S& s) { s.doubleSided = false; }},
        {"unlit", [](S& s) { s.unlit = true; }},
        {"emissionStrength", [](S& s) { s.emissionStrength = 2; }},
        {"transmission", [](S& s) { s.transmission = 0.5f; }},
        {"refraction", [](S& s) { s.refraction = 1.25f; }},
        {"clearcoat", [](S& s) { s.clearcoat = 0.5f; }},
        {"clearcoatRoughness", [](S& s) { s.clearcoatRoughness = 0.5f; }},
        {"sheenColor", [](S& s) { s.sheenColor.blue = 0.5f; }},
        {"sheenRoughness", [](S& s) { s.sheenRoughness = 0.5f; }},
        {"specular", [](S& s) { s.specular = 0.5f; }},
        {"specularColor", [](S& s) { s.specularColor.green = 0.5f; }},
        {"a texture less", [](S& s) { s.textures.erase(Slot::Normal); }},
        {"a texture more", [](S& s) { s.textures[Slot::Occlusion].image = image("oak"); }},
        {"another slot",
         [](S& s) {
             s.textures[Slot::Occlusion] = s.textures.at(Slot::Normal);
             s.textures.erase(Slot::Normal);
         }},
        {"image", [=](S& s) { texture(s).image = image("elm"); }},
        {"set", [=](S& s) { texture(s).set = 1; }},
        {"offset u", [=](S& s) { texture(s).offset.x = 0.5f; }},
        {"offset v", [=](S& s) { texture(s).offset.y = 0.5f; }},
        {"scale u", [=](S& s) { texture(s).scale.x = 2; }},
        {"scale v", [=](S& s) { texture(s).scale.y = 2; }},
        {"rotation", [=](S& s) { texture(s).rotation = 1; }},
        {"strength", [](S& s) { s.textures.at(Slot::Normal).strength = 0.5f; }},
        {"wrapU", [=](S& s) { texture(s).sampler.wrapU = Wrap::Clamp; }},
        {"wrapV", [=](S& s) { texture(s).sampler.wrapV = Wrap::Mirrored; }},
        {"magnify", [=](S& s) { texture(s).sampler.magnify = Filter::Nearest; }},
        {"minify", [=](S& s) { texture(s).sampler.minify = Filter::LinearMipmapLinear; }},
    };
}

} // namespace surfacedifferences
