#include "ptx/model/EdgeSplitter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <vector>

namespace ptx::model
{

namespace
{

using Triangle = std::array<std::uint32_t, 3>;

double squaredDistance(const osg::Vec3f& a, const osg::Vec3f& b)
{
    const double x = double(a.x) - b.x;
    const double y = double(a.y) - b.y;
    const double z = double(a.z) - b.z;
    return x * x + y * y + z * z;
}

// The same for (a, b) and (b, a), bit by bit.
osg::Vec3f middle(const osg::Vec3f& a, const osg::Vec3f& b)
{
    return {(a.x + b.x) * 0.5f, (a.y + b.y) * 0.5f, (a.z + b.z) * 0.5f};
}

osg::Vec2f middle(const osg::Vec2f& a, const osg::Vec2f& b)
{
    return {(a.x + b.x) * 0.5f, (a.y + b.y) * 0.5f};
}

osg::Vec3f normalized(const osg::Vec3f& v, const osg::Vec3f& otherwise)
{
    const float length = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
    return length > 0 ? osg::Vec3f{v.x / length, v.y / length, v.z / length} : otherwise;
}

class Splitter
{
public:
    Splitter(const osg::Mesh& mesh, float longest)
        : m_positions(mesh.positions.begin(), mesh.positions.end()),
          m_normals(mesh.normals.begin(), mesh.normals.end()),
          m_texCoords(mesh.texCoords.begin(), mesh.texCoords.end()), m_limit(double(longest) * longest)
    {
    }

    std::shared_ptr<const osg::Mesh> split(const osg::Mesh& mesh)
    {
        std::vector<osg::FaceRange> faces;
        for (const osg::FaceRange& face : mesh.faces) {
            const auto first = static_cast<std::uint32_t>(m_triangles.size() / 3);
            addFace(mesh, face);
            faces.push_back({first, static_cast<std::uint32_t>(m_triangles.size() / 3) - first});
        }
        auto result = std::make_shared<osg::Mesh>(mesh);
        result->positions = std::move(m_positions);
        result->normals = std::move(m_normals);
        result->texCoords = std::move(m_texCoords);
        result->triangles = std::move(m_triangles);
        result->faces = std::move(faces);
        return result;
    }

private:
    void addFace(const osg::Mesh& mesh, const osg::FaceRange& face)
    {
        std::vector<Triangle> open;
        for (std::size_t i = face.first; i < std::size_t(face.first) + face.count; ++i)
            open.push_back({mesh.triangles[3 * i], mesh.triangles[3 * i + 1], mesh.triangles[3 * i + 2]});
        while (!open.empty()) {
            const Triangle triangle = open.back();
            open.pop_back();
            if (!splitLongest(triangle, open))
                m_triangles.insert(m_triangles.end(), triangle.begin(), triangle.end());
        }
    }

    /// Replaces `triangle` by two halves when its longest edge is too long.
    bool splitLongest(const Triangle& triangle, std::vector<Triangle>& open)
    {
        for (std::size_t i = 0; i < 3; ++i) {
            const std::uint32_t a = triangle[i];
            const std::uint32_t b = triangle[(i + 1) % 3];
            const std::uint32_t c = triangle[(i + 2) % 3];
            if (isTooLong(m_positions[a], m_positions[b]) && isLongest(a, b, c)) {
                const std::uint32_t half = halfway(a, b);
                open.push_back({a, half, c});
                open.push_back({half, b, c});
                return true;
            }
        }
        return false;
    }

    // Neighbouring floats have nothing between them.
    bool isTooLong(const osg::Vec3f& a, const osg::Vec3f& b) const
    {
        return squaredDistance(a, b) > m_limit && middle(a, b) != a && middle(a, b) != b;
    }

    bool isLongest(std::uint32_t a, std::uint32_t b, std::uint32_t c) const
    {
        const double length = squaredDistance(m_positions[a], m_positions[b]);
        return length >= squaredDistance(m_positions[b], m_positions[c]) &&
               length >= squaredDistance(m_positions[c], m_positions[a]);
    }

    std::uint32_t halfway(std::uint32_t a, std::uint32_t b)
    {
        const auto next = static_cast<std::uint32_t>(m_positions.size());
        const auto [entry, isNew] = m_halves.try_emplace(std::minmax(a, b), next);
        if (isNew) {
            m_positions.push_back(middle(m_positions[a], m_positions[b]));
            if (!m_normals.empty())
                m_normals.push_back(normalized(middle(m_normals[a], m_normals[b]), m_normals[a]));
            if (!m_texCoords.empty())
                m_texCoords.push_back(middle(m_texCoords[a], m_texCoords[b]));
        }
        return entry->second;
    }

    std::vector<osg::Vec3f> m_positions;
    std::vector<osg::Vec3f> m_normals;
    std::vector<osg::Vec2f> m_texCoords;
    std::vector<std::uint32_t> m_triangles;
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::uint32_t> m_halves;
    double m_limit;
};

} // namespace

double splitEstimate(const osg::Mesh& mesh, float longest)
{
    double sum = 0;
    for (std::size_t i = 0; i + 2 < mesh.triangles.size(); i += 3) {
        double count = 1;
        for (std::size_t k = 0; k < 3; ++k) {
            const osg::Vec3f& a = mesh.positions[mesh.triangles[i + k]];
            const osg::Vec3f& b = mesh.positions[mesh.triangles[i + (k + 1) % 3]];
            count = std::max(count, std::sqrt(squaredDistance(a, b)) / longest);
        }
        sum += count * count;
    }
    return sum;
}

std::shared_ptr<const osg::Mesh> splitEdges(const osg::Mesh& mesh, float longest)
{
    return Splitter(mesh, longest).split(mesh);
}

} // namespace ptx::model
