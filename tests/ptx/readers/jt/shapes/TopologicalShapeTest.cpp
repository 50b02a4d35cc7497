#include "ptx/readers/jt/codec/Hash.h"
#include "tests/support/jt/JtBytes.h"

#include <gmock/gmock.h>

#include <numeric>

using namespace jttest;
using namespace ptx::jt::codec;
using namespace ptx::jt::shapes;

namespace
{

constexpr std::int64_t Records = 24;

/// The connectivity of a block of eight points, twelve triangles and 24 records.
JtBytes block(int major)
{
    const std::vector<Values> degrees = {{5, 6, 4, 5, 4, 5, 3}, {4}, {}, {}, {}, {}, {}, {}};
    const Values valences(12, 3);
    const Values groups = {0, 4, 1, 1, 4, 3, 5, 3, 2, 5, 2, 0};
    const Values flags(12, 0);
    const std::vector<Values> masks = {{}, {7}, {7, 13, 7}, {22, 26, 21}, {21}, {}, {}, {}};
    JtBytes bytes = laterHead(major);
    std::uint32_t sum = 0;
    const auto add = [&](const Values& values) {
        bytes.array(values);
        sum = hash32(values, sum);
    };
    for (const Values& values : degrees)
        add(values);
    add(valences);
    add(groups);
    bytes.array(flags, Predictor::Lag1);
    sum = hash16(flags, sum);
    for (const Values& values : masks)
        add(values);
    for (int high = 0; high < (major >= 10 ? 1 : 2); ++high)
        add({});
    bytes.i32(0);
    sum = hash32({}, sum);
    add({});
    add({});
    return bytes.i32(sum);
}

std::vector<float> counted(float first, float step)
{
    std::vector<float> values;
    for (std::int64_t i = 0; i < Records; ++i)
        values.push_back(first + step * static_cast<float>(i));
    return values;
}

/// Colours and texture coordinates of all records; the positions are corners of a cube of two.
JtBytes colouredBlock(int major)
{
    JtBytes bytes = block(major);
    bytes.u64(0x2 | 0x10 | 0x200).u8(1).u8(0).u8(0).u8(0).i32(8).i32(Records);
    bytes.i32(8).u8(3);
    for (int axis = 0; axis < 3; ++axis)
        bytes.f32(0).f32(2).u8(1);
    const std::vector<Values> corners = {{1, 1, 1, 0, 0, 0, 0, 1}, {0, 1, 0, 0, 1, 0, 1, 1}, {0, 0, 1, 0, 0, 1, 1, 1}};
    for (const Values& values : corners)
        bytes.array(values, Predictor::Lag1);
    bytes.i32(sumOf(corners));
    const std::vector<std::vector<float>> colours = {counted(0, 1 / 32.f), counted(1, -1 / 32.f), counted(0.5f, 0)};
    const std::vector<std::vector<float>> places = {counted(0, 2), counted(-1, -1)};
    for (const auto& components : {colours, places}) {
        bytes.i32(Records).u8(static_cast<unsigned>(components.size())).u8(0);
        std::vector<Values> words;
        for (const std::vector<float>& values : components) {
            words.push_back(wordsOf(values));
            if (major < 10)
                bytes.exponentsAndMantissae(values, Predictor::Lag1);
            else
                bytes.array(words.back());
        }
        bytes.i32(major < 10 ? sumOfEach(components) : sumOf(words));
    }
    return bytes;
}

class JtTopologicalShapes : public testing::TestWithParam<int>
{
};

} // namespace

TEST_P(JtTopologicalShapes, TrianglesHaveColoursAndTextureCoordinatesByRecord)
{
    const Shape shape = shapeOf(StripSet, colouredBlock(GetParam()));
    ASSERT_FALSE(shape.damage) << shape.damage.what;
    EXPECT_EQ(shape.hashes, 4u);
    ASSERT_EQ(shape.triangles.size(), 12u);
    const Triangle& fifth = shape.triangles[5];
    EXPECT_EQ(fifth.corners[1].position, 5u);
    EXPECT_EQ(fifth.corners[1].record, 17u);
    EXPECT_EQ(shape.positions[5], (Vector{0, 0, 2}));
    EXPECT_EQ(shape.colours[17], (Colour{17 / 32.f, 15 / 32.f, 0.5f, 1}));
    EXPECT_EQ(shape.textureCoordinates[17], (TextureCoordinate{34, -18}));
    EXPECT_TRUE(shape.normals.empty());
}

TEST(JtTopologicalShapesOf10, PolygonSetsAreWrittenAsStripsAre)
{
    const Shape shape = shapeOf(PolygonSet, colouredBlock(10));
    ASSERT_FALSE(shape.damage) << shape.damage.what;
    EXPECT_EQ(shape.triangles.size(), 12u);
}

INSTANTIATE_TEST_SUITE_P(Versions, JtTopologicalShapes, testing::Values(9, 10));
