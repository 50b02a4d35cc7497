#include "files/glb/packing/VertexOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace
{

using files::glb::PackOptions;
using files::glb::packing::IndexList;
using files::glb::packing::orderVertices;
using files::glb::packing::VertexStream;
using Indices = std::vector<std::uint32_t>;

VertexStream stream(const std::vector<std::int32_t>& values)
{
    VertexStream result;
    result.width = sizeof(std::int32_t);
    result.bytes.resize(values.size() * result.width);
    std::memcpy(result.bytes.data(), values.data(), result.bytes.size());
    return result;
}

std::vector<std::int32_t> numbers(const VertexStream& stream)
{
    std::vector<std::int32_t> result(stream.count());
    std::memcpy(result.data(), stream.bytes.data(), stream.bytes.size());
    return result;
}

/// What the corners of a list have.
std::vector<std::int32_t> corners(const IndexList& list, const VertexStream& stream)
{
    std::vector<std::int32_t> result;
    for (const std::uint32_t index : list.indices)
        result.push_back(numbers(stream)[index]);
    return result;
}

PackOptions welding()
{
    PackOptions options;
    options.weld = true;
    return options;
}

TEST(VertexOrder, VerticesThatAreEqualInEverythingBecomeOne)
{
    std::vector<VertexStream> streams = {stream({7, 8, 7, 7}), stream({1, 2, 1, 3})};
    std::vector<IndexList> lists = {{true, {0, 1, 2, 3, 1, 2}}};
    orderVertices(streams, lists, welding());
    EXPECT_EQ(streams[0].count(), 3u);
    EXPECT_EQ(corners(lists[0], streams[0]), (std::vector<std::int32_t>{7, 8, 7, 7, 8, 7}));
    EXPECT_EQ(corners(lists[0], streams[1]), (std::vector<std::int32_t>{1, 2, 1, 3, 2, 1}));
}

TEST(VertexOrder, VerticesThatNoIndexNeedsGo)
{
    std::vector<VertexStream> streams = {stream({7, 8, 9, 10})};
    std::vector<IndexList> lists = {{false, {3, 1}}};
    orderVertices(streams, lists, welding());
    EXPECT_EQ(streams[0].count(), 2u);
    EXPECT_EQ(corners(lists[0], streams[0]), (std::vector<std::int32_t>{10, 8}));
}

TEST(VertexOrder, ListsOverTheSameVerticesStayTogether)
{
    std::vector<VertexStream> streams = {stream({7, 8, 7, 9})};
    std::vector<IndexList> lists = {{true, {0, 1, 3}}, {false, {2, 3}}, {false, {1}}};
    PackOptions options = welding();
    options.reorder = true;
    orderVertices(streams, lists, options);
    EXPECT_EQ(streams[0].count(), 3u);
    EXPECT_EQ(corners(lists[1], streams[0]), (std::vector<std::int32_t>{7, 9}));
    EXPECT_EQ(corners(lists[2], streams[0]), (std::vector<std::int32_t>{8}));
}

TEST(VertexOrder, ReorderingKeepsTrianglesAndTheirSides)
{
    std::vector<VertexStream> streams = {stream({50, 40, 30, 20, 10})};
    std::vector<IndexList> lists = {{true, {4, 3, 2, 0, 1, 2, 2, 1, 3}}};
    PackOptions options;
    options.reorder = true;
    orderVertices(streams, lists, options);
    std::vector<std::vector<std::int32_t>> triangles;
    const std::vector<std::int32_t> all = corners(lists[0], streams[0]);
    for (std::size_t i = 0; i < all.size(); i += 3) {
        std::vector<std::int32_t> triangle(all.begin() + long(i), all.begin() + long(i) + 3);
        std::rotate(triangle.begin(), std::min_element(triangle.begin(), triangle.end()), triangle.end());
        triangles.push_back(triangle);
    }
    std::sort(triangles.begin(), triangles.end());
    EXPECT_EQ(triangles, (std::vector<std::vector<std::int32_t>>{{10, 20, 30}, {20, 30, 40}, {30, 50, 40}}));
    EXPECT_EQ(lists[0].indices[0], 0u); // the first vertex is fetched first
}

TEST(VertexOrder, TrianglesStayInTheirPart)
{
    // Two strips that have half of their vertices in common, so that a single list would be put in another order.
    std::vector<std::int32_t> vertices;
    Indices indices;
    for (std::uint32_t part = 0; part < 2; ++part)
        for (std::uint32_t i = 0; i < 20; ++i) {
            const std::uint32_t first = part * 10 + (i * 7 + part * 3) % 20;
            indices.insert(indices.end(), {first, first + 1, first + 2});
        }
    for (std::int32_t i = 0; i < 32; ++i)
        vertices.push_back(i);
    std::vector<VertexStream> streams = {stream(vertices)};
    std::vector<IndexList> lists = {{true, indices, {60, 60}}};
    const auto trianglesOf = [&](std::size_t begin) {
        std::vector<std::vector<std::int32_t>> triangles;
        const std::vector<std::int32_t> all = corners(lists[0], streams[0]);
        for (std::size_t i = begin; i < begin + 60; i += 3) {
            triangles.push_back({all[i], all[i + 1], all[i + 2]});
            std::sort(triangles.back().begin(), triangles.back().end());
        }
        std::sort(triangles.begin(), triangles.end());
        return triangles;
    };
    const auto first = trianglesOf(0);
    const auto second = trianglesOf(60);
    PackOptions options;
    options.reorder = true;
    orderVertices(streams, lists, options);
    EXPECT_EQ(trianglesOf(0), first);
    EXPECT_EQ(trianglesOf(60), second);
    EXPECT_NE(lists[0].indices, indices);
}

TEST(VertexOrder, NothingChangesUnasked)
{
    std::vector<VertexStream> streams = {stream({7, 7, 8})};
    std::vector<IndexList> lists = {{true, {2, 1, 0}}};
    orderVertices(streams, lists, {});
    EXPECT_EQ(numbers(streams[0]), (std::vector<std::int32_t>{7, 7, 8}));
    EXPECT_EQ(lists[0].indices, (Indices{2, 1, 0}));
}

} // namespace
