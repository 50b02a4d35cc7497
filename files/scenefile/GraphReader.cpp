#include "files/scenefile/GraphReader.h"

#include "files/scenefile/AttributeRows.h"
#include "files/scenefile/ClassTable.h"
#include "host/OSGSystem/Edit.h"
#include "scene/Attachments.h"

#include <utility>

namespace osg::scenefile
{

namespace
{

constexpr std::uint32_t inactiveFlag = 1;

/// Destroys a tree that nobody has counted yet, unless it is handed on.
class FreshRoot
{
public:
    explicit FreshRoot(const NodePtr& root) : m_root(root) {}
    FreshRoot(const FreshRoot&) = delete;
    FreshRoot& operator=(const FreshRoot&) = delete;
    ~FreshRoot()
    {
        m_root.addRef();
        m_root.subRef();
    }
    NodePtr handOn() { return std::exchange(m_root, NodePtr()); }

private:
    NodePtr m_root;
};

template <class T>
T numbered(const std::vector<T>& objects, std::uint32_t number)
{
    return number == 0 ? T() : objects[number - 1];
}

template <class Ptr>
Ptr numbered(const std::vector<RefPtr<Ptr>>& objects, std::uint32_t number)
{
    return number == 0 ? Ptr() : objects[number - 1].get();
}

} // namespace

GraphReader::GraphReader(const fb::Scene& scene, MeshList meshes, ImageList images, std::shared_ptr<const void> owner)
    : m_scene(scene), m_meshes(std::move(meshes)), m_images(std::move(images))
{
    const fb::AttributeTable* table = scene.attributes();
    if (!table || !table->uses())
        return;
    m_attributes.emplace(makeAttributeSource(*table, std::move(owner)), table->rows()->size());
    m_uses = {reinterpret_cast<const fb::AttributeUse*>(table->uses()->Data()), table->uses()->size()};
    m_rowRecords = reinterpret_cast<const fb::AttributeRow*>(table->rows()->Data());
}

template <class Record, class Codec, class Ptr>
void GraphReader::readAll(const flatbuffers::Vector<flatbuffers::Offset<Record>>* records,
                          std::span<const Codec> codecs, Objects<Ptr>& objects)
{
    if (!records)
        return;
    const ClassTable<Codec> classes(m_scene, codecs);
    objects.reserve(records->size());
    for (const Record* record : *records) {
        const Codec* codec = classes.codec(record->class_index(), m_warnings);
        objects.emplace_back(codec ? codec->read(*record, *this) : Ptr());
    }
}

template <class Record, class Ptr>
void GraphReader::attachAll(const flatbuffers::Vector<flatbuffers::Offset<Record>>* records,
                            const Objects<Ptr>& holders)
{
    for (std::size_t i = 0; i < holders.size(); ++i) {
        const Record& record = *records->Get(static_cast<flatbuffers::uoffset_t>(i));
        attach(holders[i].get(), record.name(), record.links());
    }
}

NodePtr GraphReader::read()
{
    readFileReferences();
    readAll(m_scene.attachments(), attachmentCodecs(), m_attachments);
    readAll(m_scene.materials(), materialCodecs(), m_materials);
    readAll(m_scene.cores(), coreCodecs(), m_cores);
    std::vector<NodePtr> nodes;
    nodes.reserve(m_scene.nodes()->size());
    nodes.push_back(Node::create());
    FreshRoot root(nodes.front());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const fb::Node& record = *m_scene.nodes()->Get(static_cast<flatbuffers::uoffset_t>(i));
        fillNode(nodes[i], record);
        addChildren(nodes[i], record.children(), nodes);
    }
    attachAll(m_scene.cores(), m_cores);
    attachAll(m_scene.materials(), m_materials);
    return root.handOn();
}

void GraphReader::readFileReferences()
{
    if (!m_scene.file_references())
        return;
    for (const fb::FileReference* record : *m_scene.file_references()) {
        const FileReferencePtr file = FileReferenceBase::create();
        m_files.emplace_back(file);
        beginEditCP(file, FileReferenceBase::PathFieldMask | FileReferenceBase::RelativePathFieldMask, 1);
        file->setPath(text(record->path()));
        file->setRelativePath(text(record->relative_path()));
        endEditCP(file, FileReferenceBase::PathFieldMask | FileReferenceBase::RelativePathFieldMask, 1);
    }
}

void GraphReader::fillNode(const NodePtr& node, const fb::Node& record)
{
    if (const NodeCorePtr core = numbered(m_cores, record.core())) {
        beginEditCP(node, Node::CoreFieldMask, 1);
        node->setCore(core);
        endEditCP(node, Node::CoreFieldMask, 1);
    }
    if (record.flags() & inactiveFlag) {
        beginEditCP(node, Node::ActiveFieldMask, 1);
        node->setActive(false);
        endEditCP(node, Node::ActiveFieldMask, 1);
    }
    attach(node, record.name(), record.links());
}

void GraphReader::addChildren(const NodePtr& node, std::uint32_t count, std::vector<NodePtr>& nodes)
{
    if (count == 0)
        return;
    beginEditCP(node, Node::ChildrenFieldMask, 1);
    for (std::uint32_t i = 0; i < count; ++i) {
        nodes.push_back(Node::create());
        node->addChild(nodes.back());
    }
    endEditCP(node, Node::ChildrenFieldMask, 1);
}

void GraphReader::attach(const AttachmentContainerPtr& holder, std::uint32_t name, std::uint32_t links)
{
    attachLinked(holder, name, std::exchange(m_nextLink, m_nextLink + links), links);
    const std::uint32_t number = m_nextHolder++;
    for (; !m_uses.empty() && m_uses.front().holder() == number; m_uses = m_uses.subspan(1)) {
        const AttributeAttachment::Ptr attributes = this->attributes(m_uses.front().row());
        if (holder)
            AttachmentAccess::add(*holder, *attributes, static_cast<unsigned short>(m_uses.front().binding()));
        else
            m_attachments.emplace_back(attributes);
    }
}

void GraphReader::attachLinked(const AttachmentContainerPtr& holder, std::uint32_t name, std::uint32_t first,
                               std::uint32_t links)
{
    if (!holder || (name == 0 && links == 0))
        return;
    beginEditCP(holder, AttachmentContainer::AttachmentsFieldMask, 1);
    if (name != 0)
        holder->addAttachment(NameAttachment::create(text(name - 1)));
    for (std::uint32_t i = first; i < first + links; ++i) {
        const fb::Link& link = *m_scene.links()->Get(i);
        holder->addAttachment(m_attachments[link.attachment()], static_cast<unsigned short>(link.binding()));
    }
    endEditCP(holder, AttachmentContainer::AttachmentsFieldMask, 1);
}

/// Rows are first used in their order, and those who hold them stay until the end.
AttributeAttachment::Ptr GraphReader::attributes(std::uint32_t row)
{
    return row < m_attributes->size() ? (*m_attributes)[row] : m_attributes->create(m_rowRecords + row);
}

MaterialPtr GraphReader::material(std::uint32_t number) const
{
    return numbered(m_materials, number);
}

FileReferencePtr GraphReader::fileReference(std::uint32_t number) const
{
    return numbered(m_files, number);
}

std::shared_ptr<const Mesh> GraphReader::mesh(std::uint32_t number) const
{
    return numbered(m_meshes, number);
}

EncodedImagePtr GraphReader::image(std::uint32_t number) const
{
    return numbered(m_images, number);
}

std::string GraphReader::text(std::uint32_t index) const
{
    return m_scene.texts()->Get(index)->str();
}

} // namespace osg::scenefile
