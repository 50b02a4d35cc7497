#include "tests/support/jt/FileWriter.h"

#include <QString>

#include <algorithm>
#include <bit>
#include <cstdio>

namespace jttest
{

namespace
{

constexpr int NodeBase = 0;
constexpr int GroupBase = 1;
constexpr int ShapeBase = 2;
constexpr int AttributeBase = 3;
constexpr int LodBase = 4;
constexpr int AtomBase = 5;
constexpr int LateBase = 8;
constexpr int OtherBase = 9;
constexpr int GraphType = 1;
constexpr int MetadataType = 4;
constexpr int ShapeType = 6;
constexpr unsigned GraphNumber = 1;

std::string sceneGuid(const char* start)
{
    return std::string(start) + "-2ac8-11d1-9b6b-0080c7bb5997";
}

std::string metaGuid(const char* start)
{
    return std::string(start) + "-38fb-11d1-a506-006097bdc6e1";
}

void append(Data& to, const Data& data)
{
    to.insert(to.end(), data.begin(), data.end());
}

} // namespace

void FileWriter::Out::put(std::uint64_t value, int bytes)
{
    for (int i = 0; i < bytes; ++i)
        data.push_back(static_cast<std::uint8_t>(value >> 8 * (isBig ? bytes - 1 - i : i)));
}

void FileWriter::Out::f32(double value)
{
    put(std::bit_cast<std::uint32_t>(static_cast<float>(value)), 4);
}

void FileWriter::Out::f64(double value)
{
    put(std::bit_cast<std::uint64_t>(value), 8);
}

void FileWriter::Out::ids(const Ids& ids)
{
    i32(static_cast<std::int64_t>(ids.size()));
    for (const Id id : ids)
        i32(id);
}

void FileWriter::Out::text(const std::string& utf8)
{
    const QString units = QString::fromStdString(utf8);
    i32(units.size());
    for (const QChar unit : units)
        put(unit.unicode(), 2);
}

void FileWriter::Out::guid(const std::string& text)
{
    std::string digits = text;
    digits.erase(std::remove(digits.begin(), digits.end(), '-'), digits.end());
    const auto number = [&](std::size_t from, std::size_t count) {
        return std::stoull(digits.substr(from, count), nullptr, 16);
    };
    put(number(0, 8), 4);
    put(number(8, 4), 2);
    put(number(12, 4), 2);
    for (std::size_t i = 16; i < 32; i += 2)
        put(number(i, 2), 1);
}

// The version of a block: nothing in version 8, then 16 bits, then 8.
void FileWriter::version(Out& to) const
{
    if (m_major == 9)
        to.i16(1);
    else if (m_major == 10)
        to.u8(1);
}

// The same for the blocks that have it in version 8 too.
void FileWriter::fixedVersion(Out& to) const
{
    if (m_major == 10)
        to.u8(1);
    else
        to.i16(1);
}

FileWriter::Out FileWriter::baseNode(Id id, const NodeOptions& options) const
{
    Out to = out();
    to.i32(id);
    version(to);
    to.i32(options.isIgnored ? 1 : 0);
    to.ids(options.attributes);
    return to;
}

FileWriter::Out FileWriter::groupNode(Id id, const Ids& children, const NodeOptions& options) const
{
    Out to = baseNode(id, options);
    version(to);
    to.ids(children);
    return to;
}

void FileWriter::partition(Id id, const Ids& children, const std::string& file, const NodeOptions& options)
{
    Out to = groupNode(id, children, options);
    if (m_major == 10)
        to.u8(1);
    to.i32(0);
    to.text(file);
    to.zeros(6 * 4 + 4 + 6 * 4);
    add(m_nodes, sceneGuid("10dd103e"), GroupBase, to.data);
}

void FileWriter::metadata(Id id, const Ids& children, const NodeOptions& options)
{
    Out to = groupNode(id, children, options);
    fixedVersion(to);
    add(m_nodes, metaGuid("ce357245"), GroupBase, to.data);
}

void FileWriter::part(Id id, const Ids& children, const NodeOptions& options)
{
    Out to = groupNode(id, children, options);
    fixedVersion(to);
    fixedVersion(to);
    to.i32(0);
    add(m_nodes, metaGuid("ce357244"), GroupBase, to.data);
}

void FileWriter::group(Id id, const Ids& children, const NodeOptions& options)
{
    add(m_nodes, sceneGuid("10dd101b"), GroupBase, groupNode(id, children, options).data);
}

void FileWriter::instance(Id id, Id child, const NodeOptions& options)
{
    Out to = baseNode(id, options);
    version(to);
    to.i32(child);
    add(m_nodes, sceneGuid("10dd102a"), NodeBase, to.data);
}

void FileWriter::levels(Id id, const Ids& children, const NodeOptions& options)
{
    Out to = groupNode(id, children, options);
    version(to);
    if (m_major < 10)
        to.zeros(8);
    version(to);
    to.zeros(4 + 3 * 4);
    add(m_nodes, sceneGuid("10dd104c"), GroupBase, to.data);
}

void FileWriter::choice(Id id, const Ids& children, std::int32_t selected, const NodeOptions& options)
{
    Out to = groupNode(id, children, options);
    fixedVersion(to);
    to.i32(selected);
    add(m_nodes, sceneGuid("10dd10f3"), GroupBase, to.data);
}

void FileWriter::unknownGroup(Id id, const Ids& children)
{
    Out to = groupNode(id, children, {});
    to.zeros(7);
    add(m_nodes, "01234567-89ab-cdef-0123-456789abcdef", GroupBase, to.data);
}

void FileWriter::cutOffGroup(Id id)
{
    Out to = baseNode(id, {});
    version(to);
    to.i32(1000);
    add(m_nodes, sceneGuid("10dd101b"), GroupBase, to.data);
}

void FileWriter::shape(Id id, const NodeOptions& options)
{
    Out to = baseNode(id, options);
    version(to);
    to.zeros((m_major < 10 ? 2 : 1) * 6 * 4 + 4 + 6 * 4 + 4 + 4);
    version(to);
    to.zeros(m_major == 8 ? 16 : m_major == 9 ? 12 : 8);
    add(m_nodes, sceneGuid("10dd1077"), ShapeBase, to.data);
}

void FileWriter::triangle(Id id, float size, const NodeOptions& options)
{
    mesh(id, sceneGuid("10dd10ab"), triangleObject(size), options);
}

void FileWriter::mesh(Id id, const std::string& type, const Data& object, const NodeOptions& options)
{
    shape(id, options);
    m_segments.push_back({m_nextSegment, ShapeType, element(type, LodBase, object)});
    late(id, "JT_LLPROP_SHAPEIMPL", m_nextSegment++, ShapeType);
}

void FileWriter::brokenTriangle(Id id, const NodeOptions& options)
{
    triangle(id, 1, options);
    Data& data = m_segments.back().data;
    std::fill(data.end() - 50, data.end(), 0xEE);
}

FileWriter::Out FileWriter::baseAttribute(Id id, unsigned state, std::uint32_t inhibited) const
{
    Out to = out();
    to.i32(id);
    version(to);
    to.u8(state);
    to.i32(inhibited);
    if (m_major == 10)
        to.i32(0);
    return to;
}

void FileWriter::material(Id id, const std::array<float, 4>& diffuse, unsigned state, std::uint32_t inhibited,
                          int dataFlags)
{
    Out to = baseAttribute(id, state, inhibited);
    version(to);
    to.i16(dataFlags);
    to.zeros(16);
    for (const float channel : diffuse)
        to.f32(channel);
    to.zeros(2 * 16 + 4 + (m_major == 10 ? 8 : 0));
    add(m_nodes, sceneGuid("10dd1030"), AttributeBase, to.data);
}

void FileWriter::shortMaterial(Id id, const std::array<float, 4>& diffuse)
{
    Out to = baseAttribute(id, 8, 0);
    to.i16(0x000F);
    to.f32(0.5);
    for (const float channel : diffuse)
        to.f32(channel);
    to.f32(0.25);
    to.f32(0.125);
    to.f32(30);
    add(m_nodes, sceneGuid("10dd1030"), AttributeBase, to.data);
}

void FileWriter::texture(Id id)
{
    add(m_nodes, sceneGuid("10dd1073"), AttributeBase, baseAttribute(id, 8, 0).data);
}

void FileWriter::move(Id id, double x, double y, double z)
{
    transform(id, {{12, x}, {13, y}, {14, z}});
}

void FileWriter::transform(Id id, const std::map<unsigned, double>& elements, unsigned state)
{
    Out to = baseAttribute(id, state, 0);
    version(to);
    unsigned mask = 0;
    for (const auto& [number, value] : elements)
        mask |= 0x8000u >> number;
    to.i16(static_cast<int>(mask));
    for (const auto& [number, value] : elements)
        m_major == 8 ? to.f32(value) : to.f64(value);
    add(m_nodes, sceneGuid("10dd1083"), AttributeBase, to.data);
}

FileWriter::Out FileWriter::atom(Id id) const
{
    Out to = out();
    to.i32(id);
    version(to);
    to.put(0x40000000, 4);
    version(to);
    return to;
}

Id FileWriter::textAtom(const std::string& text)
{
    const Id id = m_nextAtom++;
    Out to = atom(id);
    to.text(text);
    add(m_atoms, sceneGuid("10dd106e"), AtomBase, to.data);
    return id;
}

void FileWriter::property(Id node, const std::string& key, const std::string& value)
{
    const Id keyAtom = textAtom(key);
    pair(node, keyAtom, textAtom(value));
}

void FileWriter::integerProperty(Id node, const std::string& key, std::int32_t value)
{
    const Id id = m_nextAtom++;
    Out to = atom(id);
    to.i32(value);
    add(m_atoms, sceneGuid("10dd102b"), AtomBase, to.data);
    pair(node, textAtom(key), id);
}

void FileWriter::floatProperty(Id node, const std::string& key, float value)
{
    const Id id = m_nextAtom++;
    Out to = atom(id);
    to.f32(value);
    add(m_atoms, sceneGuid("10dd1019"), AtomBase, to.data);
    pair(node, textAtom(key), id);
}

void FileWriter::dateProperty(Id node, const std::string& key, const std::array<int, 6>& parts)
{
    const Id id = m_nextAtom++;
    Out to = atom(id);
    for (const int part : parts)
        to.i16(part);
    add(m_atoms, metaGuid("ce357246"), AtomBase, to.data);
    pair(node, textAtom(key), id);
}

void FileWriter::rawProperty(Id node, Id key, Id value)
{
    pair(node, key, value);
}

void FileWriter::late(Id node, const std::string& key, unsigned segment, int type)
{
    const Id id = m_nextAtom++;
    Out to = atom(id);
    to.guid(segmentGuid(segment));
    to.i32(type);
    to.zeros(m_major == 8 ? 0 : m_major == 9 ? 8 : 4);
    add(m_atoms, "e0b05be5-fbbd-11d1-a3a7-00aa00d10954", LateBase, to.data);
    pair(node, textAtom(key), id);
}

void FileWriter::metadataSegment(Id node, const std::map<std::string, std::string>& texts)
{
    Out to = out();
    if (m_major >= 9) {
        to.i32(0);
        version(to);
    }
    for (const auto& [key, value] : texts) {
        to.text(key);
        to.u8(1);
        to.text(value);
    }
    to.text({});
    Data data = element(metaGuid("ce357247"), OtherBase, to.data);
    append(data, endMark());
    m_segments.push_back({m_nextSegment, MetadataType, withPackingHead(data)});
    late(node, "JT_LLPROP_METADATA", m_nextSegment++, MetadataType);
}

Data FileWriter::triangleObject(float size) const
{
    Out to = out();
    to.i16(1);
    to.i32(0);
    to.zeros(4);
    to.i16(1);
    to.i16(1);
    to.zeros(3 + 4);
    to.u8(0); // one strip of three corners, in a list that is not encoded
    to.ids({0, 3});
    to.i32(36);
    to.i32(-36);
    for (const float value : {0.f, 0.f, 0.f, size, 0.f, 0.f, 0.f, size, 0.f})
        to.f32(value);
    return to.data;
}

Data FileWriter::element(const std::string& guid, int base, const Data& data) const
{
    Out to = out();
    to.i32(static_cast<std::int64_t>(data.size()) + 17);
    to.guid(guid);
    to.u8(static_cast<unsigned>(base));
    append(to.data, data);
    return to.data;
}

Data FileWriter::endMark() const
{
    Out to = out();
    to.i32(16);
    to.data.insert(to.data.end(), 16, 0xFF);
    return to.data;
}

void FileWriter::add(Data& list, const std::string& guid, int base, const Data& data)
{
    append(list, element(guid, base, data));
}

Data FileWriter::sceneGraph() const
{
    Out to{m_big, m_nodes};
    append(to.data, endMark());
    append(to.data, m_atoms);
    append(to.data, endMark());
    to.i16(1);
    to.i32(static_cast<std::int64_t>(m_table.size()));
    for (const auto& [node, pairs] : m_table) {
        to.i32(node);
        for (const auto& [key, value] : pairs) {
            to.i32(key);
            to.i32(value);
        }
        to.i32(0);
    }
    return to.data;
}

Data FileWriter::withPackingHead(const Data& data) const
{
    Out to = out();
    to.i32(0);
    to.i32(static_cast<std::int64_t>(data.size()) + 1);
    to.u8(1);
    append(to.data, data);
    return to.data;
}

std::string FileWriter::segmentGuid(unsigned number) const
{
    char text[40];
    std::snprintf(text, sizeof text, "%08x-0001-0002-0304-05060708090a", number);
    return text;
}

std::string FileWriter::file() const
{
    std::vector<Segment> segments = {{GraphNumber, GraphType, withPackingHead(sceneGraph())}};
    segments.insert(segments.end(), m_segments.begin(), m_segments.end());
    const int offsetSize = m_major == 10 ? 8 : 4;
    std::string text = "Version " + std::to_string(m_major) + ".0 made by hand";
    text.resize(80, ' ');
    Out to{m_big, {text.begin(), text.end()}};
    to.u8(m_big);
    to.i32(0);
    const std::size_t table = 80 + 1 + 4 + static_cast<std::size_t>(offsetSize) + 16;
    to.put(table, offsetSize);
    to.guid(segmentGuid(GraphNumber));
    to.i32(static_cast<std::int64_t>(segments.size()));
    std::size_t offset = table + 4 + segments.size() * static_cast<std::size_t>(24 + offsetSize);
    for (const Segment& segment : segments) {
        to.guid(segmentGuid(segment.number));
        to.put(offset, offsetSize);
        to.i32(static_cast<std::int64_t>(segment.data.size()) + 24);
        to.put(static_cast<std::uint64_t>(segment.type) << 24, 4);
        offset += segment.data.size() + 24;
    }
    for (const Segment& segment : segments) {
        to.guid(segmentGuid(segment.number));
        to.i32(segment.type);
        to.i32(static_cast<std::int64_t>(segment.data.size()) + 24);
        append(to.data, segment.data);
    }
    return {to.data.begin(), to.data.end()};
}

} // namespace jttest
