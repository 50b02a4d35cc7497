#include "ptx/readers/stl/StlBinary.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

using namespace ptx::core;
using namespace ptx::stl;

namespace
{

std::string binary(std::uint32_t announced, const std::vector<std::array<float, 12>>& facets)
{
    std::string content(80, 's');
    for (int i = 0; i < 4; ++i)
        content += static_cast<char>(announced >> 8 * i & 0xFF);
    for (const auto& facet : facets) {
        content.append(reinterpret_cast<const char*>(facet.data()), 48);
        content.append(2, '\0');
    }
    return content;
}

} // namespace

TEST(StlBinary, ReadsTheAnnouncedTriangles)
{
    Progress progress;
    const Outcome<Solid> solid =
        readBinary(binary(1, {{0, 0, 1, 1, 2, 3, 4.5f, 2, 3, 1, 60, 3}}) + "bytes of its writer", progress);
    ASSERT_TRUE(solid);
    ASSERT_EQ(solid.value().facets.size(), 1u);
    EXPECT_EQ(solid.value().facets[0].corners[1], (osg::Vec3f{4.5f, 2, 3}));
    EXPECT_EQ(solid.value().facets[0].normal, (osg::Vec3f{0, 0, 1}));
}

TEST(StlBinary, CountIsHeldAgainstTheSizeBeforeAnythingIsMade)
{
    Progress progress;
    const Outcome<Solid> solid = readBinary(binary(0xFFFFFFFF, {{}}), progress);
    ASSERT_FALSE(solid);
    EXPECT_EQ(solid.failure().message,
              "the binary STL file is cut off: 214748364834 bytes are announced, 134 are there");
    EXPECT_FALSE(readBinary("short", progress));
}

TEST(StlBinary, CornersThatAreNoNumbersAreDamage)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    Progress progress;
    const Outcome<Solid> solid = readBinary(binary(2, {{}, {0, 0, 1, 1, 2, 3, nan, 2, 3, 1, 60, 3}}), progress);
    ASSERT_FALSE(solid);
    EXPECT_EQ(solid.failure().message, "triangle 2 at byte 134 has a corner that is no number");
}
