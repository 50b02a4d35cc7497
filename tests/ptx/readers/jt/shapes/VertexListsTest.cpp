#include "tests/support/jt/JtBytes.h"

#include <gmock/gmock.h>

using namespace jttest;
using namespace ptx::jt::codec;
using namespace ptx::jt::shapes;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pointwise;

namespace
{

/// What a shape of version 8 begins with: bindings and bits that count, and the starts of its primitives.
JtBytes head(unsigned normals, unsigned texture, unsigned colours, unsigned bits, const Values& starts)
{
    JtBytes bytes(8);
    bytes.u16(1).i32(0x010101).u8(9).u8(9).u8(9).u8(9);
    bytes.u16(1).u16(1).u8(normals).u8(texture).u8(colours).u8(bits).u8(5).u8(6).u8(7);
    return bytes.array(starts, Predictor::Stride1);
}

JtBytes plain(const JtBytes& before, const std::vector<float>& floats)
{
    JtBytes bytes = before;
    const auto size = static_cast<std::int64_t>(4 * floats.size());
    return bytes.i32(size).i32(-size).floats(floats);
}

/// Five positions on three axes of four bits each, from 10 to 25: codes are what is added to 10.
JtBytes quantised(const JtBytes& before)
{
    JtBytes bytes = before;
    for (int axis = 0; axis < 3; ++axis)
        bytes.f32(10).f32(25).u8(4);
    bytes.i32(5);
    bytes.array({0, 1, 2, 3, 4}, Predictor::Lag1).array({5, 5, 6, 6, 7}, Predictor::Lag1);
    return bytes.array({9, 8, 7, 6, 5}, Predictor::Lag1);
}

const Values StripOfFive = {0, 1, 2, 3, 4};

std::vector<std::array<std::uint32_t, 3>> trianglesOf(const Shape& shape)
{
    std::vector<std::array<std::uint32_t, 3>> result;
    for (const Triangle& triangle : shape.triangles)
        result.push_back({triangle.corners[0].position, triangle.corners[1].position, triangle.corners[2].position});
    return result;
}

MATCHER(IsNear, "")
{
    const auto& [actual, expected] = arg;
    for (std::size_t i = 0; i < actual.size(); ++i)
        if (std::abs(actual[i] - expected[i]) > 1e-5f)
            return false;
    return true;
}

} // namespace

TEST(JtVertexLists, PlainStripHasPlaceInPictureColourAndNormalOfEachVertex)
{
    const Shape shape =
        shapeOf(StripSet, plain(head(1, 1, 1, 0, {0, 4}),
                                {0.25f, 0.5f, 0.1f, 0.2f, 0.3f, 0,    0,  1,     1, 2,    3,    0.5f, 0.5f, 0.4f, 0.5f,
                                 0.6f,  0,    1,    0,    4,    2,    3,  0.75f, 1, 0.7f, 0.8f, 0.9f, 1,    0,    0,
                                 1,     6,    3,    1,    2,    1.5f, -1, 0.5f,  0, 0,    -1,   4,    6,    3}));
    ASSERT_FALSE(shape.damage) << shape.damage.what;
    EXPECT_THAT(shape.positions, ElementsAre(Vector{1, 2, 3}, Vector{4, 2, 3}, Vector{1, 6, 3}, Vector{4, 6, 3}));
    EXPECT_THAT(shape.normals, ElementsAre(Vector{0, 0, 1}, Vector{0, 1, 0}, Vector{1, 0, 0}, Vector{0, 0, -1}));
    EXPECT_THAT(shape.colours, ElementsAre(Colour{0.1f, 0.2f, 0.3f, 1}, Colour{0.4f, 0.5f, 0.6f, 1},
                                           Colour{0.7f, 0.8f, 0.9f, 1}, Colour{1, 0, 0.5f, 1}));
    EXPECT_THAT(shape.textureCoordinates, ElementsAre(TextureCoordinate{0.25f, 0.5f}, TextureCoordinate{0.5f, 0.5f},
                                                      TextureCoordinate{0.75f, 1}, TextureCoordinate{1, 2}));
    using Row = std::array<std::uint32_t, 3>;
    EXPECT_THAT(trianglesOf(shape), ElementsAre(Row{0, 1, 2}, Row{2, 1, 3}));
}

TEST(JtVertexLists, TrianglesWithTwoCornersInOnePlaceAreLeftOut)
{
    const Shape shape =
        shapeOf(StripSet, plain(head(0, 0, 0, 0, {0, 5}), {0, 0, 5, 1, 0, 5, 1, 0, 5, 1, 1, 5, 2, 1, 5}));
    ASSERT_FALSE(shape.damage) << shape.damage.what;
    using Row = std::array<std::uint32_t, 3>;
    EXPECT_THAT(trianglesOf(shape), ElementsAre(Row{2, 3, 4}));
    EXPECT_EQ(shape.triangles[0].corners[0].record, Corner::NoRecord);
}

TEST(JtVertexLists, QuantisedStripHasTextureAndColoursOfHueSaturationAndValue)
{
    JtBytes bytes = quantised(head(0, 1, 1, 4, {0, 5}));
    bytes.f32(0).f32(3).u8(2).f32(-1).f32(2).u8(2).u8(2);
    bytes.array({0, 1, 2, 3, 1}, Predictor::Lag1).array({3, 2, 1, 0, 2}, Predictor::Lag1);
    // Hue in steps of 2 (red, green, blue, red again), saturation, value and alpha of one bit each.
    bytes.u8(1).u8(2).u8(1).u8(1).u8(1).u8(6).u8(4).u8(1);
    bytes.array({0, 1, 2, 3, 1}, Predictor::Lag1).array({1, 1, 1, 0, 1}, Predictor::Lag1);
    bytes.array({1, 1, 1, 1, 0}, Predictor::Lag1).array({1, 0, 1, 1, 1}, Predictor::Lag1);
    bytes.array(StripOfFive, Predictor::StripIndex);
    const Shape shape = shapeOf(StripSet, bytes);
    ASSERT_FALSE(shape.damage) << shape.damage.what;
    EXPECT_EQ(shape.leftOut, nullptr);
    EXPECT_EQ(shape.triangles.size(), 3u);
    EXPECT_THAT(shape.positions, ElementsAre(Vector{10, 15, 19}, Vector{11, 15, 18}, Vector{12, 16, 17},
                                             Vector{13, 16, 16}, Vector{14, 17, 15}));
    EXPECT_THAT(shape.textureCoordinates,
                ElementsAre(TextureCoordinate{0, 2}, TextureCoordinate{1, 1}, TextureCoordinate{2, 0},
                            TextureCoordinate{3, -1}, TextureCoordinate{1, 1}));
    EXPECT_THAT(
        shape.colours,
        Pointwise(IsNear(), std::vector<Colour>{{1, 0, 0, 1}, {0, 1, 0, 0}, {0, 0, 1, 1}, {1, 1, 1, 1}, {0, 0, 0, 1}}));
}

TEST(JtVertexLists, QuantisedColoursOfThreeChannelsAreOpaque)
{
    JtBytes bytes = quantised(head(0, 0, 1, 4, {0, 5}));
    bytes.u8(0).f32(0).f32(0.6f).u8(2).f32(0).f32(1).u8(1).f32(0.5f).f32(1).u8(1).f32(0).f32(0.25f).u8(1);
    bytes.u8(6).u8(3).u8(1);
    bytes.array({0, 1, 2, 3, 3}, Predictor::Lag1).array({0, 1, 0, 1, 1}, Predictor::Lag1);
    bytes.array({1, 1, 0, 0, 0}, Predictor::Lag1).array({1, 1, 1, 1, 1}, Predictor::Lag1);
    bytes.array(StripOfFive, Predictor::StripIndex);
    const Shape shape = shapeOf(StripSet, bytes);
    ASSERT_FALSE(shape.damage) << shape.damage.what;
    EXPECT_THAT(
        shape.colours,
        Pointwise(IsNear(),
                  std::vector<Colour>{
                      {0, 0, 1, 1}, {0.2f, 1, 1, 1}, {0.4f, 0, 0.5f, 1}, {0.6f, 1, 0.5f, 1}, {0.6f, 1, 0.5f, 1}}));
}

TEST(JtVertexLists, PackedColoursAreLeftOutAndTheMeshIsNot)
{
    JtBytes bytes = quantised(head(0, 0, 1, 4, {0, 5}));
    bytes.u8(1).u8(2).u8(1).u8(1).u8(1).u8(6).u8(3).u8(0).array({7, 8, 9, 7, 8});
    const Shape shape = shapeOf(StripSet, bytes.array(StripOfFive, Predictor::StripIndex));
    ASSERT_FALSE(shape.damage) << shape.damage.what;
    EXPECT_EQ(shape.triangles.size(), 3u);
    EXPECT_THAT(shape.colours, IsEmpty());
    EXPECT_STREQ(shape.leftOut, "colours of its vertices, which are packed into single words");
}

TEST(JtVertexLists, ChannelsThatDifferInNumberAreAnError)
{
    JtBytes bytes = quantised(head(0, 0, 1, 4, {0, 5}));
    bytes.u8(1).u8(2).u8(1).u8(1).u8(1).u8(6).u8(3).u8(1);
    bytes.array({0, 1, 2}).array({1, 1, 1}).array({1, 1}).array({1, 1, 1});
    const Shape shape = shapeOf(StripSet, bytes.array(StripOfFive, Predictor::StripIndex));
    EXPECT_STREQ(shape.damage.what, "the components of an array differ in number");
    EXPECT_THAT(shape.triangles, IsEmpty());
}

TEST(JtVertexLists, FewerColoursThanPositionsAreAnError)
{
    JtBytes bytes = quantised(head(0, 0, 1, 4, {0, 5}));
    bytes.u8(1).u8(2).u8(1).u8(1).u8(1).u8(6).u8(3).u8(1);
    bytes.array({0, 1, 2}).array({1, 1, 1}).array({1, 1, 0}).array({1, 1, 1});
    const Shape shape = shapeOf(StripSet, bytes.array(StripOfFive, Predictor::StripIndex));
    EXPECT_STREQ(shape.damage.what, "a shape names a point that is not there");
    EXPECT_THAT(shape.triangles, IsEmpty());
}

TEST(JtVertexLists, EachPrimitiveOfAPolylineSetIsALineOfItsOwn)
{
    const Shape shape =
        shapeOf(PolylineSet, plain(head(0, 0, 1, 0, {0, 3, 5}), {1, 0, 0, 0, 0, 7, 0, 1, 0, 1, 0, 7, 0, 0, 1,
                                                                 2, 0, 7, 1, 1, 0, 8, 0, 7, 0, 1, 1, 9, 0, 7}));
    ASSERT_FALSE(shape.damage) << shape.damage.what;
    ASSERT_EQ(shape.lines.size(), 3u);
    EXPECT_EQ(shape.lines[1][0].position, 1u);
    EXPECT_EQ(shape.lines[1][1].position, 2u);
    EXPECT_EQ(shape.lines[2][0].position, 3u);
    EXPECT_EQ(shape.lines[2][1].record, 4u);
    EXPECT_EQ(shape.colours[3], (Colour{1, 1, 0, 1}));
    EXPECT_THAT(shape.triangles, IsEmpty());
}

TEST(JtVertexLists, EachVertexOfAPointSetIsAPoint)
{
    JtBytes bytes = quantised(head(0, 0, 0, 4, {0, 5}));
    const Shape shape = shapeOf(PointSet, bytes.array({4, 3, 2, 1, 0}, Predictor::StripIndex));
    ASSERT_FALSE(shape.damage) << shape.damage.what;
    ASSERT_EQ(shape.points.size(), 5u);
    EXPECT_EQ(shape.points[0].position, 4u);
    EXPECT_EQ(shape.positions[4], (Vector{14, 17, 15}));
    EXPECT_THAT(shape.lines, IsEmpty());
}

TEST(JtVertexLists, PrimitiveBeyondTheVerticesIsAnError)
{
    const Shape shape = shapeOf(PolylineSet, plain(head(0, 0, 0, 0, {0, 3}), {1, 2, 3, 4, 5, 6}));
    EXPECT_STREQ(shape.damage.what, "a primitive leaves the vertices");
    EXPECT_THAT(shape.lines, IsEmpty());
}

TEST(JtVertexLists, PolygonsAreCutIntoTrianglesWithinTheirOutline)
{
    // An arrowhead whose corner 3 points inwards, and a triangle.
    const Shape shape = shapeOf(PolygonSet, plain(head(0, 0, 0, 0, {0, 4, 7}),
                                                  {0, 0, 5, 4, -3, 5, 1, 0, 5, 4, 3, 5, 9, 0, 5, 9, 1, 5, 8, 0, 5}));
    ASSERT_FALSE(shape.damage) << shape.damage.what;
    ASSERT_EQ(shape.triangles.size(), 3u);
    double area = 0;
    for (const Triangle& triangle : shape.triangles) {
        const auto at = [&](std::size_t i) { return shape.positions[triangle.corners[i].position]; };
        const double twice =
            (at(1)[0] - at(0)[0]) * (at(2)[1] - at(0)[1]) - (at(2)[0] - at(0)[0]) * (at(1)[1] - at(0)[1]);
        EXPECT_GT(twice, 0);
        area += twice / 2;
    }
    EXPECT_DOUBLE_EQ(area, 3.5);
}

TEST(JtVertexLists, PolygonsThatCannotBeCutAreErrors)
{
    JtBytes bytes = quantised(head(0, 0, 0, 4, {0, 4}));
    EXPECT_STREQ(shapeOf(PolygonSet, bytes.array({0, 1, 2, 5})).damage.what, "a polygon cannot be cut into triangles");
    constexpr std::int32_t Corners = 10001;
    const Shape large =
        shapeOf(PolygonSet, plain(head(0, 0, 0, 0, {0, Corners}), std::vector<float>(3 * std::size_t(Corners), 1)));
    EXPECT_STREQ(large.damage.what, "a polygon cannot be cut into triangles");
    EXPECT_THAT(large.triangles, IsEmpty());
}

TEST(JtVertexLists, NullShapeDrawsNothingAndOtherKindsAreErrors)
{
    const Shape null = shapeOf("3e637aed-2a89-41f8-a9fd-553737039682", JtBytes(8).u16(1).i32(0));
    EXPECT_FALSE(null.damage);
    EXPECT_THAT(null.triangles, IsEmpty());
    EXPECT_STREQ(shapeOf("e40373c2-1ad9-11d3-9daf-00a0c9c7ddc2", JtBytes(8).i32(0)).damage.what,
                 "a shape segment holds another kind of shape than strips, polylines, points and polygons");
    EXPECT_STREQ(shapeOf(PolygonSet, JtBytes(9).i32(0)).damage.what,
                 "a shape segment holds another kind of shape than strips, polylines, points and polygons");
}
