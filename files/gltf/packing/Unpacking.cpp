#include "files/gltf/packing/Unpacking.h"

#include "files/gltf/packing/DracoMeshes.h"
#include "files/gltf/packing/PackedViews.h"

namespace files::gltf::packing
{

bool isUnpacked(std::string_view extension)
{
    return extension == "EXT_meshopt_compression" || extension == "KHR_draco_mesh_compression";
}

bool isPlaceholder(const nlohmann::json& buffer)
{
    const nlohmann::json::json_pointer place("/extensions/EXT_meshopt_compression/fallback");
    return !buffer.contains("uri") && buffer.contains(place) && buffer.at(place) == true;
}

void unpack(nlohmann::json& json, std::vector<GltfBuffer>& buffers, ReadTask& task)
{
    PackedDocument document{json, buffers, task};
    unpackViews(document);
    unpackDraco(document);
}

} // namespace files::gltf::packing
