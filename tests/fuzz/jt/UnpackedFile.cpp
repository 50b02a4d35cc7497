#include "tests/fuzz/jt/UnpackedFile.h"

#include <algorithm>

namespace ptx::jt::container
{

namespace
{

constexpr std::size_t TextSize = 80;
constexpr std::size_t PackingHead = 9;
constexpr std::size_t SegmentHead = 24;
constexpr int GraphType = 1;
constexpr int MetadataType = 4;
constexpr int FirstShapeType = 6;
constexpr int LastShapeType = 16;
constexpr std::uint8_t NotPacked = 1;

using Data = std::vector<std::uint8_t>;

bool isPackable(const Segment& segment)
{
    return segment.type == GraphType || segment.type == MetadataType;
}

bool isRead(const Segment& segment)
{
    return isPackable(segment) || (segment.type >= FirstShapeType && segment.type <= LastShapeType);
}

class Writer
{
public:
    explicit Writer(const Framing& framing) : m_framing(framing) {}

    Data write(Bytes text)
    {
        m_data.assign(text.begin(), text.end());
        put(m_framing.isBigEndian, 1);
        put(0, 4);
        const std::size_t tableAt = m_data.size();
        put(0, offsetSize());
        put(m_framing.sceneGraph);
        for (const auto& [id, segment] : m_framing.segments)
            if (isRead(segment))
                add(id, segment);
        const std::size_t table = m_data.size();
        writeTable();
        Data whole;
        whole.swap(m_data);
        put(table, offsetSize());
        std::copy(m_data.begin(), m_data.end(), whole.begin() + static_cast<std::ptrdiff_t>(tableAt));
        return whole;
    }

private:
    struct Row {
        Guid id;
        int type;
        std::size_t offset;
        std::size_t size;
    };

    int offsetSize() const { return m_framing.major >= 10 ? 8 : 4; }

    void put(std::uint64_t value, int bytes)
    {
        for (int i = 0; i < bytes; ++i)
            m_data.push_back(static_cast<std::uint8_t>(value >> 8 * (m_framing.isBigEndian ? bytes - 1 - i : i)));
    }

    void put(const Guid& id)
    {
        put(static_cast<std::uint64_t>(id[0] << 8 | id[1]) << 16 | static_cast<std::uint64_t>(id[2] << 8 | id[3]), 4);
        put(static_cast<std::uint64_t>(id[4] << 8 | id[5]), 2);
        put(static_cast<std::uint64_t>(id[6] << 8 | id[7]), 2);
        m_data.insert(m_data.end(), id.begin() + 8, id.end());
    }

    void add(const Guid& id, const Segment& segment)
    {
        Damage damage;
        Data content(segment.data.begin(), segment.data.end());
        if (isPackable(segment))
            content = unpack(segment, m_framing.isBigEndian, damage);
        const std::size_t size = content.size() + SegmentHead + (isPackable(segment) ? PackingHead : 0);
        m_rows.push_back({id, segment.type, m_data.size(), size});
        put(id);
        put(static_cast<std::uint64_t>(segment.type), 4);
        put(size, 4);
        if (isPackable(segment)) {
            put(0, 4);
            put(content.size() + 1, 4);
            put(NotPacked, 1);
        }
        m_data.insert(m_data.end(), content.begin(), content.end());
    }

    void writeTable()
    {
        put(m_rows.size(), 4);
        for (const Row& row : m_rows) {
            put(row.id);
            put(row.offset, offsetSize());
            put(row.size, 4);
            put(static_cast<std::uint64_t>(row.type) << 24, 4);
        }
    }

    const Framing& m_framing;
    Data m_data;
    std::vector<Row> m_rows;
};

} // namespace

Place plainSceneGraph(Bytes file)
{
    const Framing framing = readFraming(file);
    const auto at = framing.segments.find(framing.sceneGraph);
    if (at == framing.segments.end() || at->second.data.size() <= PackingHead ||
        at->second.data[PackingHead - 1] != NotPacked)
        return {};
    return {at->second.offset + PackingHead, at->second.data.size() - PackingHead};
}

std::vector<std::uint8_t> unpackedFile(Bytes file)
{
    const Framing framing = readFraming(file);
    if (framing.damage)
        return {};
    return Writer(framing).write(file.first(TextSize));
}

} // namespace ptx::jt::container
