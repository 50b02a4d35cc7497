#include "files/ply/PlyElements.h"

#include "files/ply/PlyValues.h"
#include "files/ply/VertexSlots.h"
#include "files/ply/WedgeVertices.h"
#include "scene/Polygons.h"

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>
#include <optional>

namespace files::ply
{

namespace
{

using VertexValues = std::array<float, SlotCount>;

bool isVertexList(const PlyProperty& property)
{
    return property.countType && (property.name == "vertex_indices" || property.name == "vertex_index");
}

/// Texture coordinates of the corners of a face, two numbers for each.
bool isWedgeList(const PlyProperty& property)
{
    return property.countType && property.name == "texcoord";
}

/// Which of several pictures a face bears.
bool isTextureNumber(const PlyProperty& property)
{
    return !property.countType && property.name == "texnumber";
}

/// What is read of a face.
struct Face {
    std::vector<std::uint32_t> corners;
    std::vector<float> wedges;
    std::int32_t texture = -1;
};

/// Reads the elements of a file into arrays.
class PlyElements
{
public:
    PlyElements(const PlyHeader& header, std::string_view file, ReadTask& task)
        : m_header(header), m_values(PlyValues::open(header, file, task)), m_task(task)
    {
    }

    std::vector<TexturePart> read();

private:
    void readElement(const PlyElement& element);
    void checkCount(const PlyElement& element) const;
    std::vector<Slot> prepareVertices(const PlyElement& element);
    void vertices(const PlyElement& element);
    float takeVertexValue(Slot slot, PlyType type);
    void addVertex(const VertexValues& values);
    void faces(const PlyElement& element);
    void faceValue(const PlyProperty& property);
    void addFace();
    void applyWedges();
    void tellOfFaces(const PlyElement& element);
    std::vector<TexturePart> parts();
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
    std::size_t m_vertices = 0; ///< of the file; more come by wedges
    std::optional<WedgeVertices> m_wedgeVertices;
    Face m_face;                                   ///< that is read
    std::vector<std::int32_t> m_textureOfTriangle; ///< where faces tell which of several pictures they bear
    std::uint64_t m_wrongWedges = 0;
    std::uint64_t m_wrongTextures = 0;
};

std::vector<TexturePart> PlyElements::read()
{
    for (const PlyElement& element : m_header.elements)
        readElement(element);
    if (m_arrays.positions.empty())
        m_task.fail(ErrorCode::Empty, tr("there are no vertices in it"));
    if (m_arrays.triangles.empty() && m_arrays.lines.empty()) {
        m_arrays.points.resize(m_arrays.positions.size());
        std::iota(m_arrays.points.begin(), m_arrays.points.end(), 0u);
    }
    return parts();
}

/// Where faces do not tell, all bear the first picture.
std::vector<TexturePart> PlyElements::parts()
{
    if (m_textureOfTriangle.empty() || m_textureOfTriangle.size() != m_arrays.triangles.size() / 3) {
        std::vector<TexturePart> all(1);
        all[0].texture = m_header.textures.empty() ? -1 : 0;
        all[0].arrays = std::move(m_arrays);
        return all;
    }
    m_task.takeMemory(m_arrays.triangles.size() * (sizeof(std::uint32_t) + sizeof(osg::Color4f)));
    return partsOf(m_arrays, m_textureOfTriangle);
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
        slots.push_back(property.countType ? SlotCount : slotOf(property.name));
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
    m_vertices = m_arrays.positions.size();
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
    if (!(index >= 0) || index >= static_cast<double>(m_vertices))
        fail(tr("an index reaches beyond the %1 vertices before it").arg(static_cast<qulonglong>(m_vertices)));
    return static_cast<std::uint32_t>(index);
}

void PlyElements::faces(const PlyElement& element)
{
    if (std::any_of(element.properties.begin(), element.properties.end(), isWedgeList) && !m_wedgeVertices)
        m_wedgeVertices.emplace(m_arrays, m_task);
    for (std::uint64_t i = 0; i < element.count; ++i) {
        m_values->beginRow();
        m_face.corners.clear();
        m_face.wedges.clear();
        for (const PlyProperty& property : element.properties)
            faceValue(property);
        addFace();
    }
    tellOfFaces(element);
}

void PlyElements::faceValue(const PlyProperty& property)
{
    if (isVertexList(property)) {
        const std::uint64_t length = m_values->takeLength(property);
        takeElements(length);
        for (std::uint64_t i = 0; i < length; ++i)
            m_face.corners.push_back(takeIndex(property.type));
    } else if (isWedgeList(property)) {
        const std::uint64_t length = m_values->takeLength(property);
        takeElements(length);
        for (std::uint64_t i = 0; i < length; ++i)
            m_face.wedges.push_back(static_cast<float>(m_values->take(property.type)));
    } else if (isTextureNumber(property)) {
        const double number = m_values->take(property.type);
        const bool isThere = number >= 0 && number < static_cast<double>(m_header.textures.size());
        m_wrongTextures += number >= 0 && !isThere && !m_header.textures.empty() ? 1 : 0;
        m_face.texture = isThere ? static_cast<std::int32_t>(number) : -1;
    } else {
        skip(property);
    }
}

/// Each corner goes to the vertex that has its texture coordinates.
void PlyElements::applyWedges()
{
    if (m_face.wedges.empty())
        return;
    if (m_face.wedges.size() != 2 * m_face.corners.size()) {
        ++m_wrongWedges;
        return;
    }
    for (std::size_t i = 0; i < m_face.corners.size(); ++i)
        m_face.corners[i] = m_wedgeVertices->vertexFor(
            m_face.corners[i], {m_face.wedges[2 * i], m_face.wedges[2 * i + 1]}, m_values->place());
}

void PlyElements::addFace()
{
    applyWedges();
    osg::appendPolygon(m_arrays.positions, m_face.corners, m_arrays.triangles);
    if (m_header.textures.size() > 1)
        m_textureOfTriangle.resize(m_arrays.triangles.size() / 3, m_face.texture);
}

void PlyElements::tellOfFaces(const PlyElement& element)
{
    const auto isColor = [](const PlyProperty& p) { return p.name == "red"; };
    if (element.count > 0 && std::any_of(element.properties.begin(), element.properties.end(), isColor))
        m_task.warn(tr("the colours of faces were left out"));
    if (!std::any_of(element.properties.begin(), element.properties.end(), isTextureNumber))
        m_textureOfTriangle.clear();
    if (m_wrongWedges > 0)
        m_task.warn(tr("the texture coordinates of %1 faces were left out: they are not two for each corner")
                        .arg(static_cast<qulonglong>(m_wrongWedges)));
    if (m_wrongTextures > 0)
        m_task.warn(
            tr("%1 faces bear a picture that the file does not name").arg(static_cast<qulonglong>(m_wrongTextures)));
}

/// Three indices and the number of a picture for each corner, in arrays that grow by doubling.
void PlyElements::takeElements(std::uint64_t corners)
{
    constexpr std::uint64_t memoryOfCorner = 2 * 4 * sizeof(std::uint32_t);
    m_task.takeMemory(corners * memoryOfCorner);
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
    std::vector<std::uint32_t>& corners = m_face.corners;
    corners.clear();
    for (std::uint64_t i = 0; i < length; ++i) {
        const double index = m_values->take(list.type);
        if (index < 0) {
            corners.clear();
            continue;
        }
        if (!(index < static_cast<double>(m_vertices)))
            fail(tr("an index reaches beyond the %1 vertices before it").arg(static_cast<qulonglong>(m_vertices)));
        corners.push_back(static_cast<std::uint32_t>(index));
        const std::size_t last = corners.size() - 1;
        if (last >= 2) {
            const bool isEven = last % 2 == 0;
            m_arrays.triangles.insert(m_arrays.triangles.end(), {corners[last - (isEven ? 2 : 1)],
                                                                 corners[last - (isEven ? 1 : 2)], corners[last]});
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

std::vector<TexturePart> readPlyElements(const PlyHeader& header, std::string_view file, ReadTask& task)
{
    return PlyElements(header, file, task).read();
}

} // namespace files::ply
