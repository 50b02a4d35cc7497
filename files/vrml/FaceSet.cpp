#include "files/vrml/FaceSet.h"

#include "scene/CornerNormals.h"
#include "scene/Polygons.h"

#include <algorithm>
#include <limits>

namespace files::vrml
{

namespace
{

/// Vertices at one point that are compared with a further corner of it.
constexpr std::size_t comparedVertices = 32;

class MeshMaker
{
public:
    MeshMaker(FaceSet& set, const Source& source) : m_set(set), m_source(source) {}

    osg::Mesh run();

private:
    void collectFaces();
    void addFace(std::size_t entry, std::size_t end, std::uint32_t number);
    void orient();
    template <class T>
    std::vector<std::uint32_t> valueOfCorners(Carried<T>& carried, const QString& what);
    template <class T>
    std::vector<std::uint32_t> valuesOf(const Carried<T>& carried) const;
    bool isPlain() const;
    osg::Mesh plainMesh();
    osg::Mesh splitMesh();
    void makeNormals();
    void makeVertices();
    std::vector<std::uint32_t> triangles(std::span<const osg::Vec3f> positions,
                                         std::span<const std::uint32_t> vertexOfCorner);

    FaceSet& m_set;
    const Source& m_source;
    std::vector<osg::PolygonFace> m_faces;
    std::vector<std::uint32_t> m_pointOfCorner;
    std::vector<std::uint32_t> m_entryOfCorner;
    std::vector<std::uint32_t> m_normalOf, m_colorOf, m_texCoordOf; ///< each corner; empty for none
    std::vector<std::uint32_t> m_vertexOf;                          ///< each corner
    std::vector<std::uint32_t> m_cornerOfVertex;                    ///< one of those that a vertex stands for
};

void MeshMaker::addFace(std::size_t entry, std::size_t end, std::uint32_t number)
{
    m_faces.push_back({static_cast<std::uint32_t>(m_pointOfCorner.size()), static_cast<std::uint32_t>(end - entry),
                       static_cast<std::uint32_t>(entry), number});
    for (std::size_t i = entry; i < end; ++i) {
        m_pointOfCorner.push_back(static_cast<std::uint32_t>(m_set.corners[i]));
        m_entryOfCorner.push_back(static_cast<std::uint32_t>(i));
    }
}

/// Faces of less than three corners are left out; they have a number all the same.
void MeshMaker::collectFaces()
{
    std::uint32_t number = 0;
    std::uint64_t leftOut = 0;
    const auto all = m_set.corners;
    m_pointOfCorner.reserve(all.size());
    m_entryOfCorner.reserve(all.size());
    m_faces.reserve(all.size() / 4 + 1);
    for (std::size_t start = 0; start < all.size(); ++number) {
        std::size_t end = start;
        bool isSound = true;
        for (; end < all.size() && all[end] >= 0; ++end)
            isSound = isSound && static_cast<std::size_t>(all[end]) < m_set.points.size();
        if (!isSound)
            ++leftOut;
        else if (end - start >= 3)
            addFace(start, end, number);
        start = end + 1;
    }
    if (leftOut > 0)
        m_source.warn(tr("%1 faces with corners beyond the %2 points were left out")
                          .arg(static_cast<qulonglong>(leftOut))
                          .arg(static_cast<qulonglong>(m_set.points.size())),
                      m_set.offset);
}

void MeshMaker::orient()
{
    for (const osg::PolygonFace& face : m_faces) {
        std::reverse(m_pointOfCorner.begin() + face.first, m_pointOfCorner.begin() + face.first + face.count);
        std::reverse(m_entryOfCorner.begin() + face.first, m_entryOfCorner.begin() + face.first + face.count);
    }
}

/// The number of the value that each corner carries.
template <class T>
std::vector<std::uint32_t> MeshMaker::valuesOf(const Carried<T>& carried) const
{
    constexpr auto none = std::numeric_limits<std::uint32_t>::max();
    std::vector<std::uint32_t> values;
    values.reserve(m_pointOfCorner.size());
    for (const osg::PolygonFace& face : m_faces) {
        for (std::uint32_t i = face.first; i < face.first + face.count; ++i) {
            const std::uint32_t plain = carried.isPerCorner ? m_pointOfCorner[i] : face.number;
            const std::uint32_t entry = carried.isPerCorner ? m_entryOfCorner[i] : face.number;
            if (carried.index.empty())
                values.push_back(plain);
            else
                values.push_back(entry < carried.index.size() ? static_cast<std::uint32_t>(carried.index[entry])
                                                              : none);
        }
    }
    return values;
}

template <class T>
std::vector<std::uint32_t> MeshMaker::valueOfCorners(Carried<T>& carried, const QString& what)
{
    if (carried.values.empty())
        return {};
    std::vector<std::uint32_t> values = valuesOf(carried);
    if (std::all_of(values.begin(), values.end(), [&](std::uint32_t v) { return v < carried.values.size(); }))
        return values;
    m_source.warn(
        tr("%1 were left out: there are only %2").arg(what).arg(static_cast<qulonglong>(carried.values.size())),
        m_set.offset);
    carried.values.clear();
    return {};
}

/// True when the points can be the vertices.
bool MeshMaker::isPlain() const
{
    const auto fits = [this](const auto& carried) {
        return carried.values.empty() ||
               (carried.isPerCorner && carried.index.empty() && carried.values.size() >= m_set.points.size());
    };
    return !m_set.normals.values.empty() && fits(m_set.normals) && fits(m_set.colors) && fits(m_set.texCoords);
}

std::vector<std::uint32_t> MeshMaker::triangles(std::span<const osg::Vec3f> positions,
                                                std::span<const std::uint32_t> vertexOfCorner)
{
    std::vector<std::uint32_t> result;
    result.reserve(m_pointOfCorner.size());
    for (const osg::PolygonFace& face : m_faces)
        osg::appendPolygon(positions, vertexOfCorner.subspan(face.first, face.count), result);
    return result;
}

osg::Mesh MeshMaker::plainMesh()
{
    const std::uint64_t arrays = 2u + !m_set.colors.values.empty() + !m_set.texCoords.values.empty();
    m_source.task().countVertices(m_set.points.size() * arrays, m_source.place(m_set.offset));
    m_source.task().takeMemory(m_set.points.size() * arrays * sizeof(osg::Color4f), m_source.place(m_set.offset));
    const auto cut = [this](auto& values) {
        if (!values.empty())
            values.resize(m_set.points.size());
    };
    cut(m_set.normals.values);
    cut(m_set.colors.values);
    cut(m_set.texCoords.values);
    osg::Mesh mesh;
    mesh.triangles = triangles(m_set.points, m_pointOfCorner);
    mesh.positions = std::move(m_set.points);
    mesh.normals = std::move(m_set.normals.values);
    mesh.colors = std::move(m_set.colors.values);
    mesh.texCoords = std::move(m_set.texCoords.values);
    return mesh;
}

void MeshMaker::makeNormals()
{
    const osg::CornersOfPoints corners(m_pointOfCorner, m_set.points.size());
    m_set.normals.values = osg::cornerNormals(m_set.points, m_pointOfCorner, m_faces, corners, m_set.creaseAngle);
    m_normalOf.resize(m_pointOfCorner.size());
    for (std::uint32_t i = 0; i < m_normalOf.size(); ++i)
        m_normalOf[i] = i;
}

/// Corners at one point that carry the same become one vertex.
void MeshMaker::makeVertices()
{
    const osg::CornersOfPoints corners(m_pointOfCorner, m_set.points.size());
    const auto same = [](const auto& values, const auto& valueOf, std::uint32_t a, std::uint32_t b) {
        return valueOf.empty() || valueOf[a] == valueOf[b] || values[valueOf[a]] == values[valueOf[b]];
    };
    m_vertexOf.resize(m_pointOfCorner.size());
    m_cornerOfVertex.reserve(m_pointOfCorner.size());
    for (std::size_t point = 0; point < m_set.points.size(); ++point) {
        const std::size_t firstHere = m_cornerOfVertex.size();
        for (const std::uint32_t corner : corners.of(point)) {
            const std::size_t start =
                std::max(firstHere, std::max(m_cornerOfVertex.size(), comparedVertices) - comparedVertices);
            const auto known = std::find_if(m_cornerOfVertex.begin() + static_cast<std::ptrdiff_t>(start),
                                            m_cornerOfVertex.end(), [&](std::uint32_t other) {
                                                return same(m_set.normals.values, m_normalOf, corner, other) &&
                                                       same(m_set.colors.values, m_colorOf, corner, other) &&
                                                       same(m_set.texCoords.values, m_texCoordOf, corner, other);
                                            });
            m_vertexOf[corner] = static_cast<std::uint32_t>(known - m_cornerOfVertex.begin());
            if (known == m_cornerOfVertex.end())
                m_cornerOfVertex.push_back(corner);
        }
    }
}

/// `values` of the corners that vertices stand for.
template <class T>
std::vector<T> picked(const std::vector<T>& values, const std::vector<std::uint32_t>& valueOf,
                      const std::vector<std::uint32_t>& cornerOfVertex)
{
    std::vector<T> result;
    if (valueOf.empty())
        return result;
    result.reserve(cornerOfVertex.size());
    for (const std::uint32_t corner : cornerOfVertex)
        result.push_back(values[valueOf[corner]]);
    return result;
}

osg::Mesh MeshMaker::splitMesh()
{
    m_normalOf = valueOfCorners(m_set.normals, tr("the normals"));
    m_colorOf = valueOfCorners(m_set.colors, tr("the colours"));
    m_texCoordOf = valueOfCorners(m_set.texCoords, tr("the texture coordinates"));
    const std::uint64_t arrays = 2u + !m_colorOf.empty() + !m_texCoordOf.empty();
    m_source.task().countVertices(m_pointOfCorner.size() * arrays, m_source.place(m_set.offset));
    if (m_normalOf.empty())
        makeNormals();
    makeVertices();
    osg::Mesh mesh;
    std::vector<osg::Vec3f> positions = picked(m_set.points, m_pointOfCorner, m_cornerOfVertex);
    mesh.triangles = triangles(positions, m_vertexOf);
    mesh.positions = std::move(positions);
    mesh.normals = picked(m_set.normals.values, m_normalOf, m_cornerOfVertex);
    mesh.colors = picked(m_set.colors.values, m_colorOf, m_cornerOfVertex);
    mesh.texCoords = picked(m_set.texCoords.values, m_texCoordOf, m_cornerOfVertex);
    return mesh;
}

osg::Mesh MeshMaker::run()
{
    if (m_set.corners.size() >= std::numeric_limits<std::uint32_t>::max())
        m_source.fail(ErrorCode::LimitExceeded, tr("the faces have too many corners"), m_set.offset);
    // The arrays of the mesh, and what is known of each corner while its vertices are sought.
    constexpr std::uint64_t memoryOfCorner = 100;
    m_source.task().takeMemory(m_set.corners.size() * memoryOfCorner, m_source.place(m_set.offset));
    collectFaces();
    if (m_faces.empty())
        return {};
    if (!m_set.isCounterClockwise)
        orient();
    return isPlain() ? plainMesh() : splitMesh();
}

} // namespace

osg::Mesh makeMesh(FaceSet set, const Source& source)
{
    return MeshMaker(set, source).run();
}

} // namespace files::vrml
