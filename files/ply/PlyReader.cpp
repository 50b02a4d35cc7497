#include "files/ply/PlyReader.h"

#include "files/FileBytes.h"
#include "files/SceneBuilding.h"
#include "files/ply/PlyValues.h"
#include "scene/MeshArrays.h"
#include "scene/Polygons.h"
#include "scene/SceneEdits.h"

#include <algorithm>
#include <array>
#include <limits>
#include <map>
#include <numeric>

namespace files::ply
{

namespace
{

/// What a vertex can carry.
enum Slot : std::size_t { X, Y, Z, NormalX, NormalY, NormalZ, Red, Green, Blue, Alpha, U, V, SlotCount };

using VertexValues = std::array<float, SlotCount>;

const std::map<std::string_view, Slot>& slotNames()
{
    static const std::map<std::string_view, Slot> names = {
        {"x", X},
        {"y", Y},
        {"z", Z},
        {"nx", NormalX},
        {"ny", NormalY},
        {"nz", NormalZ},
        {"red", Red},
        {"green", Green},
        {"blue", Blue},
        {"alpha", Alpha},
        {"r", Red},
        {"g", Green},
        {"b", Blue},
        {"diffuse_red", Red},
        {"diffuse_green", Green},
        {"diffuse_blue", Blue},
        {"u", U},
        {"v", V},
        {"s", U},
        {"t", V},
        {"texture_u", U},
        {"texture_v", V},
    };
    return names;
}

bool isVertexList(const PlyProperty& property)
{
    return property.countType && (property.name == "vertex_indices" || property.name == "vertex_index");
}

/// Reads the elements of a file into arrays.
class PlyElements
{
public:
    PlyElements(const PlyHeader& header, std::string_view file, ReadTask& task)
        : m_header(header), m_values(PlyValues::open(header, file, task)), m_task(task)
    {
    }

    osg::Mesh read();

private:
    void readElement(const PlyElement& element);
    void checkCount(const PlyElement& element) const;
    std::vector<Slot> prepareVertices(const PlyElement& element);
    void vertices(const PlyElement& element);
    float takeVertexValue(Slot slot, PlyType type);
    void addVertex(const VertexValues& values);
    void faces(const PlyElement& element);
    void face(const PlyProperty& list);
    void takeElements(std::uint64_t corners);
    void strips(const PlyElement& element);
    void strip(const PlyProperty& list);
    void edges(const PlyElement& element);
    void others(const PlyElement& element);
    void skip(const PlyProperty& property);
    std::uint32_t takeIndex(PlyType type);
    bool has(std::initializer_list<Slot> slots) const;

    [[noreturn]] void fail(const QString& message) const
    {
        m_task.fail(ErrorCode::Damaged, message, m_values->place());
    }

    const PlyHeader& m_header;
    std::unique_ptr<PlyValues> m_values;
    ReadTask& m_task;
    std::array<bool, SlotCount + 1> m_has = {}; ///< with a place for what is not read
    osg::MeshArrays m_arrays;
    std::vector<std::uint32_t> m_corners; ///< of the face that is read
};

osg::Mesh PlyElements::read()
{
    for (const PlyElement& element : m_header.elements)
        readElement(element);
    if (m_arrays.positions.empty())
        m_task.fail(ErrorCode::Empty, tr("there are no vertices in it"));
    if (m_arrays.triangles.empty() && m_arrays.lines.empty()) {
        m_arrays.points.resize(m_arrays.positions.size());
        std::iota(m_arrays.points.begin(), m_arrays.points.end(), 0u);
    }
    return osg::meshOf(std::move(m_arrays));
}

void PlyElements::readElement(const PlyElement& element)
{
    checkCount(element);
    if (element.name == "vertex")
        vertices(element);
    else if (element.name == "face")
        faces(element);
    else if (element.name == "tristrips")
        strips(element);
    else if (element.name == "edge")
        edges(element);
    else
        others(element);
}

/// Each element takes a value at least for each of its properties.
void PlyElements::checkCount(const PlyElement& element) const
{
    if (element.count > 0 && element.properties.empty())
        fail(tr("the element '%1' has no properties").arg(QString::fromStdString(element.name)));
    std::uint64_t possible = std::numeric_limits<std::uint64_t>::max();
    for (const PlyProperty& property : element.properties)
        possible = std::min(possible, m_values->possible(property.countType.value_or(property.type)));
    if (element.count > possible)
        fail(tr("the file is too short for %1 elements '%2'")
                 .arg(static_cast<qulonglong>(element.count))
                 .arg(QString::fromStdString(element.name)));
}

bool PlyElements::has(std::initializer_list<Slot> slots) const
{
    return std::all_of(slots.begin(), slots.end(), [this](Slot slot) { return m_has[slot]; });
}

/// Where the values of a vertex go, property by property; `SlotCount` for what is not read.
std::vector<Slot> PlyElements::prepareVertices(const PlyElement& element)
{
    if (!m_arrays.positions.empty())
        fail(tr("there are vertices already"));
    std::vector<Slot> slots;
    for (const PlyProperty& property : element.properties) {
        const auto slot = slotNames().find(property.name);
        slots.push_back(slot == slotNames().end() || property.countType ? SlotCount : slot->second);
        m_has[slots.back()] = true;
    }
    if (!has({X, Y, Z}))
        fail(tr("the vertices have no x, y and z"));
    const std::uint64_t arrays = 1u + has({NormalX, NormalY, NormalZ}) + has({Red, Green, Blue}) + has({U, V});
    m_task.countVertices(element.count * arrays, m_values->place());
    m_task.takeMemory(element.count * arrays * sizeof(osg::Color4f), m_values->place());
    m_arrays.positions.reserve(element.count);
    return slots;
}

void PlyElements::vertices(const PlyElement& element)
{
    const std::vector<Slot> slots = prepareVertices(element);
    for (std::uint64_t i = 0; i < element.count; ++i) {
        VertexValues values = {};
        values[Alpha] = 1;
        m_values->beginRow();
        for (std::size_t k = 0; k < slots.size(); ++k) {
            const PlyProperty& property = element.properties[k];
            if (slots[k] == SlotCount)
                skip(property);
            else
                values[slots[k]] = takeVertexValue(slots[k], property.type);
        }
        addVertex(values);
    }
}

float PlyElements::takeVertexValue(Slot slot, PlyType type)
{
    const bool isColor = slot >= Red && slot <= Alpha;
    return static_cast<float>(m_values->take(type) / (isColor ? plyTypeOne(type) : 1));
}

void PlyElements::addVertex(const VertexValues& values)
{
    m_arrays.positions.push_back({values[X], values[Y], values[Z]});
    if (has({NormalX, NormalY, NormalZ}))
        m_arrays.normals.push_back({values[NormalX], values[NormalY], values[NormalZ]});
    if (has({U, V}))
        m_arrays.texCoords.push_back({values[U], values[V]});
    if (has({Red, Green, Blue}))
        m_arrays.colors.push_back({values[Red], values[Green], values[Blue], values[Alpha]});
}

std::uint32_t PlyElements::takeIndex(PlyType type)
{
    const double index = m_values->take(type);
    if (!(index >= 0) || index >= static_cast<double>(m_arrays.positions.size()))
        fail(tr("an index reaches beyond the %1 vertices before it")
                 .arg(static_cast<qulonglong>(m_arrays.positions.size())));
    return static_cast<std::uint32_t>(index);
}

void PlyElements::faces(const PlyElement& element)
{
    const auto isColor = [](const PlyProperty& p) { return p.name == "red"; };
    for (std::uint64_t i = 0; i < element.count; ++i) {
        m_values->beginRow();
        for (const PlyProperty& property : element.properties)
            isVertexList(property) ? face(property) : skip(property);
    }
    if (element.count > 0 && std::any_of(element.properties.begin(), element.properties.end(), isColor))
        m_task.warn(tr("the colours of faces were left out"));
}

/// Three indices for each corner, in an array that grows by doubling.
void PlyElements::takeElements(std::uint64_t corners)
{
    constexpr std::uint64_t memoryOfCorner = 2 * 3 * sizeof(std::uint32_t);
    m_task.takeMemory(corners * memoryOfCorner);
}

void PlyElements::face(const PlyProperty& list)
{
    const std::uint64_t length = m_values->takeLength(list);
    takeElements(length);
    m_corners.clear();
    for (std::uint64_t i = 0; i < length; ++i)
        m_corners.push_back(takeIndex(list.type));
    osg::appendPolygon(m_arrays.positions, m_corners, m_arrays.triangles);
}

void PlyElements::strips(const PlyElement& element)
{
    for (std::uint64_t i = 0; i < element.count; ++i) {
        m_values->beginRow();
        for (const PlyProperty& property : element.properties)
            isVertexList(property) ? strip(property) : skip(property);
    }
}

/// A negative number begins a new strip. Every second triangle of a strip runs the other way round.
void PlyElements::strip(const PlyProperty& list)
{
    const std::uint64_t length = m_values->takeLength(list);
    takeElements(length);
    m_corners.clear();
    for (std::uint64_t i = 0; i < length; ++i) {
        const double index = m_values->take(list.type);
        if (index < 0) {
            m_corners.clear();
            continue;
        }
        if (!(index < static_cast<double>(m_arrays.positions.size())))
            fail(tr("an index reaches beyond the %1 vertices before it")
                     .arg(static_cast<qulonglong>(m_arrays.positions.size())));
        m_corners.push_back(static_cast<std::uint32_t>(index));
        const std::size_t last = m_corners.size() - 1;
        if (last >= 2) {
            const bool isEven = last % 2 == 0;
            m_arrays.triangles.insert(m_arrays.triangles.end(), {m_corners[last - (isEven ? 2 : 1)],
                                                                 m_corners[last - (isEven ? 1 : 2)], m_corners[last]});
        }
    }
}

void PlyElements::edges(const PlyElement& element)
{
    for (std::uint64_t i = 0; i < element.count; ++i) {
        m_values->beginRow();
        std::vector<std::uint32_t> ends;
        for (const PlyProperty& property : element.properties) {
            if (!property.countType && (property.name == "vertex1" || property.name == "vertex2"))
                ends.push_back(takeIndex(property.type));
            else
                skip(property);
        }
        if (ends.size() == 2)
            m_arrays.lines.insert(m_arrays.lines.end(), ends.begin(), ends.end());
    }
}

void PlyElements::others(const PlyElement& element)
{
    for (std::uint64_t i = 0; i < element.count; ++i) {
        m_values->beginRow();
        for (const PlyProperty& property : element.properties)
            skip(property);
    }
    if (element.count > 0)
        m_task.warn(tr("%1 elements '%2' were left out")
                        .arg(static_cast<qulonglong>(element.count))
                        .arg(QString::fromStdString(element.name)));
}

void PlyElements::skip(const PlyProperty& property)
{
    const std::uint64_t length = property.countType ? m_values->takeLength(property) : 1;
    for (std::uint64_t i = 0; i < length; ++i)
        m_values->take(property.type);
}

} // namespace

osg::NodePtr readPly(ReadTask& task)
{
    const FileBytes file = readFile(task, task.path());
    const PlyHeader header = readPlyHeader(file.text(), task);
    osg::Mesh mesh = PlyElements(header, file.text(), task).read();
    FreshTree tree(makeGroup({}));
    osg::addChild(placeForContent(tree.root(), task.options()), makeNode({}, makeGeometry({}, std::move(mesh), {})));
    return tree.take();
}

} // namespace files::ply
