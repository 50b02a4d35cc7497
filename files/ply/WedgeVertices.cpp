#include "files/ply/WedgeVertices.h"

#include <bit>

namespace files::ply
{

namespace
{

/// In all arrays, while they grow, and in the table.
constexpr std::uint64_t memoryOfVertex = 192;

template <class T>
void repeat(std::vector<T>& array, std::uint32_t index)
{
    if (!array.empty())
        array.push_back(T(array[index]));
}

} // namespace

std::size_t WedgeVertices::Hash::operator()(const Key& key) const
{
    std::uint64_t hash = key.first;
    for (const std::uint32_t bits : {key.second.first, key.second.second})
        hash = (hash ^ bits) * 0x9E3779B97F4A7C15u;
    return static_cast<std::size_t>(hash ^ hash >> 32);
}

WedgeVertices::WedgeVertices(osg::MeshArrays& arrays, ReadTask& task)
    : m_arrays(arrays), m_task(task), m_isGiven(arrays.positions.size())
{
    m_task.takeMemory(arrays.positions.size() * sizeof(osg::Vec2f));
    m_arrays.texCoords.resize(arrays.positions.size());
}

std::uint32_t WedgeVertices::vertexFor(std::uint32_t vertex, const osg::Vec2f& coordinates, const QString& place)
{
    const auto bitsOf = [](const osg::Vec2f& v) {
        return std::pair(std::bit_cast<std::uint32_t>(v.x), std::bit_cast<std::uint32_t>(v.y));
    };
    if (!m_isGiven[vertex]) {
        m_isGiven[vertex] = true;
        m_arrays.texCoords[vertex] = coordinates;
    }
    if (bitsOf(m_arrays.texCoords[vertex]) == bitsOf(coordinates))
        return vertex;
    const auto [entry, isNew] = m_more.try_emplace({vertex, bitsOf(coordinates)});
    if (isNew) {
        m_task.countVertices(1, place);
        m_task.takeMemory(memoryOfVertex, place);
        entry->second = static_cast<std::uint32_t>(m_arrays.positions.size());
        repeat(m_arrays.positions, vertex);
        repeat(m_arrays.normals, vertex);
        repeat(m_arrays.colors, vertex);
        m_arrays.texCoords.push_back(coordinates);
    }
    return entry->second;
}

} // namespace files::ply
