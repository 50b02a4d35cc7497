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
#include <string>

using namespace ptx::step;

namespace
{

/// A file with one tessellated part.
struct Row {
    std::string path;
    std::size_t faces, triangles;
    std::array<double, 3> size; ///< of the box around it, rising

    friend std::ostream& operator<<(std::ostream& stream, const Row& row) { return stream << row.path; }
};

class PartsCorpus : public testing::TestWithParam<Row>
{
};

} // namespace

TEST_P(PartsCorpus, APartHasItsTrianglesAndItsBox)
{
    const Row& row = GetParam();
    const char* corpus = std::getenv("ZN_CORPUS");
    const std::filesystem::path path = std::filesystem::path(corpus ? corpus : "") / row.path;
    if (!std::filesystem::exists(path))
        GTEST_SKIP() << "ZN_CORPUS names no folder with " << row.path << " in it";
    std::ifstream stream(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    const p21::Records records = p21::scan(text, 1);
    const facets::Parts parts = facets::readParts(records, p21::EntityIndex(records));
    ASSERT_EQ(parts.parts.size(), 1u);
    EXPECT_EQ(parts.parts[0].faces.size(), row.faces);
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
    EXPECT_EQ(triangles, row.triangles);
    std::array<double, 3> size = {high[0] - low[0], high[1] - low[1], high[2] - low[2]};
    std::sort(size.begin(), size.end());
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(size[i], row.size[i], 1e-6);
    EXPECT_EQ(parts.counts.outOfRange, 0u);
}

INSTANTIATE_TEST_SUITE_P(Files, PartsCorpus,
                         testing::Values(Row{"step/no_sign.stp", 9, 172, {1, 2, 3}},
                                         Row{"step-views/own-box-triangulated-faces.stp", 6, 12, {10, 20, 30}}));
