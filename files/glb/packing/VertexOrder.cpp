#include "files/glb/packing/VertexOrder.h"

#include <meshoptimizer.h>

namespace files::glb::packing
{

namespace
{

using Indices = std::vector<std::uint32_t>;

/// Filled up with the last one: the library counts in triangles.
Indices allOf(const std::vector<IndexList>& lists)
{
    Indices all;
    for (const IndexList& list : lists)
        all.insert(all.end(), list.indices.begin(), list.indices.end());
    while (all.size() % 3 != 0)
        all.push_back(Indices::value_type(all.back()));
    return all;
}

/// Vertex `i` becomes vertex `places[i]` of `count`.
void move(std::vector<VertexStream>& streams, std::vector<IndexList>& lists, const Indices& places, std::size_t count)
{
    for (VertexStream& stream : streams) {
        std::vector<std::byte> moved(count * stream.width);
        meshopt_remapVertexBuffer(moved.data(), stream.bytes.data(), stream.count(), stream.width, places.data());
        stream.bytes = std::move(moved);
    }
    for (IndexList& list : lists)
        for (std::uint32_t& index : list.indices)
            index = places[index];
}

void weld(std::vector<VertexStream>& streams, std::vector<IndexList>& lists)
{
    std::vector<meshopt_Stream> views;
    for (const VertexStream& stream : streams)
        views.push_back({stream.bytes.data(), stream.width, stream.width});
    const Indices all = allOf(lists);
    Indices places(streams.front().count());
    const std::size_t count = meshopt_generateVertexRemapMulti(places.data(), all.data(), all.size(), places.size(),
                                                               views.data(), views.size());
    if (count < places.size())
        move(streams, lists, places, count);
}

/// Puts the triangles of one part of a list after the other in order. The library takes time for each vertex that it is
/// told of, so each part is shown to it with its own vertices alone.
class PartOrder
{
public:
    explicit PartOrder(std::size_t vertices) : m_numbers(vertices, unknown) {}

    /// `count` indices of triangles.
    void reorder(std::uint32_t* indices, std::size_t count)
    {
        m_vertices.clear();
        m_local.resize(count);
        for (std::size_t i = 0; i < count; ++i) {
            std::uint32_t& number = m_numbers[indices[i]];
            if (number == unknown) {
                number = static_cast<std::uint32_t>(m_vertices.size());
                m_vertices.push_back(indices[i]);
            }
            m_local[i] = number;
        }
        m_ordered.resize(count);
        meshopt_optimizeVertexCacheStrip(m_ordered.data(), m_local.data(), count, m_vertices.size());
        for (std::size_t i = 0; i < count; ++i)
            indices[i] = m_vertices[m_ordered[i]];
        for (const std::uint32_t vertex : m_vertices)
            m_numbers[vertex] = unknown;
    }

private:
    static constexpr std::uint32_t unknown = static_cast<std::uint32_t>(-1);

    Indices m_numbers;  ///< by vertex
    Indices m_vertices; ///< by number
    Indices m_local;
    Indices m_ordered;
};

void reorder(std::vector<VertexStream>& streams, std::vector<IndexList>& lists)
{
    const std::size_t vertices = streams.front().count();
    PartOrder order(vertices);
    for (IndexList& list : lists) {
        if (!list.areTriangles)
            continue;
        std::size_t begin = 0;
        for (const std::size_t size : list.parts.empty() ? std::vector{list.indices.size()} : list.parts) {
            order.reorder(list.indices.data() + begin, size);
            begin += size;
        }
    }
    const Indices all = allOf(lists);
    Indices places(vertices);
    const std::size_t count = meshopt_optimizeVertexFetchRemap(places.data(), all.data(), all.size(), vertices);
    move(streams, lists, places, count);
}

} // namespace

void orderVertices(std::vector<VertexStream>& streams, std::vector<IndexList>& lists, const PackOptions& options)
{
    if (options.weld)
        weld(streams, lists);
    if (options.reorder)
        reorder(streams, lists);
}

} // namespace files::glb::packing
