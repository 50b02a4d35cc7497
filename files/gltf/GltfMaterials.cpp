#include "files/gltf/GltfMaterials.h"

#include "scene/ColorSpace.h"
#include "scene/MaterialLook.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace files::gltf
{

namespace
{

constexpr float reflectionOfDielectrics = 0.04f;

/// Linear, with alpha.
using Factor = std::array<float, 4>;

struct Surface {
    Factor base = {1, 1, 1, 1};
    osg::Color3f specular; ///< linear
    float roughness = 1;
};

osg::Color3f colorOf(const Factor& factor)
{
    return {factor[0], factor[1], factor[2]};
}

/// The first numbers of `numbers` instead of those of `otherwise`.
Factor factorOf(const std::vector<double>& numbers, const Factor& otherwise)
{
    Factor result = otherwise;
    for (std::size_t i = 0; i < std::min(numbers.size(), result.size()); ++i)
        result[i] = static_cast<float>(numbers[i]);
    return result;
}

std::vector<double> numbersIn(const tinygltf::Value& object, const std::string& key)
{
    std::vector<double> result;
    if (!object.Has(key))
        return result;
    const tinygltf::Value& value = object.Get(key);
    for (std::size_t i = 0; i < value.ArrayLen(); ++i)
        result.push_back(value.Get(static_cast<int>(i)).GetNumberAsDouble());
    if (value.IsNumber())
        result.push_back(value.GetNumberAsDouble());
    return result;
}

float mixed(float a, float b, float share)
{
    return a + (b - a) * share;
}

Surface metallicRoughness(const tinygltf::PbrMetallicRoughness& from)
{
    Surface result;
    result.base = factorOf(from.baseColorFactor, result.base);
    const auto metallic = static_cast<float>(from.metallicFactor);
    result.specular = {mixed(reflectionOfDielectrics, result.base[0], metallic),
                       mixed(reflectionOfDielectrics, result.base[1], metallic),
                       mixed(reflectionOfDielectrics, result.base[2], metallic)};
    result.roughness = static_cast<float>(from.roughnessFactor);
    return result;
}

Surface specularGlossiness(const tinygltf::Value& from)
{
    Surface result;
    result.base = factorOf(numbersIn(from, "diffuseFactor"), result.base);
    result.specular = colorOf(factorOf(numbersIn(from, "specularFactor"), {1, 1, 1, 1}));
    result.roughness = 1 - factorOf(numbersIn(from, "glossinessFactor"), {1, 1, 1, 1})[0];
    return result;
}

Surface surfaceOf(const tinygltf::Material& material)
{
    const auto older = material.extensions.find("KHR_materials_pbrSpecularGlossiness");
    return older == material.extensions.end() ? metallicRoughness(material.pbrMetallicRoughness)
                                              : specularGlossiness(older->second);
}

float transparencyOf(const tinygltf::Material& material, float alpha)
{
    if (material.alphaMode == "BLEND")
        return 1 - alpha;
    const bool isCutOff = material.alphaMode == "MASK" && alpha < static_cast<float>(material.alphaCutoff);
    return isCutOff ? 1.0f : 0.0f;
}

} // namespace

MaterialLook lookOfMaterial(const GltfDocument& document, std::size_t index)
{
    const tinygltf::Material& material = document.model.materials[index];
    const Surface surface = surfaceOf(material);
    MaterialLook look;
    look.diffuse = osg::displayFromLinear(colorOf(surface.base));
    look.specular = osg::displayFromLinear(surface.specular);
    look.emission = osg::displayFromLinear(colorOf(factorOf(material.emissiveFactor, {0, 0, 0, 0})));
    look.shininess = osg::shininessOfRoughness(surface.roughness);
    look.transparency = transparencyOf(material, surface.base[3]);
    if (index < document.surfaces.size())
        look.surface = document.surfaces[index];
    return look;
}

} // namespace files::gltf
