#include "files/gltf/GltfMaterialAssets.h"

#include "files/Failure.h"
#include "files/gltf/GltfDocument.h"
#include "files/gltf/GltfFrame.h"
#include "files/gltf/GltfJson.h"
#include "files/gltf/GltfMaterials.h"
#include "files/gltf/JsonMembers.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <new>

namespace files::gltf
{

namespace
{

using Json = nlohmann::json;

/// The materials of a sound document with their extras, which the model of `openGltf` does not have; null without any.
Json materialsOf(const QString& path, const ReadOptions& options)
{
    ReadTask task(path, options);
    const FileBytes file = readFile(task, path);
    const auto isWanted = [](int depth, std::string_view key) { return depth > 1 || key == "materials"; };
    const Json json = parseJson(splitGltf(file, task).json, task, isWanted);
    return json.is_object() ? json.value("materials", Json()) : Json();
}

MaterialAsset assetOf(const GltfDocument& document, std::size_t index, const Json& extras)
{
    MaterialAsset asset;
    asset.uuid = textIn(extras, "uuid");
    asset.name = textIn(extras, "name");
    if (asset.name.empty())
        asset.name = document.model.materials[index].name;
    asset.environmentImage = textIn(extras, "environment");
    asset.look = lookOfMaterial(document, index);
    return asset;
}

std::vector<MaterialAsset> assetsIn(const QString& path, const ReadOptions& options)
{
    ReadTask task(path, options);
    const GltfDocument document = openGltf(task);
    const Json materials = materialsOf(path, options);
    std::vector<MaterialAsset> assets;
    for (std::size_t i = 0; i < std::min(document.model.materials.size(), materials.size()); ++i) {
        const auto extras = materials[i].find("extras");
        if (extras == materials[i].end() || !extras->is_object())
            continue;
        if (MaterialAsset asset = assetOf(document, i, *extras); !asset.uuid.empty())
            assets.push_back(std::move(asset));
    }
    return assets;
}

} // namespace

files::Expected<std::vector<MaterialAsset>> readMaterialAssets(const QString& path, const ReadOptions& options)
{
    try {
        return assetsIn(path, options);
    } catch (const files::Failure& failure) {
        return failure.error();
    } catch (const std::bad_alloc&) {
        return Error{{tr("There is not enough memory for the file."), path, {}}, ErrorCode::OutOfMemory};
    }
}

} // namespace files::gltf
