#include "scene/FeatureEdges.h"

#include <Eigen/Core>
#include <Eigen/Geometry>

#include <algorithm>
#include <bit>
#include <cmath>
#include <numeric>
#include <unordered_map>
#include <utility>

namespace osg
{

namespace
{

struct PlaceHash {
    std::size_t operator()(const Vec3f& place) const
    {
        // 0 and -0 are one place, and have the same bits here.
        const auto bits = [](float value) { return std::uint64_t(std::bit_cast<std::uint32_t>(value + 0.0f)); };
        std::uint64_t hash = bits(place.x) * 0x9E3779B97F4A7C15u;
        hash = (hash ^ hash >> 29 ^ bits(place.y)) * 0xBF58476D1CE4E5B9u;
        hash = (hash ^ hash >> 32 ^ bits(place.z)) * 0x94D049BB133111EBu;
        return hash ^ hash >> 31;
    }
};

bool isFinite(const Vec3f& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

Eigen::Vector3d vectorOf(const Vec3f& v)
{
    return {v.x, v.y, v.z};
}

/// One side of a triangle, from the lower place to the higher one.
struct Side {
    std::uint32_t low, high; ///< places
    std::uint32_t triangle;
    std::uint32_t from, to; ///< vertices, in the order of the places
    bool isForward;         ///< the triangle goes from the lower place to the higher one

    auto key() const { return std::pair(low, high); }
};

/// A segment that is part of an edge.
struct Segment {
    std::uint32_t face, other;
    std::uint32_t triangle; ///< the first one at it, which keeps the order of the mesh
    std::uint32_t from, to;

    auto key() const { return std::pair(face, other); }
};

class EdgeSearch
{
public:
    EdgeSearch(const Mesh& mesh, double creaseAngle) : m_mesh(mesh), m_leastCosine(std::cos(creaseAngle)) {}

    FeatureEdges run();

private:
    void findPlaces();
    void findFaces();
    void findSides();
    void addSegment(const Side* first, const Side* last);
    void addEdges(const Segment* first, const Segment* last, FeatureEdges& result) const;
    Eigen::Vector3d normalOf(std::uint32_t triangle) const;
    bool isCrease(const Side& a, const Side& b) const;

    const Mesh& m_mesh;
    double m_leastCosine;
    std::vector<std::uint32_t> m_places; ///< by vertex
    std::vector<std::uint32_t> m_faces;  ///< by triangle; empty without faces
    std::vector<Side> m_sides;
    std::vector<Segment> m_segments;
};

void EdgeSearch::findPlaces()
{
    std::unordered_map<Vec3f, std::uint32_t, PlaceHash> numbers;
    numbers.reserve(m_mesh.positions.size());
    m_places.reserve(m_mesh.positions.size());
    for (const Vec3f& position : m_mesh.positions)
        m_places.push_back(numbers.try_emplace(position, static_cast<std::uint32_t>(numbers.size())).first->second);
}

void EdgeSearch::findFaces()
{
    if (m_mesh.faces.empty())
        return;
    m_faces.assign(m_mesh.triangles.size() / 3, FeatureEdge::noFace);
    for (std::uint32_t face = 0; face < m_mesh.faces.size(); ++face) {
        const FaceRange& range = m_mesh.faces[face];
        const std::size_t end = std::min(m_faces.size(), std::size_t(range.first) + range.count);
        for (std::size_t triangle = range.first; triangle < end; ++triangle)
            m_faces[triangle] = face;
    }
}

void EdgeSearch::findSides()
{
    const auto triangles = static_cast<std::uint32_t>(m_mesh.triangles.size() / 3);
    m_sides.reserve(m_mesh.triangles.size());
    for (std::uint32_t triangle = 0; triangle < triangles; ++triangle) {
        const std::uint32_t* corners = &m_mesh.triangles[std::size_t(3) * triangle];
        const auto isPlaced = [&](std::uint32_t vertex) {
            return vertex < m_mesh.positions.size() && isFinite(m_mesh.positions[vertex]);
        };
        if (!std::all_of(corners, corners + 3, isPlaced) || !(normalOf(triangle).squaredNorm() > 0))
            continue;
        for (int i = 0; i < 3; ++i) {
            const std::uint32_t from = corners[i], to = corners[(i + 1) % 3];
            if (m_places[from] <= m_places[to])
                m_sides.push_back({m_places[from], m_places[to], triangle, from, to, true});
            else
                m_sides.push_back({m_places[to], m_places[from], triangle, to, from, false});
        }
    }
    std::stable_sort(m_sides.begin(), m_sides.end(), [](const Side& a, const Side& b) { return a.key() < b.key(); });
}

/// Of length 1; 0 for a triangle without area.
Eigen::Vector3d EdgeSearch::normalOf(std::uint32_t triangle) const
{
    const std::uint32_t* corners = &m_mesh.triangles[std::size_t(3) * triangle];
    const Eigen::Vector3d origin = vectorOf(m_mesh.positions[corners[0]]);
    const Eigen::Vector3d normal =
        (vectorOf(m_mesh.positions[corners[1]]) - origin).cross(vectorOf(m_mesh.positions[corners[2]]) - origin);
    const double length = normal.norm();
    return length > 0 && std::isfinite(length) ? Eigen::Vector3d(normal / length) : Eigen::Vector3d(0, 0, 0);
}

/// Whether the two triangles turn away from each other. Those that go round the same way pass their common side in
/// opposite directions.
bool EdgeSearch::isCrease(const Side& a, const Side& b) const
{
    const double cosine = normalOf(a.triangle).dot(normalOf(b.triangle));
    return (a.isForward == b.isForward ? -cosine : cosine) < m_leastCosine;
}

/// The sides from `first` to `last` lie between the same two places.
void EdgeSearch::addSegment(const Side* first, const Side* last)
{
    const auto count = last - first;
    Segment segment{FeatureEdge::noFace, FeatureEdge::noFace, first->triangle, first->from, first->to};
    if (!m_faces.empty()) {
        segment.face = m_faces[first->triangle];
        for (const Side* side = first + 1; side < last; ++side)
            if (m_faces[side->triangle] != segment.face)
                segment.other = std::min(segment.other, m_faces[side->triangle]);
        if (segment.face > segment.other)
            std::swap(segment.face, segment.other);
    }
    const bool isInside = m_faces.empty() ? !isCrease(*first, first[count - 1]) : segment.other == FeatureEdge::noFace;
    if (count != 2 || !isInside)
        m_segments.push_back(segment);
}

/// The segments from `first` to `last` are between the same two faces: those that hang together are one edge.
void EdgeSearch::addEdges(const Segment* first, const Segment* last, FeatureEdges& result) const
{
    std::vector<std::size_t> parents(static_cast<std::size_t>(last - first));
    const auto rootOf = [&parents](std::size_t i) {
        while (parents[i] != i)
            i = parents[i] = parents[parents[i]];
        return i;
    };
    std::unordered_map<std::uint32_t, std::size_t> atPlace;
    for (std::size_t i = 0; i < parents.size(); ++i) {
        parents[i] = i;
        for (const std::uint32_t vertex : {first[i].from, first[i].to}) {
            const std::size_t a = rootOf(atPlace.try_emplace(m_places[vertex], i).first->second), b = rootOf(i);
            parents[std::max(a, b)] = std::min(a, b);
        }
    }
    std::vector<std::size_t> order(parents.size());
    std::iota(order.begin(), order.end(), std::size_t(0));
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return rootOf(a) < rootOf(b); });
    for (std::size_t i = 0; i < order.size(); ++i) {
        const Segment& segment = first[order[i]];
        if (i == 0 || rootOf(order[i]) != rootOf(order[i - 1]))
            result.edges.push_back(
                {static_cast<std::uint32_t>(result.segments.size() / 2), 0, segment.face, segment.other});
        ++result.edges.back().count;
        result.segments.insert(result.segments.end(), {segment.from, segment.to});
    }
}

FeatureEdges EdgeSearch::run()
{
    findPlaces();
    findFaces();
    findSides();
    for (std::size_t i = 0, next = 0; i < m_sides.size(); i = next) {
        for (next = i; next < m_sides.size() && m_sides[next].key() == m_sides[i].key();)
            ++next;
        addSegment(&m_sides[i], &m_sides[i] + (next - i));
    }
    std::stable_sort(m_segments.begin(), m_segments.end(), [](const Segment& a, const Segment& b) {
        return std::pair(a.key(), a.triangle) < std::pair(b.key(), b.triangle);
    });
    FeatureEdges result;
    for (std::size_t i = 0, next = 0; i < m_segments.size(); i = next) {
        for (next = i; next < m_segments.size() && m_segments[next].key() == m_segments[i].key();)
            ++next;
        addEdges(&m_segments[i], &m_segments[i] + (next - i), result);
    }
    return result;
}

} // namespace

FeatureEdges featureEdges(const Mesh& mesh, double creaseAngle)
{
    return EdgeSearch(mesh, creaseAngle).run();
}

} // namespace osg
