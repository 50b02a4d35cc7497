#include "ptx/readers/jt/codec/Hash.h"
#include "tests/support/jt/JtBytes.h"

#include <gmock/gmock.h>

using namespace jttest;
using namespace ptx::jt::codec;
using namespace ptx::jt::shapes;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

constexpr std::uint64_t Positions = 0x2;
constexpr std::uint64_t Normals = 0x8;
constexpr std::uint64_t Rgb = 0x10;
constexpr std::uint64_t Rgba = 0x20;
constexpr std::uint64_t FirstTexture = 0x200;
constexpr std::uint64_t SecondTexture = 0x1000;

/// The records of five corners of a point set that has five positions, each used once, behind what comes before them.
JtBytes points(int major, std::uint64_t bindings)
{
    JtBytes bytes = laterHead(major);
    const Values starts = {0, 5};
    const Values indices = {4, 3, 2, 1, 0};
    const Values groups = {0, 1};
    if (major >= 10)
        bytes.i32(1);
    bytes.i32(1).i32(5);
    const Predictor predictor = major >= 10 ? Predictor::Lag1 : Predictor::None;
    if (major >= 10)
        bytes.array(groups, predictor);
    bytes.array(starts, predictor).array(indices, predictor);
    bytes.i32(major >= 10 ? sumOf({groups, starts, indices}) : sumOf({starts, indices}));
    bytes.u64(bindings).u8(0).u8(0).u8(0).u8(0).i32(5);
    if (major < 10)
        bytes.i32(5);
    const Values once = {1, 1, 1, 1, 1};
    return bytes.array(once).i32(sumOf({once}));
}

using Floats = std::vector<std::vector<float>>;

const Floats Places = {{0.5f, 1.5f, 2.5f, 3.5f, -4.5f}, {1, 2, 3, 4, 5}, {-7, -7, -7, -7, 8}};

/// Components as plain floats with their check sum, which `wrong` changes.
void addFloats(JtBytes& bytes, const Floats& components, Predictor predictor, std::uint32_t wrong = 0)
{
    std::vector<Values> words;
    for (const std::vector<float>& values : components) {
        words.push_back(wordsOf(values));
        if (bytes.major() < 10)
            bytes.exponentsAndMantissae(values, predictor);
        else
            bytes.array(words.back(), predictor);
    }
    bytes.i32((bytes.major() < 10 ? sumOfEach(components) : sumOf(words)) ^ wrong);
}

void addCodes(JtBytes& bytes, const std::vector<Values>& codes, std::uint32_t wrong = 0)
{
    for (const Values& values : codes)
        bytes.array(values, Predictor::Lag1);
    bytes.i32(sumOf(codes) ^ wrong);
}

JtBytes withPlaces(int major, std::uint64_t bindings, std::uint32_t wrong = 0)
{
    JtBytes bytes = points(major, Positions | bindings);
    bytes.i32(5).u8(3);
    for (int axis = 0; axis < 3; ++axis)
        bytes.f32(0).f32(0).u8(0);
    addFloats(bytes, Places, Predictor::Lag1, wrong);
    return bytes;
}

class JtVertexArrays : public testing::TestWithParam<int>
{
};

} // namespace

TEST_P(JtVertexArrays, PlainColoursHaveTheirAlpha)
{
    JtBytes bytes = withPlaces(GetParam(), Normals | Rgba);
    bytes.i32(5).u8(3).u8(0);
    addFloats(bytes, {{0, 0, 0, 0, 1}, {0, 1, 0, 0, 0}, {1, 0, -1, 1, 0}}, Predictor::None);
    bytes.i32(5).u8(4).u8(0);
    const Predictor predictor = GetParam() >= 10 ? Predictor::None : Predictor::Lag1;
    addFloats(bytes,
              {{0.1f, 0.2f, 0.3f, 0.4f, 0.5f}, {0, 1, 0, 1, 0}, {2, -1, 0.5f, 0.5f, 0.5f}, {1, 0.75f, 0.5f, 0.25f, 0}},
              predictor);
    const Shape shape = shapeOf(PointSet, bytes);
    ASSERT_FALSE(shape.damage) << shape.damage.what;
    EXPECT_EQ(shape.hashes, 5u);
    EXPECT_EQ(shape.positions[4], (Vector{-4.5f, 5, 8}));
    EXPECT_EQ(shape.normals[2], (Vector{0, 0, -1}));
    EXPECT_THAT(shape.colours,
                ElementsAre(Colour{0.1f, 0, 1, 1}, Colour{0.2f, 1, 0, 0.75f}, Colour{0.3f, 0, 0.5f, 0.5f},
                            Colour{0.4f, 1, 0.5f, 0.25f}, Colour{0.5f, 0, 0.5f, 0}));
}

TEST_P(JtVertexArrays, TextureCoordinatesOfTheFirstChannelAreKept)
{
    JtBytes bytes = withPlaces(GetParam(), FirstTexture | SecondTexture);
    bytes.i32(5).u8(2).u8(4).f32(0).f32(15).u8(4).f32(-15).f32(0).u8(4);
    addCodes(bytes, {{0, 1, 2, 3, 5}, {15, 14, 13, 12, 0}});
    bytes.i32(5).u8(1).u8(0);
    addFloats(bytes, {{7, 7, 7, 7, 7}}, Predictor::Lag1);
    const Shape shape = shapeOf(PointSet, bytes);
    ASSERT_FALSE(shape.damage) << shape.damage.what << shape.damage.offset;
    EXPECT_EQ(shape.hashes, 5u);
    EXPECT_THAT(shape.textureCoordinates,
                ElementsAre(TextureCoordinate{0, 0}, TextureCoordinate{1, -1}, TextureCoordinate{2, -2},
                            TextureCoordinate{3, -3}, TextureCoordinate{5, -15}));
}

TEST_P(JtVertexArrays, WrongCheckSumOfEachArrayIsAnErrorAtItsPlace)
{
    EXPECT_STREQ(shapeOf(PointSet, withPlaces(GetParam(), 0, 1)).damage.what,
                 "the check sum of the positions is wrong");
    JtBytes colours = withPlaces(GetParam(), Rgb);
    colours.i32(5).u8(3).u8(0);
    addFloats(colours, {{0, 0, 0, 0, 1}, {0, 1, 0, 0, 0}, {1, 0, 1, 1, 0}}, Predictor::Lag1, 0x80);
    const Shape shape = shapeOf(PointSet, colours);
    EXPECT_STREQ(shape.damage.what, "the check sum of the colours is wrong");
    EXPECT_EQ(shape.damage.offset, 1000 + 4 + 17 + colours.data().size());
    EXPECT_THAT(shape.points, IsEmpty());
    JtBytes texture = withPlaces(GetParam(), FirstTexture);
    texture.i32(5).u8(2).u8(0);
    addFloats(texture, {{0, 0, 0, 0, 1}, {0, 1, 0, 0, 0}}, Predictor::Lag1, 1);
    EXPECT_STREQ(shapeOf(PointSet, texture).damage.what, "the check sum of the texture coordinates is wrong");
}

TEST_P(JtVertexArrays, ImpossibleNumbersOfComponentsAreErrors)
{
    JtBytes two = withPlaces(GetParam(), Rgb);
    EXPECT_STREQ(shapeOf(PointSet, two.i32(5).u8(2).u8(0)).damage.what,
                 "colours have another number of components than three or four");
    JtBytes five = withPlaces(GetParam(), FirstTexture);
    EXPECT_STREQ(shapeOf(PointSet, five.i32(5).u8(5).u8(0)).damage.what,
                 "texture coordinates have an impossible number of components");
}

INSTANTIATE_TEST_SUITE_P(Versions, JtVertexArrays, testing::Values(9, 10));

TEST(JtVertexArraysOf9, QuantisedColoursHaveAnArrayForEachChannel)
{
    JtBytes bytes = withPlaces(9, Rgba);
    bytes.i32(5).u8(4).u8(8).u8(0);
    for (int channel = 0; channel < 4; ++channel)
        bytes.f32(0).f32(1).u8(1);
    addCodes(bytes, {{0, 1, 0, 1, 0}, {1, 1, 0, 0, 0}, {0, 0, 1, 1, 0}, {1, 1, 1, 1, 0}});
    const Shape shape = shapeOf(PointSet, bytes);
    ASSERT_FALSE(shape.damage) << shape.damage.what;
    EXPECT_THAT(shape.colours, ElementsAre(Colour{0, 1, 0, 1}, Colour{1, 1, 0, 1}, Colour{0, 0, 1, 1},
                                           Colour{1, 0, 1, 1}, Colour{0, 0, 0, 0}));
}

TEST(JtVertexArraysOf10, PackedColoursAreComparedWithTheirSumAndLeftOut)
{
    JtBytes bytes = withPlaces(10, Rgba);
    bytes.i32(5).u8(4).u8(8).u8(1).u8(8).u8(8).u8(8).u8(8);
    JtBytes damaged = bytes;
    addCodes(bytes, {{1, 20, 300, 4000, 50000}});
    addCodes(damaged, {{1, 20, 300, 4000, 50000}}, 4);
    const Shape shape = shapeOf(PointSet, bytes);
    ASSERT_FALSE(shape.damage) << shape.damage.what;
    EXPECT_EQ(shape.points.size(), 5u);
    EXPECT_THAT(shape.colours, IsEmpty());
    EXPECT_STREQ(shape.leftOut, "colours of its vertices, which are packed into single words");
    EXPECT_STREQ(shapeOf(PointSet, damaged).damage.what, "the check sum of the colours is wrong");
}

TEST(JtVertexArraysOf10, CheckSumTellsWhetherColoursAreGuessed)
{
    const Floats colours = {{0.1f, 0.2f, 0.3f, 0.4f, 0.5f}, {0, 1, 0, 1, 0.75f}, {1, 0, 1, 0, 0.25f}};
    for (const Predictor predictor : {Predictor::None, Predictor::Lag1}) {
        JtBytes bytes = withPlaces(10, Rgb);
        bytes.i32(5).u8(3).u8(0);
        addFloats(bytes, colours, predictor);
        const Shape shape = shapeOf(PointSet, bytes);
        ASSERT_FALSE(shape.damage) << shape.damage.what;
        EXPECT_EQ(shape.colours[4], (Colour{0.5f, 0.75f, 0.25f, 1}));
    }
}
