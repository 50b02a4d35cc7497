#include "files/glb/packing/PackedStreams.h"

#include <gtest/gtest.h>
#include <meshoptimizer.h>

#include <cstring>

namespace
{

using namespace files::glb::packing;

std::vector<std::byte> bytesOf(const std::vector<std::uint32_t>& words)
{
    std::vector<std::byte> result(words.size() * 4);
    std::memcpy(result.data(), words.data(), result.size());
    return result;
}

const auto none = PackedStreams::Filter::None;

TEST(PackedStreams, WhatIsOfOneKindSharesAView)
{
    PackedStreams streams;
    EXPECT_EQ(streams.addVertices("POSITION", 8, none, bytesOf({1, 2, 3, 4}), {{"type", "VEC3"}}), 0u);
    EXPECT_EQ(streams.addVertices("NORMAL", 8, none, bytesOf({9, 9}), {{"type", "VEC3"}}), 1u);
    EXPECT_EQ(streams.addVertices("POSITION", 8, none, bytesOf({5, 6}), {{"type", "VEC3"}}), 2u);
    EXPECT_EQ(streams.addIndices({0, 1, 0}, 2, true), 3u);
    PackedFile file;
    const Json buffers = streams.take(file, false);
    EXPECT_EQ(buffers, Json::parse(R"([{"byteLength": 40}])"));
    EXPECT_EQ(file.accessors, Json::parse(R"([{"bufferView": 0, "count": 2, "type": "VEC3"},
        {"bufferView": 1, "count": 1, "type": "VEC3"},
        {"bufferView": 0, "byteOffset": 16, "count": 1, "type": "VEC3"},
        {"bufferView": 2, "componentType": 5123, "count": 3, "type": "SCALAR"}])"));
    EXPECT_EQ(file.bufferViews, Json::parse(R"([
        {"buffer": 0, "byteOffset": 0, "byteLength": 24, "byteStride": 8, "target": 34962},
        {"buffer": 0, "byteOffset": 24, "byteLength": 8, "byteStride": 8, "target": 34962},
        {"buffer": 0, "byteOffset": 32, "byteLength": 6, "target": 34963}])"));
    EXPECT_EQ(file.binary.size(), 40u);
    EXPECT_EQ(file.binary[16], std::byte(5));
    EXPECT_EQ(file.binary[34], std::byte(1));
}

TEST(PackedStreams, IndicesOfManyVerticesHaveFourBytes)
{
    PackedStreams streams;
    streams.addIndices({0, 65534, 1}, 65535, true);
    streams.addIndices({0, 65535, 1}, 65536, true);
    PackedFile file;
    streams.take(file, false);
    EXPECT_EQ(file.accessors[0]["componentType"], 5123);
    EXPECT_EQ(file.accessors[1]["componentType"], 5125);
    EXPECT_EQ(file.bufferViews.size(), 2u);
}

TEST(PackedStreams, CompressedViewsTellWhereTheirBytesAre)
{
    PackedStreams streams;
    streams.addVertices("POSITION", 8, none, bytesOf({1, 2, 3, 4, 5, 6}), {{"type", "VEC3"}});
    streams.addIndices({2, 1, 0}, 3, true);
    streams.addIndices({1, 2}, 3, false);
    PackedFile file;
    const Json buffers = streams.take(file, true);
    EXPECT_EQ(buffers[0]["byteLength"], file.binary.size());
    EXPECT_EQ(buffers[1], Json::parse(R"({"byteLength": 36,
        "extensions": {"EXT_meshopt_compression": {"fallback": true}}})"));
    const auto packed = [&](std::size_t view) {
        return file.bufferViews[view]["extensions"]["EXT_meshopt_compression"];
    };
    EXPECT_EQ(packed(0)["mode"], "ATTRIBUTES");
    EXPECT_EQ(packed(1)["mode"], "TRIANGLES");
    EXPECT_EQ(packed(2)["mode"], "INDICES");
    EXPECT_EQ(packed(2)["count"], 2);
    EXPECT_EQ(file.bufferViews[2]["byteOffset"], 32);
    const auto bytes = [&](std::size_t view) {
        return reinterpret_cast<const unsigned char*>(file.binary.data()) +
               packed(view)["byteOffset"].get<std::size_t>();
    };
    std::uint16_t triangle[3] = {};
    ASSERT_EQ(meshopt_decodeIndexBuffer(triangle, 3, 2, bytes(1), packed(1)["byteLength"]), 0);
    EXPECT_EQ(std::vector<std::uint16_t>(triangle, triangle + 3), (std::vector<std::uint16_t>{0, 2, 1})); // turned
    std::uint16_t line[2] = {};
    ASSERT_EQ(meshopt_decodeIndexSequence(line, 2, 2, bytes(2), packed(2)["byteLength"]), 0);
    EXPECT_EQ(line[0] + line[1] * 10, 21);
    std::uint32_t vertices[6] = {};
    ASSERT_EQ(meshopt_decodeVertexBuffer(vertices, 3, 8, bytes(0), packed(0)["byteLength"]), 0);
    EXPECT_EQ(vertices[5], 6u);
}

} // namespace
