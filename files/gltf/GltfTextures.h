#pragma once

#include "files/ImageFiles.h"
#include "files/gltf/packing/GltfBuffer.h"
#include "host/OSGSystem/PhysicalSurface.h"

#include <nlohmann/json.hpp>

#include <map>
#include <optional>
#include <vector>

namespace files::gltf
{

/// The textures of a document. Images are taken when a surface first asks for them: from a buffer view without a copy,
/// from a "data:" address or from a file beside. What cannot be taken is a warning, and no texture.
class GltfTextures
{
public:
    /// The arguments outlive this object.
    GltfTextures(const nlohmann::json& document, const std::vector<GltfBuffer>& buffers, ReadTask& task);

    /// What the texture info `info` of a surface says, with `KHR_texture_transform`. Nothing when it names no texture,
    /// or one without an image. `place` is that of the info.
    std::optional<osg::Texture> texture(const nlohmann::json& info, const QString& place);

private:
    osg::EncodedImagePtr image(const nlohmann::json& texture, const QString& place);
    osg::EncodedImagePtr load(const nlohmann::json& image, const QString& place);
    osg::EncodedImagePtr fromView(std::uint64_t view, const nlohmann::json& image, const QString& place);
    osg::TextureSampler sampler(const nlohmann::json& texture) const;

    const nlohmann::json& m_document;
    const std::vector<GltfBuffer>& m_buffers;
    ReadTask& m_task;
    ImageFiles m_files;
    std::map<std::uint64_t, osg::EncodedImagePtr> m_images;
};

} // namespace files::gltf
