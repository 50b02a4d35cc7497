#include "files/gltf/packing/DracoStream.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using files::gltf::packing::sizeOfDraco;

std::string stream(std::initializer_list<int> rest)
{
    std::string bytes = "DRACO";
    for (const int byte : rest)
        bytes += static_cast<char>(byte);
    return bytes;
}

TEST(DracoStream, EdgeBreakerTellsVerticesBeforeTriangles)
{
    const auto size = sizeOfDraco(stream({2, 2, 1, 1, 0, 0, /*traversal*/ 0, 0xAC, 0x02, 0x07}));
    ASSERT_TRUE(size);
    EXPECT_EQ(size->vertices, 300u);
    EXPECT_EQ(size->triangles, 7u);
}

TEST(DracoStream, SequentialMeshesTellTrianglesFirst)
{
    const auto size = sizeOfDraco(stream({2, 2, 1, 0, 0, 0, 0x07, 0xAC, 0x02}));
    ASSERT_TRUE(size);
    EXPECT_EQ(size->vertices, 300u);
    EXPECT_EQ(size->triangles, 7u);
}

TEST(DracoStream, OthersAreRefused)
{
    EXPECT_FALSE(sizeOfDraco(""));
    EXPECT_FALSE(sizeOfDraco("DRACO"));
    EXPECT_FALSE(sizeOfDraco(stream({2, 2, 1, 1, 0, 0, 0, 0xAC})));             // cut off
    EXPECT_FALSE(sizeOfDraco(stream({1, 2, 1, 1, 0, 0, 0, 4, 2})));             // version 1.2
    EXPECT_FALSE(sizeOfDraco(stream({2, 3, 1, 1, 0, 0, 0, 4, 2})));             // version 2.3
    EXPECT_FALSE(sizeOfDraco(stream({2, 2, 0, 1, 0, 0, 0, 4, 2})));             // a point cloud
    EXPECT_FALSE(sizeOfDraco(stream({2, 2, 1, 2, 0, 0, 0, 4, 2})));             // no known method
    EXPECT_FALSE(sizeOfDraco(stream({2, 2, 1, 1, 0, 0x80, 0xFF, 0xFF, 0xFF}))); // damaged metadata
}

} // namespace
