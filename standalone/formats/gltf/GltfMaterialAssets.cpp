#include "standalone/formats/gltf/GltfMaterialAssets.h"

#include "standalone/formats/gltf/GltfDocument.h"
#include "standalone/formats/gltf/GltfMaterials.h"

#include <new>

namespace formats
{

namespace
{

/// Empty when `object` has no text of this name.
std::string textIn(const tinygltf::Value& object, const char* key)
{
    if (!object.IsObject() || !object.Has(key) || !object.Get(key).IsString())
        return {};
    return object.Get(key).Get<std::string>();
}

MaterialAsset assetOf(const tinygltf::Material& material)
{
    MaterialAsset asset;
    asset.uuid = textIn(material.extras, "uuid");
    asset.name = textIn(material.extras, "name");
    if (asset.name.empty())
        asset.name = material.name;
    asset.environmentImage = textIn(material.extras, "environment");
    asset.look = lookOfMaterial(material);
    return asset;
}

std::vector<MaterialAsset> assetsIn(const QString& path, const ReadOptions& options)
{
    ReadTask task(path, options);
    const GltfDocument document = openGltf(task);
    std::vector<MaterialAsset> assets;
    for (const tinygltf::Material& material : document.model.materials)
        if (MaterialAsset asset = assetOf(material); !asset.uuid.empty())
            assets.push_back(std::move(asset));
    return assets;
}

ReadError outOfMemory(const QString& path)
{
    ReadError error;
    error.message = tr("There is not enough memory for the file.");
    error.file = path;
    error.code = ReadErrorCode::OutOfMemory;
    return error;
}

} // namespace

MaterialAssets readMaterialAssets(const QString& path, const ReadOptions& options)
{
    try {
        return {assetsIn(path, options), std::nullopt};
    } catch (const ReadFailure& failure) {
        return {{}, failure.error()};
    } catch (const std::bad_alloc&) {
        return {{}, outOfMemory(path)};
    }
}

} // namespace formats
