#pragma once

#include "files/ReadTask.h"
#include "files/gltf/packing/GltfBuffer.h"

#include <nlohmann/json.hpp>

#include <string_view>
#include <vector>

/// Turns packed glTF documents into plain ones before they are read.
namespace files::gltf::packing
{

/// Whether `unpack` takes a document that requires this extension.
bool isUnpacked(std::string_view extension);

/// Whether `buffer`, an entry of the list of buffers, only stands for the unpacked bytes of views and has none itself.
bool isPlaceholder(const nlohmann::json& buffer);

/// Unpacks what `EXT_meshopt_compression` and `KHR_draco_mesh_compression` have packed in the document `json`: its
/// views and primitives refer to plain data in `buffers` then, which grow. Everything is checked and held against the
/// limits of `task` before it is unpacked. Fails through `task` with the place in the document.
void unpack(nlohmann::json& json, std::vector<GltfBuffer>& buffers, ReadTask& task);

} // namespace files::gltf::packing
