#include "geometry/TextureTransfer.h"

#include "geometry/VertexCopies.h"
#include "geometry/rays/EmbreeHandles.h"
#include "scene/EigenValues.h"

#include <Eigen/Geometry>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

namespace geometry
{

namespace
{

/// How far a corner is moved into its triangle to tell the sides of a seam apart, as part of the way to the middle.
constexpr float inwards = 1e-3F;
/// Texture coordinates of one vertex that differ by more than this part of all their range are two sides of a seam.
constexpr float seamStep = 5e-3F;

using Weights = Eigen::Vector3f;
/// (u, v) of the first set and of the second, 0 for one that there is not.
using Coordinates = Eigen::Vector4f;

/// Of the vertex `index`.
Coordinates coordinatesOf(const osg::Mesh& mesh, std::uint32_t index)
{
    Coordinates result = Coordinates::Zero();
    if (!mesh.texCoords.empty())
        result.head<2>() << mesh.texCoords[index].x, mesh.texCoords[index].y;
    if (!mesh.texCoords1.empty())
        result.tail<2>() << mesh.texCoords1[index].x, mesh.texCoords1[index].y;
    return result;
}

/// The weights of the corners at the place of a triangle that is closest to `point` (Ericson, Real-Time Collision
/// Detection, 5.1.5).
Weights closestPlace(const Eigen::Vector3f& point, const std::array<Eigen::Vector3f, 3>& corners)
{
    const auto& [a, b, c] = corners;
    const Eigen::Vector3f ab = b - a, ac = c - a;
    const float d1 = ab.dot(point - a), d2 = ac.dot(point - a);
    if (d1 <= 0 && d2 <= 0)
        return {1, 0, 0};
    const float d3 = ab.dot(point - b), d4 = ac.dot(point - b);
    if (d3 >= 0 && d4 <= d3)
        return {0, 1, 0};
    const float d5 = ab.dot(point - c), d6 = ac.dot(point - c);
    if (d6 >= 0 && d5 <= d6)
        return {0, 0, 1};
    const float onC = d1 * d4 - d3 * d2, onB = d5 * d2 - d1 * d6, onA = d3 * d6 - d5 * d4;
    if (onC <= 0 && d1 >= 0 && d3 <= 0 && d1 > d3)
        return {1 - d1 / (d1 - d3), d1 / (d1 - d3), 0};
    if (onB <= 0 && d2 >= 0 && d6 <= 0 && d2 > d6)
        return {1 - d2 / (d2 - d6), 0, d2 / (d2 - d6)};
    const float toC = d4 - d3, toB = d5 - d6;
    if (onA <= 0 && toC >= 0 && toB >= 0 && toC + toB > 0)
        return {0, 1 - toC / (toC + toB), toC / (toC + toB)};
    const float sum = onA + onB + onC;
    return sum > 0 ? Weights(onA / sum, onB / sum, onC / sum) : Weights(1, 0, 0);
}

/// The triangles of a textured mesh, by what is closest.
class TexturedSurface
{
public:
    explicit TexturedSurface(const osg::Mesh& mesh) : m_mesh(mesh), m_device(rtcNewDevice("threads=1"))
    {
        if (!m_device)
            return;
        m_scene.reset(rtcNewScene(m_device.get()));
        const rays::GeometryHandle triangles(rtcNewGeometry(m_device.get(), RTC_GEOMETRY_TYPE_TRIANGLE));
        void* positions = rtcSetNewGeometryBuffer(triangles.get(), RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3,
                                                  sizeof(osg::Vec3f), mesh.positions.size());
        void* indices = rtcSetNewGeometryBuffer(triangles.get(), RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3,
                                                3 * sizeof(std::uint32_t), mesh.triangles.size() / 3);
        if (!positions || !indices)
            return;
        std::copy(mesh.positions.begin(), mesh.positions.end(), static_cast<osg::Vec3f*>(positions));
        std::copy(mesh.triangles.begin(), mesh.triangles.end(), static_cast<std::uint32_t*>(indices));
        rtcCommitGeometry(triangles.get());
        rtcAttachGeometry(m_scene.get(), triangles.get());
        rtcCommitScene(m_scene.get());
        m_isReady = rtcGetDeviceError(m_device.get()) == RTC_ERROR_NONE;
    }

    bool isReady() const { return m_isReady; }

    /// The triangle that is closest to `point`; nothing where no triangle has a place.
    std::optional<std::uint32_t> closest(const Eigen::Vector3f& point) const
    {
        Search search{*this, point, std::numeric_limits<float>::max(), std::nullopt};
        RTCPointQuery query = {};
        query.x = point.x();
        query.y = point.y();
        query.z = point.z();
        query.radius = std::numeric_limits<float>::infinity();
        RTCPointQueryContext context;
        rtcInitPointQueryContext(&context);
        rtcPointQuery(m_scene.get(), &query, &context, &TexturedSurface::look, &search);
        return search.found;
    }

    /// At the place of `triangle` that is closest to `point`.
    Coordinates coordinates(std::uint32_t triangle, const Eigen::Vector3f& point) const
    {
        const Weights weights = closestPlace(point, corners(triangle));
        Coordinates result = Coordinates::Zero();
        for (int i = 0; i < 3; ++i)
            result += weights[i] * coordinatesOf(m_mesh, m_mesh.triangles[3 * triangle + static_cast<unsigned>(i)]);
        return result;
    }

private:
    struct Search {
        const TexturedSurface& surface;
        Eigen::Vector3f point;
        float distance;
        std::optional<std::uint32_t> found;
    };

    static bool look(RTCPointQueryFunctionArguments* arguments)
    {
        auto& search = *static_cast<Search*>(arguments->userPtr);
        const std::array<Eigen::Vector3f, 3> corners = search.surface.corners(arguments->primID);
        const Weights weights = closestPlace(search.point, corners);
        const Eigen::Vector3f place = weights[0] * corners[0] + weights[1] * corners[1] + weights[2] * corners[2];
        const float distance = (place - search.point).norm();
        if (!(distance < search.distance))
            return false;
        search.distance = arguments->query->radius = distance;
        search.found = arguments->primID;
        return true;
    }

    std::array<Eigen::Vector3f, 3> corners(std::uint32_t triangle) const
    {
        const std::uint32_t* indices = m_mesh.triangles.data() + 3 * std::size_t{triangle};
        return {osg::toEigen(m_mesh.positions[indices[0]]), osg::toEigen(m_mesh.positions[indices[1]]),
                osg::toEigen(m_mesh.positions[indices[2]])};
    }

    const osg::Mesh& m_mesh;
    rays::DeviceHandle m_device;
    rays::SceneHandle m_scene;
    bool m_isReady = false;
};

/// The vertices of a mesh as they get their texture coordinates.
class TexturedVertices
{
public:
    TexturedVertices(std::size_t count, const Coordinates& tolerance)
        : m_count(count), m_tolerance(tolerance), m_values(count, Coordinates::Zero()), m_isUsed(count, false),
          m_next(count, 0)
    {
    }

    /// The vertex that is `vertex` with these texture coordinates.
    std::uint32_t taken(std::uint32_t vertex, const Coordinates& value)
    {
        while (m_isUsed[vertex] && !isNear(m_values[vertex], value)) {
            if (m_next[vertex] == 0)
                m_next[vertex] = doubled(vertex);
            vertex = m_next[vertex];
        }
        if (!m_isUsed[vertex])
            m_values[vertex] = value;
        m_isUsed[vertex] = true;
        return vertex;
    }

    /// Gives `mesh`, which the vertices are those of, the doubled ones, and all of them the sets that `old` has.
    void finish(const osg::Mesh& old, osg::Mesh& mesh) const
    {
        appendVertexCopies(mesh, m_copies);
        if (!old.texCoords.empty())
            mesh.texCoords = values(0);
        if (!old.texCoords1.empty())
            mesh.texCoords1 = values(2);
    }

private:
    bool isNear(const Coordinates& a, const Coordinates& b) const
    {
        return ((a - b).cwiseAbs().array() <= m_tolerance.array()).all();
    }

    std::uint32_t doubled(std::uint32_t vertex)
    {
        m_copies.push_back(vertex < m_count ? vertex : m_copies[vertex - m_count]);
        m_values.push_back(Coordinates::Zero());
        m_isUsed.push_back(false);
        m_next.push_back(0);
        return static_cast<std::uint32_t>(m_values.size() - 1);
    }

    std::vector<osg::Vec2f> values(Eigen::Index first) const
    {
        std::vector<osg::Vec2f> result;
        result.reserve(m_values.size());
        for (const Coordinates& value : m_values)
            result.push_back({value[first], value[first + 1]});
        return result;
    }

    std::size_t m_count; ///< without copies
    Coordinates m_tolerance;
    std::vector<std::uint32_t> m_copies; ///< of which vertices
    std::vector<Coordinates> m_values;
    std::vector<bool> m_isUsed;        ///< whether the vertex has its texture coordinates
    std::vector<std::uint32_t> m_next; ///< the same vertex on another side of a seam, 0 if there is none yet
};

float rangeOf(const osg::Buffer<osg::Vec2f>& values)
{
    Eigen::AlignedBox2f box;
    for (const osg::Vec2f& value : values)
        if (std::isfinite(value.x) && std::isfinite(value.y))
            box.extend(Eigen::Vector2f(value.x, value.y));
    return box.isEmpty() ? 0 : box.sizes().maxCoeff();
}

/// The largest difference that is none, of each coordinate.
Coordinates toleranceFor(const osg::Mesh& mesh)
{
    const float first = seamStep * rangeOf(mesh.texCoords), second = seamStep * rangeOf(mesh.texCoords1);
    return {first, first, second, second};
}

} // namespace

void transferTexCoords(const osg::Mesh& old, osg::Mesh& made)
{
    if ((old.texCoords.empty() && old.texCoords1.empty()) || old.triangles.empty() || made.triangles.empty())
        return;
    const TexturedSurface surface(old);
    if (!surface.isReady())
        return;
    TexturedVertices vertices(made.positions.size(), toleranceFor(old));
    std::vector<std::uint32_t> triangles(made.triangles.begin(), made.triangles.end());
    for (std::size_t first = 0; first + 2 < triangles.size(); first += 3) {
        std::array<Eigen::Vector3f, 3> corners;
        for (std::size_t i = 0; i < 3; ++i)
            corners[i] = osg::toEigen(made.positions[triangles[first + i]]);
        const Eigen::Vector3f middle = (corners[0] + corners[1] + corners[2]) / 3;
        for (std::size_t i = 0; i < 3; ++i) {
            const auto closest = surface.closest(corners[i] + inwards * (middle - corners[i]));
            const Coordinates value = closest ? surface.coordinates(*closest, corners[i]) : Coordinates::Zero();
            triangles[first + i] = vertices.taken(triangles[first + i], value);
        }
    }
    made.triangles = std::move(triangles);
    vertices.finish(old, made);
}

} // namespace geometry
