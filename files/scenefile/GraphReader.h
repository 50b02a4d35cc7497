#pragma once

#include "files/scenefile/ClassWarnings.h"
#include "files/scenefile/MeshReader.h"
#include "files/scenefile/SceneCodecs.h"

namespace osg::scenefile
{

/// Makes the tree of a checked graph. Nothing in it can fail but the memory.
class GraphReader final : private NumberedObjects
{
public:
    /// `owner` keeps the bytes of `scene` alive.
    GraphReader(const fb::Scene& scene, MeshList meshes, std::shared_ptr<const void> owner);

    /// The root has the count 0.
    NodePtr read();

    const ClassWarnings& warnings() const { return m_warnings; }

private:
    template <class Ptr>
    using Objects = std::vector<RefPtr<Ptr>>;

    MaterialPtr material(std::uint32_t number) const override;
    FileReferencePtr fileReference(std::uint32_t number) const override;
    std::shared_ptr<const Mesh> mesh(std::uint32_t number) const override;
    std::string text(std::uint32_t index) const override;
    const std::shared_ptr<const AttributeSource>& attributeSource() const override { return m_attributes; }

    void readFileReferences();
    template <class Record, class Codec, class Ptr>
    void readAll(const flatbuffers::Vector<flatbuffers::Offset<Record>>* records, std::span<const Codec> codecs,
                 Objects<Ptr>& objects);
    void fillNode(const NodePtr& node, const fb::Node& record);
    void addChildren(const NodePtr& node, std::uint32_t count, std::vector<NodePtr>& nodes);
    template <class Record, class Ptr>
    void attachAll(const flatbuffers::Vector<flatbuffers::Offset<Record>>* records, const Objects<Ptr>& holders);
    /// Holders take their links in the order of the file: all nodes, all cores, all materials. A null holder passes
    /// over its own.
    void attach(const AttachmentContainerPtr& holder, std::uint32_t name, std::uint32_t links);

    const fb::Scene& m_scene;
    MeshList m_meshes;
    std::shared_ptr<const AttributeSource> m_attributes;
    ClassWarnings m_warnings;
    Objects<FileReferencePtr> m_files;
    Objects<AttachmentPtr> m_attachments;
    Objects<MaterialPtr> m_materials;
    Objects<NodeCorePtr> m_cores;
    std::uint32_t m_nextLink = 0;
};

} // namespace osg::scenefile
