// Tessellated parts of real files against what another reader found.

#include "ptx/readers/step/facets/Parts.h"
#include "ptx/readers/step/p21/Scan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

using namespace ptx::step;

TEST(PartsCorpus, ASmallBoxHasItsTriangles)
{
    const char* corpus = std::getenv("ZN_CORPUS");
    const std::filesystem::path path = std::filesystem::path(corpus ? corpus : "") / "step/no_sign.stp";
    if (!std::filesystem::exists(path))
        GTEST_SKIP() << "ZN_CORPUS names no folder with step/no_sign.stp in it";
    std::ifstream stream(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    const p21::Records records = p21::scan(text, 1);
    const facets::Parts parts = facets::readParts(records, p21::EntityIndex(records));
    ASSERT_EQ(parts.parts.size(), 1u);
    EXPECT_EQ(parts.parts[0].faces.size(), 9u);
    std::size_t triangles = 0;
    facets::Point low = {1e9, 1e9, 1e9}, high = {-1e9, -1e9, -1e9};
    for (const facets::Face& face : parts.parts[0].faces) {
        triangles += face.mesh.triangles.size() / 3;
        for (const facets::Point& point : face.mesh.points)
            for (std::size_t i = 0; i < 3; ++i) {
                low[i] = std::min(low[i], point[i]);
                high[i] = std::max(high[i], point[i]);
            }
    }
    EXPECT_EQ(triangles, 172u);
    std::array<double, 3> size = {high[0] - low[0], high[1] - low[1], high[2] - low[2]};
    std::sort(size.begin(), size.end());
    EXPECT_NEAR(size[0], 1, 1e-6);
    EXPECT_NEAR(size[1], 2, 1e-6);
    EXPECT_NEAR(size[2], 3, 1e-6);
    EXPECT_EQ(parts.counts.outOfRange, 0u);
}
