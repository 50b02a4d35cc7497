#include "ptx/readers/jt/JtFile.h"

#include "ptx/readers/FileContent.h"
#include "ptx/readers/jt/graph/PropertyElements.h"

namespace ptx::jt
{

namespace
{

constexpr int MetadataType = 4;
constexpr int FirstShapeType = 6;
constexpr int LastShapeType = 16;

container::Bytes bytesOf(const std::string& content)
{
    return {reinterpret_cast<const std::uint8_t*>(content.data()), content.size()};
}

core::Failure damaged(const std::string& path, const container::Damage& damage)
{
    return {core::ExitCode::Damaged,
            "the JT file is damaged at " + std::to_string(damage.offset) + ": " + damage.what + " (" + path + ")"};
}

class Opener
{
public:
    Opener(const std::string& path, std::string content)
    {
        m_file.path = path;
        m_file.content = std::make_unique<const std::string>(std::move(content));
    }

    core::Outcome<JtFile> open(bool withMetadata)
    {
        m_file.framing = container::readFraming(bytesOf(*m_file.content));
        if (m_file.framing.damage)
            return damaged(m_file.path, m_file.framing.damage);
        if (const container::Damage damage = readGraph())
            return damaged(m_file.path, damage);
        if (withMetadata)
            addMetadata();
        return std::move(m_file);
    }

private:
    container::Damage readGraph()
    {
        const auto at = m_file.framing.segments.find(m_file.framing.sceneGraph);
        if (at == m_file.framing.segments.end())
            return {"its scene graph is not in the table of contents", 0};
        container::Damage damage;
        const std::vector<std::uint8_t> data = container::unpack(at->second, m_file.framing.isBigEndian, damage);
        if (damage)
            return damage;
        m_file.graph = graph::readSceneGraph(data, m_file.framing.major, m_file.framing.isBigEndian);
        // What comes before a place that is damaged still counts.
        if (m_file.graph.nodes.empty())
            return m_file.graph.damage;
        if (m_file.graph.damage)
            warn("the scene graph", m_file.graph.damage);
        return {};
    }

    void warn(const std::string& where, const container::Damage& damage)
    {
        m_file.graph.warnings.push_back(where + " at " + std::to_string(damage.offset) + ": " + damage.what);
    }

    void addMetadata()
    {
        for (auto& [id, node] : m_file.graph.nodes)
            for (const graph::LateLoaded& late : node.lateLoaded)
                if (late.type == MetadataType) {
                    const graph::Properties& properties = metadata(late.segment);
                    m_text += textSize(properties);
                    if (m_text <= MostText)
                        node.properties.insert(node.properties.end(), properties.begin(), properties.end());
                }
    }

    static std::size_t textSize(const graph::Properties& properties)
    {
        std::size_t size = 0;
        for (const auto& [key, value] : properties)
            size += key.size() + value.text.size();
        return size;
    }

    const graph::Properties& metadata(const container::Guid& id)
    {
        const auto [entry, isNew] = m_metadata.try_emplace(id);
        const auto segment = m_file.framing.segments.find(id);
        if (!isNew || segment == m_file.framing.segments.end())
            return entry->second;
        container::Damage damage;
        const std::vector<std::uint8_t> data = container::unpack(segment->second, m_file.framing.isBigEndian, damage);
        if (!damage)
            entry->second = graph::readPropertyProxy(data, m_file.framing.major, m_file.framing.isBigEndian, damage);
        if (damage)
            warn("the metadata segment " + container::guidText(id), damage);
        return entry->second;
    }

    static constexpr std::size_t MostText = 256u << 20;

    JtFile m_file;
    std::map<container::Guid, graph::Properties> m_metadata;
    std::size_t m_text = 0;
};

} // namespace

const container::Segment* JtFile::shapeSegment(const graph::SceneNode& node) const
{
    const container::Segment* finest = nullptr;
    int finestType = LastShapeType + 1;
    for (const graph::LateLoaded& late : node.lateLoaded) {
        const auto at = framing.segments.find(late.segment);
        if (late.type < FirstShapeType || late.type >= finestType || at == framing.segments.end())
            continue;
        finest = &at->second;
        finestType = late.type;
    }
    return finest;
}

shapes::Shape JtFile::shapeOf(const graph::SceneNode& node) const
{
    if (const container::Segment* segment = shapeSegment(node))
        return shapes::readShape(*segment, framing.major, framing.isBigEndian);
    shapes::Shape none;
    none.damage = {"a shape has no mesh in the file", 0};
    return none;
}

core::Outcome<JtFile> openJtFile(const std::string& path, std::string content)
{
    return Opener(path, std::move(content)).open(true);
}

std::vector<std::string> partNamesIn(const std::string& path)
{
    std::vector<std::string> names;
    core::Outcome<std::string> content = readers::readContent(path);
    if (!content)
        return names;
    const core::Outcome<JtFile> file = Opener(path, std::move(content.value())).open(false);
    if (!file)
        return names;
    for (const auto& [id, node] : file.value().graph.nodes)
        if (isExternal(file.value().graph, id, node))
            names.push_back(node.file);
    return names;
}

bool isExternal(const graph::SceneGraph& graph, graph::Id id, const graph::SceneNode& node)
{
    return node.kind == graph::ElementKind::Partition && id != graph.root && !node.file.empty();
}

} // namespace ptx::jt
