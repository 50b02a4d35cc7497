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

void reorder(std::vector<VertexStream>& streams, std::vector<IndexList>& lists)
{
    const std::size_t vertices = streams.front().count();
    for (IndexList& list : lists) {
        if (!list.areTriangles)
            continue;
        Indices ordered(list.indices.size());
        meshopt_optimizeVertexCacheStrip(ordered.data(), list.indices.data(), list.indices.size(), vertices);
        list.indices = std::move(ordered);
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
