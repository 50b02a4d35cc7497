#include "ptx/readers/jt/shapes/Shape.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

using namespace ptx::jt::container;
using namespace ptx::jt::shapes;

namespace
{

struct Total {
    std::size_t triangles;
    unsigned hashes;
    std::size_t segments;
};

struct File {
    const char* name;
    int major;
    int minor;
    Total total;
};

void PrintTo(const File& file, std::ostream* out)
{
    *out << file.name;
}

class JtShapes : public testing::TestWithParam<File>
{
};

} // namespace

TEST_P(JtShapes, RealFileHasItsTrianglesAndAllItsCheckSums)
{
    const char* corpus = std::getenv("ZN_CORPUS");
    if (!corpus)
        GTEST_SKIP() << "ZN_CORPUS names no folder with real files";
    std::ifstream in(std::string(corpus) + "/jt/" + GetParam().name, std::ios::binary);
    if (!in)
        GTEST_SKIP() << GetParam().name << " is not in the corpus";
    const std::vector<std::uint8_t> bytes((std::istreambuf_iterator<char>(in)), {});
    const Framing framing = readFraming(bytes);
    EXPECT_EQ(framing.major, GetParam().major);
    EXPECT_EQ(framing.minor, GetParam().minor);
    EXPECT_EQ(framing.segments.size(), GetParam().total.segments);
    Total total{0, 0, 0};
    for (const auto& [id, segment] : framing.segments) {
        if (segment.type < 6 || segment.type > 16)
            continue;
        const Shape shape = readShape(segment, framing.major, framing.isBigEndian);
        EXPECT_FALSE(shape.damage) << shape.damage.what << " at " << shape.damage.offset;
        total.triangles += shape.triangles.size();
        total.hashes += shape.hashes;
    }
    EXPECT_EQ(total.triangles, GetParam().total.triangles);
    EXPECT_EQ(total.hashes, GetParam().total.hashes);
}

INSTANTIATE_TEST_SUITE_P(
    Files, JtShapes,
    testing::Values(File{"CoffeeMaker.jt", 9, 5, {46936, 132, 97}}, File{"butterflyvalve_v8.0.jt", 8, 0, {9499, 0, 19}},
                    File{"butterflyvalve_v9.5.jt", 9, 5, {9499, 27, 41}},
                    File{"butterflyvalve_v10.0.jt", 10, 0, {9499, 27, 32}}, File{"conrod.jt", 8, 0, {15586, 0, 18}},
                    File{"example_block_jt8.1.jt", 8, 1, {36, 0, 7}}, File{"example_block_jt9.5.jt", 9, 5, {36, 9, 8}},
                    File{"example_block_jt10.3.jt", 10, 3, {36, 9, 9}},
                    File{"opening_protection_plate1_jt8.0.jt", 8, 0, {942, 0, 16}},
                    File{"fishing_reel/body.jt", 8, 0, {1711, 0, 6}}));
