#include "files/ply/TextureParts.h"

#include <limits>
#include <map>

namespace files::ply
{

namespace
{

constexpr auto none = std::numeric_limits<std::uint32_t>::max();

/// Copies vertices of a mesh, each once for each part.
class PartMaker
{
public:
    explicit PartMaker(const osg::MeshArrays& from) : m_from(from), m_newIndex(from.positions.size(), none) {}

    osg::MeshArrays make(const std::vector<std::uint32_t>& triangles, const std::vector<std::uint32_t>& lines);

private:
    std::vector<std::uint32_t> taken(const std::vector<std::uint32_t>& indices);

    const osg::MeshArrays& m_from;
    std::vector<std::uint32_t> m_newIndex; ///< `none` for what the part does not use
    std::vector<std::uint32_t> m_used;     ///< by the part
};

std::vector<std::uint32_t> PartMaker::taken(const std::vector<std::uint32_t>& indices)
{
    std::vector<std::uint32_t> result;
    result.reserve(indices.size());
    for (const std::uint32_t index : indices) {
        if (m_newIndex[index] == none) {
            m_newIndex[index] = static_cast<std::uint32_t>(m_used.size());
            m_used.push_back(index);
        }
        result.push_back(m_newIndex[index]);
    }
    return result;
}

osg::MeshArrays PartMaker::make(const std::vector<std::uint32_t>& triangles, const std::vector<std::uint32_t>& lines)
{
    osg::MeshArrays part;
    part.triangles = taken(triangles);
    part.lines = taken(lines);
    const auto copy = [this](const auto& from, auto& to) {
        for (std::size_t i = 0; i < m_used.size() && !from.empty(); ++i)
            to.push_back(from[m_used[i]]);
    };
    copy(m_from.positions, part.positions);
    copy(m_from.normals, part.normals);
    copy(m_from.colors, part.colors);
    copy(m_from.texCoords, part.texCoords);
    for (const std::uint32_t index : m_used)
        m_newIndex[index] = none;
    m_used.clear();
    return part;
}

} // namespace

std::vector<TexturePart> partsOf(const osg::MeshArrays& arrays, const std::vector<std::int32_t>& textureOfTriangle)
{
    std::map<std::int32_t, std::vector<std::uint32_t>> trianglesOf;
    for (std::size_t i = 0; i < textureOfTriangle.size(); ++i) {
        std::vector<std::uint32_t>& triangles = trianglesOf[textureOfTriangle[i]];
        const auto first = arrays.triangles.begin() + static_cast<std::ptrdiff_t>(3 * i);
        triangles.insert(triangles.end(), first, first + 3);
    }
    PartMaker maker(arrays);
    std::vector<TexturePart> parts;
    for (const auto& [texture, triangles] : trianglesOf)
        parts.push_back({texture, maker.make(triangles, parts.empty() ? arrays.lines : std::vector<std::uint32_t>())});
    return parts;
}

} // namespace files::ply
