#pragma once

#include "files/TextNumbers.h"
#include "files/scenefile/ArrayPlan.h"
#include "files/scenefile/AttributeRows.h"
#include "files/scenefile/ClassWarnings.h"
#include "files/scenefile/SceneCodecs.h"
#include "files/scenefile/WriteSceneFile.h"

#include <unordered_map>
#include <unordered_set>

namespace osg::scenefile
{

/// The places of the chunks in the table of every file that is written here; one without images has no chunk for them.
enum ChunkIndex : std::uint32_t { GraphChunk, MeshChunk, BRepChunk, ImageChunk, ChunkTotal };

/// Numbers objects from 1 on in the order in which they are first met; null has the number 0.
template <class T>
class Numbering
{
public:
    std::uint32_t of(const T* object) { return object ? numberOf(object) : 0; }
    /// The number of an object that is met only this once.
    std::uint32_t ofOnly(const T* object)
    {
        m_objects.push_back(object);
        return static_cast<std::uint32_t>(m_objects.size());
    }
    /// May grow while it is walked by index.
    const std::vector<const T*>& objects() const { return m_objects; }

private:
    std::uint32_t numberOf(const T* object)
    {
        const auto [place, fresh] = m_numbers.try_emplace(object, 0);
        if (fresh)
            place->second = ofOnly(object);
        return place->second;
    }

    std::unordered_map<const T*, std::uint32_t> m_numbers;
    std::vector<const T*> m_objects;
};

/// Collects a tree and everything that hangs on it, makes the GRAPH chunk of it and plans the others.
/// The tree must not change while the writer lives.
class GraphWriter final : private ObjectNumbers
{
public:
    explicit GraphWriter(const SceneFileWriteOptions& options) : m_limit(options.maxGraphBytes) {}

    files::Expected<void> collect(const NodePtr& root);

    std::span<const std::byte> graph() const;
    const ArrayPlan& meshArrays() const { return m_meshArrays; }
    const ArrayPlan& breps() const { return m_breps; }
    const ArrayPlan& images() const { return m_imageBytes; }
    const ClassWarnings& warnings() const { return m_warnings; }

private:
    /// What every object that takes attachments stores of them.
    struct Attached {
        std::uint32_t name = 0;
        std::uint32_t links = 0;
    };
    template <class T>
    using Offsets = std::vector<flatbuffers::Offset<T>>;

    std::uint32_t material(const MaterialPtr& material) override;
    std::uint32_t subMaterial(const MaterialPtr& material) override;
    std::uint32_t fileReference(const FileReferencePtr& file) override;
    std::uint32_t mesh(const std::shared_ptr<const Mesh>& mesh) override;
    std::uint32_t image(const EncodedImagePtr& image) override;
    std::uint32_t text(std::string_view text) override;

    void collectNodes(const NodePtr& root);
    void collectCores();
    void collectMaterials();
    void collectAttachments();
    void collectFileReferences();
    files::Expected<void> collectMeshes();
    void collectImages();
    void addMesh(const Mesh& mesh);
    void finish();

    /// Warns of an object that no codec can write.
    template <class Codec>
    bool canWrite(std::span<const Codec> codecs, const FieldContainer* object);
    /// The number of `object` if a codec can write it, else 0 and a warning.
    template <class Codec, class T>
    std::uint32_t numberOf(std::span<const Codec> codecs, Numbering<T>& numbering, const T* object);
    /// The codec that writes `object`; warns if it is that of a base class.
    template <class Codec>
    const Codec& codecOf(std::span<const Codec> codecs, const FieldContainer& object);
    Attached attachedTo(const AttachmentContainer& holder);
    std::uint16_t classIndex(const FieldContainerType& type);
    template <class T>
    std::optional<fb::Array> planned(const Buffer<T>& array, ArrayPlan& plan, ChunkIndex chunk);
    /// Tells whether the graph can take `bytes` more; if not, nothing is added to it any more.
    bool hasRoomFor(std::uint64_t bytes);

    std::uint64_t m_limit;
    bool m_full = false;
    flatbuffers::FlatBufferBuilder m_builder{1 << 16};
    ClassWarnings m_warnings;
    ArrayPlan m_meshArrays;
    ArrayPlan m_breps;
    ArrayPlan m_imageBytes;

    Numbering<NodeCore> m_cores;
    Numbering<Material> m_materials;
    Numbering<Attachment> m_attachments;
    Numbering<FileReference> m_files;
    Numbering<Mesh> m_meshes;
    Numbering<EncodedImage> m_images;
    std::unordered_set<const FieldContainer*> m_leftOut;
    files::TextNumbers m_texts;
    AttributeRows m_attributes;
    std::uint32_t m_holders = 0; ///< met by now
    std::unordered_map<const FieldContainerType*, std::uint16_t> m_classes;

    std::vector<fb::Node> m_nodeRecords;
    std::vector<fb::Link> m_linkRecords;
    std::vector<fb::FileReference> m_fileRecords;
    Offsets<flatbuffers::String> m_textRecords;
    Offsets<fb::ClassName> m_classRecords;
    Offsets<fb::Core> m_coreRecords;
    Offsets<fb::Material> m_materialRecords;
    Offsets<fb::Attachment> m_attachmentRecords;
    Offsets<fb::Mesh> m_meshRecords;
    std::vector<fb::Image> m_imageRecords;
};

} // namespace osg::scenefile
