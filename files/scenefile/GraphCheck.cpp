#include "files/scenefile/GraphCheck.h"

#include "files/scenefile/AttributeCheck.h"
#include "files/scenefile/SceneErrors.h"
#include "files/scenefile/SurfaceFields.h"

#include <algorithm>

namespace osg::scenefile
{

namespace fb = osg::sceneformat;

namespace
{

using Code = files::ErrorCode;

constexpr std::uint64_t bytesPerText = 32;
constexpr unsigned maxMaterialNesting = 100;

template <class T>
std::uint64_t sizeOf(const flatbuffers::Vector<T>* vector)
{
    return vector ? vector->size() : 0;
}

/// One pass over the graph. The first defect counts.
class GraphCheck
{
public:
    GraphCheck(const fb::Scene& scene, const std::byte* start, const SceneFileReadOptions& options)
        : m_scene(scene), m_start(start), m_options(options)
    {
    }

    files::Expected<void> run()
    {
        checkNodes();
        each(m_scene.cores(), [this](const fb::Core& core) { checkCore(core); });
        each(m_scene.materials(), [this](const fb::Material& material) { checkMaterial(material); });
        if (m_usedLinks != sizeOf(m_scene.links()))
            damaged(Text::tr("The attachments do not match their holders"), m_scene);
        each(m_scene.links(), [this](const fb::Link& link) { checkLink(link); });
        each(m_scene.attachments(), [this](const fb::Attachment& attachment) { checkAttachment(attachment); });
        each(m_scene.file_references(), [this](const fb::FileReference& file) { checkFile(file); });
        each(m_scene.images(), [this](const fb::Image& image) {
            checkText(image.name(), image);
            checkText(image.mime_type(), image);
        });
        each(m_scene.classes(), [this](const fb::ClassName& name) { checkClassName(name); });
        if (m_scene.attributes() && !m_error)
            checkAttributeTable(*m_scene.attributes());
        return m_error ? files::Expected<void>(*m_error) : files::Expected<void>();
    }

private:
    template <class T, class Check>
    void each(const flatbuffers::Vector<T>* records, const Check& check)
    {
        for (std::uint64_t i = 0; i < sizeOf(records) && !m_error; ++i)
            check(*records->Get(static_cast<flatbuffers::uoffset_t>(i)));
    }

    template <class T>
    void fail(Code code, const QString& message, const T& place)
    {
        const auto offset = reinterpret_cast<const std::byte*>(&place) - m_start;
        if (!m_error)
            m_error = makeError(code, message, static_cast<std::uint64_t>(offset));
    }
    template <class T>
    void damaged(const QString& message, const T& place)
    {
        fail(Code::DamagedGraph, message, place);
    }

    /// The children of all nodes follow each other, so that the counts must never run ahead of the nodes that are there
    /// nor fall behind the node that is looked at.
    void checkNodes()
    {
        const std::uint64_t count = sizeOf(m_scene.nodes());
        if (count == 0)
            return damaged(Text::tr("The scene has no node"), m_scene);
        std::uint64_t reached = 1;
        for (std::uint64_t i = 0; i < count && !m_error; ++i) {
            const fb::Node& node = *m_scene.nodes()->Get(static_cast<flatbuffers::uoffset_t>(i));
            reached += node.children();
            if (reached > count || (reached == i + 1 && reached < count))
                damaged(Text::tr("The nodes do not form one tree"), node);
            checkNode(node);
        }
    }

    void checkNode(const fb::Node& node)
    {
        addContainers(1, node);
        checkNumber(node.core(), sizeOf(m_scene.cores()), node);
        checkAttached(node.name(), node.links(), node);
    }

    void checkCore(const fb::Core& core)
    {
        checkHolder(core, core);
        checkNumber(core.material(), sizeOf(m_scene.materials()), core);
        checkNumber(core.mesh(), sizeOf(m_scene.meshes()), core);
        if (const fb::Reference* reference = core.reference()) {
            checkNumber(reference->source_file(), sizeOf(m_scene.file_references()), core);
            checkNumber(reference->smart_file(), sizeOf(m_scene.file_references()), core);
        }
    }

    /// A material holds those before it only, so that there are no rings; nesting has a limit, as whoever destroys one
    /// goes down through it.
    void checkMaterial(const fb::Material& material)
    {
        checkHolder(material, material);
        unsigned nesting = 0;
        for (std::uint64_t i = 0; i < sizeOf(material.materials()) && !m_error; ++i) {
            const std::uint32_t number = material.materials()->Get(static_cast<flatbuffers::uoffset_t>(i));
            checkNumber(number, m_materialNesting.size(), material);
            addContainers(1, material);
            if (number != 0 && !m_error)
                nesting = std::max(nesting, m_materialNesting[number - 1] + 1u);
        }
        m_materialNesting.push_back(static_cast<std::uint8_t>(nesting));
        if (nesting > maxMaterialNesting)
            damaged(Text::tr("The materials are nested too deeply"), material);
    }

    template <class Record>
    void checkHolder(const Record& record, const Record& place)
    {
        addContainers(1, place);
        checkIndex(record.class_index(), sizeOf(m_scene.classes()), place);
        checkAttached(record.name(), record.links(), place);
    }

    void checkLink(const fb::Link& link)
    {
        checkIndex(link.attachment(), sizeOf(m_scene.attachments()), link);
        checkIndex(link.binding(), 0x10000, link);
    }

    void checkAttachment(const fb::Attachment& attachment)
    {
        addContainers(1, attachment);
        checkIndex(attachment.class_index(), sizeOf(m_scene.classes()), attachment);
        checkTexts(attachment.tags(), attachment);
        if (attachment.attributes())
            checkAttributes(attachment);
        if (attachment.variants())
            checkVariants(*attachment.variants());
        if (attachment.surface() && !isSound(*attachment.surface(), sizeOf(m_scene.images())))
            damaged(Text::tr("A surface has values that do not exist"), attachment);
        if (const fb::FileInfo* info = attachment.file_info())
            for (const std::uint32_t text :
                 {info->file_name(), info->format(), info->import_applied_material_assets_url()})
                checkText(text, attachment);
    }

    /// The lists of an attachment share its items; none may take more than are left.
    void checkAttributes(const fb::Attachment& attachment)
    {
        std::uint64_t items = sizeOf(attachment.items());
        checkTexts(attachment.items(), attachment);
        const std::uint64_t texts = sizeOf(m_scene.texts());
        for (const fb::Attribute* attribute : *attachment.attributes()) {
            if (m_error)
                return;
            using Type = fb::AttributeType;
            const Type type = attribute->type();
            if (type > Type::MAX)
                return damaged(Text::tr("An attribute is of no known type"), *attribute);
            const bool isText = type == Type::Text || type == Type::Date;
            const bool isList = type == Type::List;
            if (attribute->name() >= texts || attribute->unit() > texts || (isText && attribute->bits() >= texts) ||
                (isList && attribute->bits() > items))
                return damaged(Text::tr("A reference has no target"), *attribute);
            items -= isList ? attribute->bits() : 0;
            addTextBytes(textBytes(attribute->name()) + (attribute->unit() > 0 ? textBytes(attribute->unit() - 1) : 0) +
                             (isText ? textBytes(attribute->bits()) : 0),
                         *attribute);
        }
    }

    void checkAttributeTable(const fb::AttributeTable& table)
    {
        addContainers(sizeOf(table.rows()), table);
        const std::uint64_t holders = sizeOf(m_scene.nodes()) + sizeOf(m_scene.cores()) + sizeOf(m_scene.materials());
        const std::uint64_t textsLeft = m_options.maxTextBytes - std::min(m_options.maxTextBytes, m_textBytes);
        if (const auto defect = defectOf(table, {holders, textsLeft, bytesPerText}))
            fail(defect->code, defect->message, *static_cast<const std::byte*>(defect->place));
    }

    std::uint64_t textBytes(std::uint64_t index) const
    {
        return bytesPerText + m_scene.texts()->Get(static_cast<flatbuffers::uoffset_t>(index))->size();
    }

    void checkVariants(const fb::Variants& variants)
    {
        checkTexts(variants.groups(), variants);
        each(variants.sets(), [this](const fb::VariantSet& set) { checkVariantSet(set); });
    }

    void checkVariantSet(const fb::VariantSet& set)
    {
        checkText(set.name(), set);
        for (const std::uint32_t number : {set.group(), set.viewpoint()})
            if (number != 0)
                checkText(number - 1, set);
        checkTexts(set.viewpoints(), set);
        each(set.materials(), [this, &set](const fb::MaterialState& entry) {
            checkText(entry.material(), set);
            checkText(entry.state(), set);
        });
        each(set.nodes(), [this](const fb::NodeState& entry) {
            checkText(entry.state(), entry);
            addTextBytes(sizeOf(entry.node()) * sizeof(std::uint32_t), entry);
        });
    }

    template <class T>
    void checkTexts(const flatbuffers::Vector<std::uint32_t>* texts, const T& place)
    {
        for (std::uint64_t i = 0; i < sizeOf(texts) && !m_error; ++i)
            checkText(texts->Get(static_cast<flatbuffers::uoffset_t>(i)), place);
    }

    void checkFile(const fb::FileReference& file)
    {
        addContainers(1, file);
        checkText(file.path(), file);
        checkText(file.relative_path(), file);
    }

    void checkClassName(const fb::ClassName& name)
    {
        if (sizeOf(name.names()) == 0)
            damaged(Text::tr("A class has no name"), name);
        each(name.names(), [this](const flatbuffers::String& text) { addText(text); });
    }

    template <class T>
    void checkAttached(std::uint32_t name, std::uint32_t links, const T& place)
    {
        m_usedLinks += links;
        if (name == 0)
            return;
        addContainers(1, place);
        checkText(name - 1, place);
    }

    template <class T>
    void checkText(std::uint64_t index, const T& place)
    {
        checkIndex(index, sizeOf(m_scene.texts()), place);
        if (!m_error)
            addText(*m_scene.texts()->Get(static_cast<flatbuffers::uoffset_t>(index)));
    }

    template <class T>
    void checkNumber(std::uint64_t number, std::uint64_t count, const T& place)
    {
        checkIndex(number, count + 1, place);
    }
    template <class T>
    void checkIndex(std::uint64_t index, std::uint64_t count, const T& place)
    {
        if (index >= count)
            damaged(Text::tr("A reference has no target"), place);
    }

    void addText(const flatbuffers::String& text) { addTextBytes(bytesPerText + text.size(), text); }
    template <class T>
    void addTextBytes(std::uint64_t count, const T& place)
    {
        m_textBytes += count;
        if (m_textBytes > m_options.maxTextBytes)
            fail(Code::LimitExceeded, Text::tr("The texts of the scene exceed the limit"), place);
    }
    template <class T>
    void addContainers(std::uint64_t count, const T& place)
    {
        m_containers += count;
        if (m_containers > m_options.maxContainers)
            fail(Code::LimitExceeded, Text::tr("The scene has more objects than the limit allows"), place);
    }

    const fb::Scene& m_scene;
    const std::byte* m_start;
    const SceneFileReadOptions& m_options;
    std::optional<files::Error> m_error;
    std::vector<std::uint8_t> m_materialNesting; ///< of the materials that were checked
    std::uint64_t m_usedLinks = 0;
    std::uint64_t m_textBytes = 0;
    std::uint64_t m_containers = 0;
};

const ChunkEntry* onlyGraphChunk(const ChunkFile& file)
{
    const auto isGraph = [](const ChunkEntry& chunk) { return chunk.type == ChunkType::Graph; };
    const auto& chunks = file.chunks();
    const auto place = std::find_if(chunks.begin(), chunks.end(), isGraph);
    return std::count_if(chunks.begin(), chunks.end(), isGraph) == 1 ? &*place : nullptr;
}

/// The structures of FlatBuffers: every offset leads into the buffer. Each table has an offset of four bytes, so that
/// their number has a natural bound; the nesting is five deep.
bool isSound(std::span<const std::byte> graph)
{
    if (graph.size() < sizeof(flatbuffers::uoffset_t) || graph.size() >= FLATBUFFERS_MAX_BUFFER_SIZE)
        return false;
    flatbuffers::Verifier::Options options;
    options.max_depth = 8;
    options.max_tables = static_cast<flatbuffers::uoffset_t>(graph.size() / sizeof(flatbuffers::uoffset_t));
    flatbuffers::Verifier verifier(reinterpret_cast<const std::uint8_t*>(graph.data()), graph.size(), options);
    return fb::VerifySceneBuffer(verifier);
}

} // namespace

files::Expected<const fb::Scene*> checkedGraph(const ChunkFile& file, const SceneFileReadOptions& options)
{
    const ChunkEntry* chunk = onlyGraphChunk(file);
    if (!chunk)
        return makeError(Code::DamagedTable, Text::tr("The file does not have exactly one graph"));
    const std::span<const std::byte> graph = file.content(*chunk);
    if (!isSound(graph))
        return makeError(Code::DamagedGraph, Text::tr("The graph of the scene is damaged"), chunk->offset);
    const fb::Scene* scene = fb::GetScene(graph.data());
    GraphCheck check(*scene, file.data().bytes.data(), options);
    if (const files::Expected<void> checked = check.run(); !checked)
        return checked.error();
    return scene;
}

} // namespace osg::scenefile
