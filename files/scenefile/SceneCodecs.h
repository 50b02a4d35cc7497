#pragma once

#include "host/OSGSystem/EncodedImage.h"
#include "host/OSGSystem/Material.h"
#include "host/znOpenSGExt/FileReference.h"
#include "scene/Mesh.h"

#include <scene_generated.h>

#include <optional>
#include <span>
#include <string_view>
#include <vector>

/// How each class of the scene graph is written and read. A new class is one more row in a table of SceneCodecs.cpp
/// and, if it has fields of its own, fields at the end of its table in scene.fbs; see docs/scene-file-format.md.
namespace osg::scenefile
{

namespace fb = osg::sceneformat;

/// Numbers the objects that others refer to; each number is an index + 1, and 0 for null.
class ObjectNumbers
{
public:
    virtual std::uint32_t material(const MaterialPtr& material) = 0;
    /// For the writer of a material: the number of one that it holds.
    virtual std::uint32_t subMaterial(const MaterialPtr& material) = 0;
    virtual std::uint32_t fileReference(const FileReferencePtr& file) = 0;
    virtual std::uint32_t mesh(const std::shared_ptr<const Mesh>& mesh) = 0;
    virtual std::uint32_t image(const EncodedImagePtr& image) = 0;
    /// The index (not the number) of a text, which must live until the file is written.
    virtual std::uint32_t text(std::string_view text) = 0;

protected:
    ~ObjectNumbers() = default;
};

/// Gives the objects back by the numbers that a checked file holds.
class NumberedObjects
{
public:
    virtual MaterialPtr material(std::uint32_t number) const = 0;
    virtual FileReferencePtr fileReference(std::uint32_t number) const = 0;
    virtual std::shared_ptr<const Mesh> mesh(std::uint32_t number) const = 0;
    virtual EncodedImagePtr image(std::uint32_t number) const = 0;
    virtual std::string text(std::uint32_t index) const = 0;

protected:
    ~NumberedObjects() = default;
};

/// The fields of `fb::Core` that classes fill.
struct CoreFields {
    std::optional<fb::Matrix> matrix;
    std::optional<fb::Components> components;
    std::uint32_t flags = 0;
    std::optional<fb::Reference> reference;
    std::uint32_t material = 0;
    std::uint32_t mesh = 0;
    std::optional<fb::Camera> camera;
};

struct MaterialFields {
    std::optional<fb::SimpleColors> simple;
    std::vector<std::uint32_t> materials;
    std::uint32_t choice = 0;
};

/// Indices and numbers of texts, as in the file; the paths are those of the table that is written.
struct VariantFields {
    struct NodeState {
        const std::vector<std::uint32_t>* node = nullptr;
        std::uint32_t state = 0;
    };
    struct Set {
        std::uint32_t name = 0;
        std::uint32_t group = 0;
        std::uint32_t viewpoint = 0;
        std::vector<std::uint32_t> viewpoints;
        std::vector<fb::MaterialState> materials;
        std::vector<NodeState> nodes;
    };
    std::vector<std::uint32_t> groups;
    std::vector<Set> sets;
};

/// As in the file.
struct SurfaceFields {
    fb::SurfaceFactors factors;
    std::vector<fb::Texture> textures;
};

struct AttachmentFields {
    std::vector<std::uint32_t> tags;
    std::optional<fb::FileInfo> fileInfo;
    std::optional<VariantFields> variants;
    std::optional<SurfaceFields> surface;
};

struct CoreCodec {
    const FieldContainerType& type;
    void (*write)(const NodeCore& core, ObjectNumbers& numbers, CoreFields& fields);
    NodeCorePtr (*read)(const fb::Core& record, const NumberedObjects& objects);
};

struct MaterialCodec {
    const FieldContainerType& type;
    void (*write)(const Material& material, ObjectNumbers& numbers, MaterialFields& fields);
    MaterialPtr (*read)(const fb::Material& record, const NumberedObjects& objects);
};

struct AttachmentCodec {
    const FieldContainerType& type;
    void (*write)(const Attachment& attachment, ObjectNumbers& numbers, AttachmentFields& fields);
    AttachmentPtr (*read)(const fb::Attachment& record, const NumberedObjects& objects);
};

std::span<const CoreCodec> coreCodecs();
std::span<const MaterialCodec> materialCodecs();
std::span<const AttachmentCodec> attachmentCodecs();

/// The codec of `type` or of its nearest base that has one, null if there is none.
template <class Codec>
const Codec* codecFor(std::span<const Codec> codecs, const FieldContainerType& type)
{
    for (const FieldContainerType* step = &type; step; step = step->getParent())
        for (const Codec& codec : codecs)
            if (&codec.type == step)
                return &codec;
    return nullptr;
}

} // namespace osg::scenefile
