#include "geometry/Remeshing.h"

#include "geometry/IndexRepair.h"
#include "geometry/TextureTransfer.h"

#include <unordered_map>

namespace geometry
{

namespace
{

/// Takes vertices of one mesh over into another.
class VertexTransfer
{
public:
    VertexTransfer(const osg::Mesh& from, const osg::Mesh& to)
        : m_from(from), m_positions(to.positions.begin(), to.positions.end()),
          m_normals(to.normals.begin(), to.normals.end()), m_texCoords(to.texCoords.begin(), to.texCoords.end())
    {
    }

    osg::Buffer<std::uint32_t> taken(const osg::Buffer<std::uint32_t>& indices)
    {
        std::vector<std::uint32_t> result;
        for (const std::uint32_t index : indices)
            result.push_back(taken(index));
        return result;
    }

    void finish(osg::Mesh& mesh)
    {
        if (m_numbers.empty())
            return;
        mesh.positions = std::move(m_positions);
        if (!mesh.normals.empty())
            mesh.normals = std::move(m_normals);
        if (!mesh.texCoords.empty())
            mesh.texCoords = std::move(m_texCoords);
    }

private:
    std::uint32_t taken(std::uint32_t index)
    {
        const auto [entry, isNew] = m_numbers.try_emplace(index, static_cast<std::uint32_t>(m_positions.size()));
        if (isNew) {
            m_positions.push_back(m_from.positions[index]);
            m_normals.push_back(m_from.normals.empty() ? osg::Vec3f{0, 0, 1} : m_from.normals[index]);
            m_texCoords.push_back(m_from.texCoords.empty() ? osg::Vec2f{0, 0} : m_from.texCoords[index]);
        }
        return entry->second;
    }

    const osg::Mesh& m_from;
    std::vector<osg::Vec3f> m_positions;
    std::vector<osg::Vec3f> m_normals;
    std::vector<osg::Vec2f> m_texCoords;
    std::unordered_map<std::uint32_t, std::uint32_t> m_numbers;
};

} // namespace

osg::Mesh remeshed(const osg::Mesh& old, const osg::Mesh& made)
{
    osg::Mesh result;
    result.positions = made.positions;
    result.normals = made.normals;
    result.triangles = made.triangles;
    result.faces = made.faces;
    result.brep = old.brep;
    if (old.lines.empty() && old.points.empty() && old.texCoords.empty())
        return result;
    const osg::Mesh sound = repaired(old).mesh;
    transferTexCoords(sound, result);
    VertexTransfer transfer(sound, result);
    result.lines = transfer.taken(sound.lines);
    result.points = transfer.taken(sound.points);
    transfer.finish(result);
    return result;
}

} // namespace geometry
