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
    VertexTransfer(const osg::Mesh& from, osg::Mesh& to) : m_from(from), m_to(to) {}

    osg::Buffer<std::uint32_t> taken(const osg::Buffer<std::uint32_t>& indices)
    {
        std::vector<std::uint32_t> result;
        for (const std::uint32_t index : indices) {
            const auto next = static_cast<std::uint32_t>(m_to.positions.size() + m_vertices.size());
            const auto [entry, isNew] = m_numbers.try_emplace(index, next);
            if (isNew)
                m_vertices.push_back(index);
            result.push_back(entry->second);
        }
        return result;
    }

    void finish()
    {
        if (m_vertices.empty())
            return;
        append(&osg::Mesh::positions, osg::Vec3f());
        if (!m_to.normals.empty())
            append(&osg::Mesh::normals, osg::Vec3f{0, 0, 1});
        if (!m_to.texCoords.empty())
            append(&osg::Mesh::texCoords, osg::Vec2f());
        if (!m_to.texCoords1.empty())
            append(&osg::Mesh::texCoords1, osg::Vec2f());
    }

private:
    /// The values of the vertices that were taken, `otherwise` where they have none.
    template <class T>
    void append(osg::Buffer<T> osg::Mesh::*values, const T& otherwise)
    {
        const osg::Buffer<T>& known = m_from.*values;
        std::vector<T> all((m_to.*values).begin(), (m_to.*values).end());
        for (const std::uint32_t index : m_vertices)
            all.push_back(known.empty() ? otherwise : known[index]);
        m_to.*values = std::move(all);
    }

    const osg::Mesh& m_from;
    osg::Mesh& m_to;
    std::vector<std::uint32_t> m_vertices; ///< in the order in which they follow those of the other mesh
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
    if (old.lines.empty() && old.points.empty() && old.texCoords.empty() && old.texCoords1.empty())
        return result;
    const osg::Mesh sound = repaired(old).mesh;
    transferTexCoords(sound, result);
    VertexTransfer transfer(sound, result);
    result.lines = transfer.taken(sound.lines);
    result.points = transfer.taken(sound.points);
    transfer.finish();
    return result;
}

} // namespace geometry
