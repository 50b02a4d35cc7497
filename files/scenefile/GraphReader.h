#pragma once

#include "files/scenefile/ClassWarnings.h"
#include "files/scenefile/ImageReader.h"
#include "files/scenefile/MeshReader.h"
#include "files/scenefile/SceneCodecs.h"
#include "scene/Attributes.h"

namespace osg::scenefile
{

/// Makes the tree of a checked graph. Nothing in it can fail but the memory.
class GraphReader final : private NumberedObjects
{
public:
    /// `owner` keeps the bytes of `scene` alive.
    GraphReader(const fb::Scene& scene, MeshList meshes, ImageList images, std::shared_ptr<const void> owner);

    /// The root has the count 0.
    NodePtr read();

    const ClassWarnings& warnings() const { return m_warnings; }

private:
    template <class Ptr>
    using Objects = std::vector<RefPtr<Ptr>>;

    MaterialPtr material(std::uint32_t number) const override;
    FileReferencePtr fileReference(std::uint32_t number) const override;
    std::shared_ptr<const Mesh> mesh(std::uint32_t number) const override;
    EncodedImagePtr image(std::uint32_t number) const override;
    std::string text(std::uint32_t index) const override;

    void readFileReferences();
    template <class Record, class Codec, class Ptr>
    void readAll(const flatbuffers::Vector<flatbuffers::Offset<Record>>* records, std::span<const Codec> codecs,
                 Objects<Ptr>& objects);
    void fillNode(const NodePtr& node, const fb::Node& record);
    void addChildren(const NodePtr& node, std::uint32_t count, std::vector<NodePtr>& nodes);
    template <class Record, class Ptr>
    void attachAll(const flatbuffers::Vector<flatbuffers::Offset<Record>>* records, const Objects<Ptr>& holders);
    /// Holders take their links and their attributes in the order of the file: all nodes, all cores, all materials. A
    /// null holder passes over its own.
    void attach(const AttachmentContainerPtr& holder, std::uint32_t name, std::uint32_t links);
    void attachLinked(const AttachmentContainerPtr& holder, std::uint32_t name, std::uint32_t first,
                      std::uint32_t links);
    AttributeAttachment::Ptr attributes(std::uint32_t row);

    const fb::Scene& m_scene;
    MeshList m_meshes;
    ImageList m_images;
    std::optional<AttributeBlock> m_attributes;
    std::span<const fb::AttributeUse> m_uses; ///< that are not attached yet
    const fb::AttributeRow* m_rowRecords = nullptr;
    ClassWarnings m_warnings;
    Objects<FileReferencePtr> m_files;
    Objects<AttachmentPtr> m_attachments;
    Objects<MaterialPtr> m_materials;
    Objects<NodeCorePtr> m_cores;
    std::uint32_t m_nextLink = 0;
    std::uint32_t m_nextHolder = 0;
};

} // namespace osg::scenefile
