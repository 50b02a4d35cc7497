#include "tools/ptxconvert/readers/jt/JtFile.h"

#include "tools/ptxconvert/readers/FileContent.h"

namespace ptx::jt
{

namespace
{

constexpr int MetadataType = 4;
constexpr int FirstShapeType = 6;
constexpr int LastShapeType = 16;

Bytes bytesOf(const std::string& content)
{
    return {reinterpret_cast<const std::uint8_t*>(content.data()), content.size()};
}

Failure damaged(const std::string& path, const Damage& damage)
{
    return {ExitCode::Damaged,
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

    Outcome<JtFile> open(bool withMetadata)
    {
        m_file.framing = readFraming(bytesOf(*m_file.content));
        if (m_file.framing.damage)
            return damaged(m_file.path, m_file.framing.damage);
        if (const Damage damage = readGraph())
            return damaged(m_file.path, damage);
        if (withMetadata)
            addMetadata();
        return std::move(m_file);
    }

private:
    Damage readGraph()
    {
        const auto at = m_file.framing.segments.find(m_file.framing.sceneGraph);
        if (at == m_file.framing.segments.end())
            return {"its scene graph is not in the table of contents", 0};
        Damage damage;
        const std::vector<std::uint8_t> data = unpack(at->second, m_file.framing.isBigEndian, damage);
        if (damage)
            return damage;
        m_file.graph = readSceneGraph(data, m_file.framing.major, m_file.framing.isBigEndian);
        // What comes before a place that is damaged still counts.
        if (m_file.graph.nodes.empty())
            return m_file.graph.damage;
        if (m_file.graph.damage)
            warn("the scene graph", m_file.graph.damage);
        return {};
    }

    void warn(const std::string& where, const Damage& damage)
    {
        m_file.graph.warnings.push_back(where + " at " + std::to_string(damage.offset) + ": " + damage.what);
    }

    void addMetadata()
    {
        for (auto& [id, node] : m_file.graph.nodes)
            for (const LateLoaded& late : node.lateLoaded)
                if (late.type == MetadataType) {
                    const Properties& properties = metadata(late.segment);
                    m_text += textSize(properties);
                    if (m_text <= MostText)
                        node.properties.insert(node.properties.end(), properties.begin(), properties.end());
                }
    }

    static std::size_t textSize(const Properties& properties)
    {
        std::size_t size = 0;
        for (const auto& [key, value] : properties)
            size += key.size() + value.size();
        return size;
    }

    const Properties& metadata(const Guid& id)
    {
        const auto [entry, isNew] = m_metadata.try_emplace(id);
        const auto segment = m_file.framing.segments.find(id);
        if (!isNew || segment == m_file.framing.segments.end())
            return entry->second;
        Damage damage;
        const std::vector<std::uint8_t> data = unpack(segment->second, m_file.framing.isBigEndian, damage);
        if (!damage)
            entry->second = readPropertyProxy(data, m_file.framing.major, m_file.framing.isBigEndian, damage);
        if (damage)
            warn("the metadata segment " + guidText(id), damage);
        return entry->second;
    }

    static constexpr std::size_t MostText = 256u << 20;

    JtFile m_file;
    std::map<Guid, Properties> m_metadata;
    std::size_t m_text = 0;
};

} // namespace

const Segment* JtFile::shapeSegment(const SceneNode& node) const
{
    const Segment* finest = nullptr;
    int finestType = LastShapeType + 1;
    for (const LateLoaded& late : node.lateLoaded) {
        const auto at = framing.segments.find(late.segment);
        if (late.type < FirstShapeType || late.type >= finestType || at == framing.segments.end())
            continue;
        finest = &at->second;
        finestType = late.type;
    }
    return finest;
}

Shape JtFile::shapeOf(const SceneNode& node) const
{
    if (const Segment* segment = shapeSegment(node))
        return readShape(*segment, framing.major, framing.isBigEndian);
    Shape none;
    none.damage = {"a shape has no mesh in the file", 0};
    return none;
}

Outcome<JtFile> openJtFile(const std::string& path, std::string content)
{
    return Opener(path, std::move(content)).open(true);
}

std::vector<std::string> partNamesIn(const std::string& path)
{
    std::vector<std::string> names;
    Outcome<std::string> content = readContent(path);
    if (!content)
        return names;
    const Outcome<JtFile> file = Opener(path, std::move(content.value())).open(false);
    if (!file)
        return names;
    for (const auto& [id, node] : file.value().graph.nodes)
        if (isExternal(file.value().graph, id, node))
            names.push_back(node.file);
    return names;
}

bool isExternal(const SceneGraph& graph, Id id, const SceneNode& node)
{
    return node.kind == ElementKind::Partition && id != graph.root && !node.file.empty();
}

} // namespace ptx::jt
