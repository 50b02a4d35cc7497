#include "files/scenefile/GraphWriter.h"

#include "files/scenefile/MeshCheck.h"
#include "files/scenefile/SceneErrors.h"
#include "files/scenefile/SurfaceFields.h"
#include "files/scenefile/VariantFields.h"
#include "scene/Attachments.h"
#include "scene/SubMaterials.h"

#include <limits>
#include <map>

namespace osg::scenefile
{

namespace
{

/// More than any record of fixed size takes in the buffer, and more than the heads of all vectors.
constexpr std::uint64_t recordBytes = 256;

template <class T>
const T* pointerTo(const std::optional<T>& value)
{
    return value ? &*value : nullptr;
}

} // namespace

files::Expected<void> GraphWriter::collect(const NodePtr& root)
{
    collectNodes(root);
    collectCores();
    collectMaterials();
    collectAttachments();
    collectFileReferences();
    if (const files::Expected<void> collected = collectMeshes(); !collected)
        return collected;
    collectImages();
    if (!hasRoomFor(recordBytes))
        return makeError(files::ErrorCode::LimitExceeded, Text::tr("The graph of the scene is too large for the file"));
    finish();
    return {};
}

std::span<const std::byte> GraphWriter::graph() const
{
    return {reinterpret_cast<const std::byte*>(m_builder.GetBufferPointer()), m_builder.GetSize()};
}

bool GraphWriter::hasRoomFor(std::uint64_t bytes)
{
    const std::uint64_t offsets = m_textRecords.size() + m_classRecords.size() + m_coreRecords.size() +
                                  m_materialRecords.size() + m_attachmentRecords.size() + m_meshRecords.size();
    const std::uint64_t pending = m_nodeRecords.size() * sizeof(fb::Node) + m_linkRecords.size() * sizeof(fb::Link) +
                                  m_fileRecords.size() * sizeof(fb::FileReference) +
                                  m_imageRecords.size() * sizeof(fb::Image) + offsets * sizeof(flatbuffers::uoffset_t) +
                                  m_attributes.bytes();
    m_full = m_full || m_builder.GetSize() + pending + bytes > m_limit;
    return !m_full;
}

void GraphWriter::collectNodes(const NodePtr& root)
{
    std::vector<const Node*> nodes = {root.get()};
    for (std::size_t i = 0; i < nodes.size() && hasRoomFor(recordBytes); ++i) {
        const Node& node = *nodes[i];
        for (unsigned child = 0; child < node.getNChildren(); ++child)
            nodes.push_back(node.getChild(child).get());
        const std::uint32_t core = numberOf(coreCodecs(), m_cores, const_cast<const NodeCore*>(node.getCore().get()));
        const Attached attached = attachedTo(node);
        m_nodeRecords.emplace_back(core, node.getNChildren(), attached.name, attached.links, node.isActive() ? 0 : 1);
    }
}

void GraphWriter::collectCores()
{
    for (std::size_t i = 0; i < m_cores.objects().size() && hasRoomFor(recordBytes); ++i) {
        const NodeCore& core = *m_cores.objects()[i];
        const CoreCodec& codec = codecOf(coreCodecs(), core);
        const Attached attached = attachedTo(core);
        const std::uint16_t classPlace = classIndex(codec.type);
        CoreFields fields;
        codec.write(core, *this, fields);
        m_coreRecords.push_back(fb::CreateCore(m_builder, classPlace, attached.name, attached.links,
                                               pointerTo(fields.matrix), pointerTo(fields.components), fields.flags,
                                               pointerTo(fields.reference), fields.material, fields.mesh,
                                               pointerTo(fields.camera)));
    }
}

void GraphWriter::collectMaterials()
{
    for (std::size_t i = 0; i < m_materials.objects().size() && hasRoomFor(recordBytes); ++i) {
        const Material& material = *m_materials.objects()[i];
        const MaterialCodec& codec = codecOf(materialCodecs(), material);
        const Attached attached = attachedTo(material);
        const std::uint16_t classPlace = classIndex(codec.type);
        MaterialFields fields;
        codec.write(material, *this, fields);
        for (std::uint32_t& inner : fields.materials)
            inner = inner <= i ? inner : 0; // a ring in memory is cut
        if (!hasRoomFor(recordBytes + fields.materials.size() * sizeof(std::uint32_t)))
            return;
        const auto inside = fields.materials.empty() ? 0 : m_builder.CreateVector(fields.materials);
        m_materialRecords.push_back(fb::CreateMaterial(m_builder, classPlace, attached.name, attached.links,
                                                       pointerTo(fields.simple), inside, fields.choice));
    }
}

void GraphWriter::collectAttachments()
{
    for (std::size_t i = 0; i < m_attachments.objects().size(); ++i) {
        const Attachment& attachment = *m_attachments.objects()[i];
        const AttachmentCodec& codec = codecOf(attachmentCodecs(), attachment);
        const std::uint16_t classPlace = classIndex(codec.type);
        AttachmentFields fields;
        codec.write(attachment, *this, fields);
        const std::uint64_t variantBytes = fields.variants ? storedSize(*fields.variants) : 0;
        const std::uint64_t surfaceBytes = fields.surface ? storedSize(*fields.surface) : 0;
        if (!hasRoomFor(recordBytes + fields.tags.size() * sizeof(std::uint32_t) + variantBytes + surfaceBytes))
            return;
        const auto tags = m_builder.CreateVector(fields.tags);
        const auto variants = fields.variants ? storeVariants(*fields.variants, m_builder) : 0;
        const auto surface = fields.surface ? storeSurface(*fields.surface, m_builder) : 0;
        m_attachmentRecords.push_back(
            fb::CreateAttachment(m_builder, classPlace, tags, pointerTo(fields.fileInfo), variants, 0, 0, surface));
    }
}

void GraphWriter::collectFileReferences()
{
    for (std::size_t i = 0; i < m_files.objects().size() && hasRoomFor(recordBytes); ++i) {
        const FileReference& file = *m_files.objects()[i];
        const std::uint32_t path = text(file.getPath());
        m_fileRecords.emplace_back(path, text(file.getRelativePath()));
    }
}

files::Expected<void> GraphWriter::collectMeshes()
{
    MeshCheck check(std::numeric_limits<std::uint64_t>::max());
    for (std::size_t i = 0; i < m_meshes.objects().size() && hasRoomFor(2 * recordBytes); ++i) {
        if (const auto defect = check.defect(*m_meshes.objects()[i]))
            return makeError(files::ErrorCode::InvalidMesh, *defect);
        addMesh(*m_meshes.objects()[i]);
    }
    return {};
}

void GraphWriter::collectImages()
{
    for (std::size_t i = 0; i < m_images.objects().size() && hasRoomFor(recordBytes); ++i) {
        const EncodedImage& image = *m_images.objects()[i];
        const fb::Array bytes(m_imageBytes.place(image.bytes()), image.bytes().size(), ImageChunk);
        const std::uint32_t name = text(image.name());
        m_imageRecords.emplace_back(bytes, name, text(image.mimeType()));
    }
}

template <class T>
std::optional<fb::Array> GraphWriter::planned(const Buffer<T>& array, ArrayPlan& plan, ChunkIndex chunk)
{
    if (array.empty())
        return std::nullopt;
    return fb::Array(plan.place(array), array.size(), chunk);
}

void GraphWriter::addMesh(const Mesh& mesh)
{
    const auto positions = planned(mesh.positions, m_meshArrays, MeshChunk);
    const auto normals = planned(mesh.normals, m_meshArrays, MeshChunk);
    const auto texCoords = planned(mesh.texCoords, m_meshArrays, MeshChunk);
    const auto texCoords1 = planned(mesh.texCoords1, m_meshArrays, MeshChunk);
    const auto colors = planned(mesh.colors, m_meshArrays, MeshChunk);
    const auto triangles = planned(mesh.triangles, m_meshArrays, MeshChunk);
    const auto lines = planned(mesh.lines, m_meshArrays, MeshChunk);
    const auto points = planned(mesh.points, m_meshArrays, MeshChunk);
    const auto faces = planned(mesh.faces, m_meshArrays, MeshChunk);
    const auto occlusion = planned(mesh.occlusion, m_meshArrays, MeshChunk);
    const auto brep = planned(mesh.brep, m_breps, BRepChunk);
    m_meshRecords.push_back(fb::CreateMesh(m_builder, pointerTo(positions), pointerTo(normals), pointerTo(texCoords),
                                           pointerTo(colors), pointerTo(triangles), pointerTo(lines), pointerTo(points),
                                           pointerTo(faces), pointerTo(brep), pointerTo(occlusion),
                                           pointerTo(texCoords1)));
}

void GraphWriter::finish()
{
    const auto texts = m_builder.CreateVector(m_textRecords);
    const auto classes = m_builder.CreateVector(m_classRecords);
    const auto nodes = m_builder.CreateVectorOfStructs(m_nodeRecords);
    const auto links = m_builder.CreateVectorOfStructs(m_linkRecords);
    const auto cores = m_builder.CreateVector(m_coreRecords);
    const auto materials = m_builder.CreateVector(m_materialRecords);
    const auto attachments = m_builder.CreateVector(m_attachmentRecords);
    const auto files = m_builder.CreateVectorOfStructs(m_fileRecords);
    const auto meshes = m_builder.CreateVector(m_meshRecords);
    const auto attributes = m_attributes.store(m_builder);
    const auto images = m_imageRecords.empty() ? 0 : m_builder.CreateVectorOfStructs(m_imageRecords);
    fb::FinishSceneBuffer(m_builder, fb::CreateScene(m_builder, texts, classes, nodes, links, cores, materials,
                                                     attachments, files, meshes, attributes, images));
}

/// What a material holds gets its number before it, so that files hold no rings.
std::uint32_t GraphWriter::material(const MaterialPtr& material)
{
    if (!directSubMaterials(material).empty())
        for (const MaterialPtr& inner : subMaterialsFirst(material))
            if (!(inner == material))
                subMaterial(inner);
    return numberOf(materialCodecs(), m_materials, const_cast<const Material*>(material.get()));
}

std::uint32_t GraphWriter::subMaterial(const MaterialPtr& material)
{
    return canWrite(materialCodecs(), material.get()) ? m_materials.of(material.get()) : 0;
}

std::uint32_t GraphWriter::fileReference(const FileReferencePtr& file)
{
    return m_files.of(file.get());
}

std::uint32_t GraphWriter::mesh(const std::shared_ptr<const Mesh>& mesh)
{
    return m_meshes.of(mesh.get());
}

std::uint32_t GraphWriter::image(const EncodedImagePtr& image)
{
    return m_images.of(image.get());
}

std::uint32_t GraphWriter::text(std::string_view text)
{
    const files::TextNumbers::Entry entry = m_texts.add(text);
    if (entry.fresh && hasRoomFor(recordBytes + text.size()))
        m_textRecords.push_back(m_builder.CreateString(text));
    return entry.index;
}

template <class Codec>
bool GraphWriter::canWrite(std::span<const Codec> codecs, const FieldContainer* object)
{
    if (!object || codecFor(codecs, object->getType()))
        return true;
    if (m_leftOut.insert(object).second)
        m_warnings.add(object->getType().getName(), {});
    return false;
}

template <class Codec, class T>
std::uint32_t GraphWriter::numberOf(std::span<const Codec> codecs, Numbering<T>& numbering, const T* object)
{
    if (!canWrite(codecs, object))
        return 0;
    // Who holds the only reference is the only one to meet it.
    return object && object->getRefCount() == 1 ? numbering.ofOnly(object) : numbering.of(object);
}

template <class Codec>
const Codec& GraphWriter::codecOf(std::span<const Codec> codecs, const FieldContainer& object)
{
    const Codec& codec = *codecFor(codecs, object.getType());
    if (&codec.type != &object.getType())
        m_warnings.add(object.getType().getName(), codec.type.getName());
    return codec;
}

GraphWriter::Attached GraphWriter::attachedTo(const AttachmentContainer& holder)
{
    Attached attached;
    const std::uint32_t holderNumber = m_holders++;
    const AttachmentMap* map = AttachmentAccess::map(holder);
    if (!map)
        return attached;
    const std::uint32_t nameKey = AttachmentMap::key(NameAttachment::_type.getGroupId(), 0);
    std::map<std::uint16_t, const Attachment*> own; // attributes by binding
    for (const AttachmentMap::Entry& entry : map->entries()) {
        if (&entry.attachment->getType() == &AttributeAttachment::_type) {
            own.emplace(static_cast<std::uint16_t>(entry.key), entry.attachment);
            continue;
        }
        if (entry.key == nameKey) {
            attached.name = text(static_cast<const NameAttachment*>(entry.attachment)->name()) + 1;
            continue;
        }
        const std::uint32_t number =
            numberOf(attachmentCodecs(), m_attachments, const_cast<const Attachment*>(entry.attachment));
        if (number == 0)
            continue;
        m_linkRecords.emplace_back(number - 1, entry.key & 0xFFFF);
        ++attached.links;
    }
    for (const auto& [binding, attributes] : own)
        m_attributes.use(holderNumber, static_cast<const AttributeAttachment&>(*attributes), binding);
    return attached;
}

std::uint16_t GraphWriter::classIndex(const FieldContainerType& type)
{
    const auto [place, fresh] = m_classes.try_emplace(&type, static_cast<std::uint16_t>(m_classRecords.size()));
    if (fresh) {
        Offsets<flatbuffers::String> names;
        for (const FieldContainerType* step = &type; step; step = step->getParent())
            names.push_back(m_builder.CreateSharedString(step->getName()));
        m_classRecords.push_back(fb::CreateClassName(m_builder, m_builder.CreateVector(names)));
    }
    return place->second;
}

} // namespace osg::scenefile
