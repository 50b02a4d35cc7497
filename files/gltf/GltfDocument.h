#pragma once

#include "files/FileBytes.h"
#include "files/gltf/GltfCameras.h"
#include "files/gltf/GltfExtras.h"
#include "files/gltf/packing/GltfBuffer.h"
#include "host/OSGSystem/PhysicalSurface.h"

#include <tiny_gltf.h>

#include <vector>

namespace files::gltf
{

/// A glTF document. The model has the structure; its own buffers, cameras, images, textures, samplers, skins,
/// animations and extras are empty.
struct GltfDocument {
    tinygltf::Model model;
    std::vector<GltfBuffer> buffers;
    std::vector<std::optional<GltfCamera>> cameras;
    std::vector<osg::PhysicalSurface> surfaces; ///< of the materials
    GltfExtras extras;
};

/// Reads the file of `task` and the buffers that it refers to, none of them twice. Fails through `task` when the frame,
/// the JSON text or a buffer is damaged, or when the document requires an extension that this reader does not have.
GltfDocument openGltf(ReadTask& task);

} // namespace files::gltf
