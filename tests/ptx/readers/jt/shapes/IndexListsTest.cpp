#include "tests/support/jt/JtBytes.h"

#include <gmock/gmock.h>

using namespace jttest;
using namespace ptx::jt::codec;
using namespace ptx::jt::shapes;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

/// Two polylines of four and two corners over six records, of which two share a position each.
struct Lists {
    Values groups = {0, 2};
    Values starts = {0, 4, 6};
    Values indices = {0, 1, 3, 5, 2, 4};
    Values counts = {1, 2, 1, 2};
    std::int64_t records = 6;
    std::uint32_t wrongIndices = 0;
    std::uint32_t wrongCounts = 0;
};

JtBytes bytesOf(int major, const Lists& lists)
{
    const Predictor predictor = major >= 10 ? Predictor::Lag1 : Predictor::None;
    JtBytes bytes = laterHead(major);
    bytes.i32(1).i32(2).i32(6);
    bytes.array(lists.groups, predictor).array(lists.starts, predictor).array(lists.indices, predictor);
    bytes.i32(sumOf({lists.groups, lists.starts, lists.indices}) ^ lists.wrongIndices);
    bytes.u64(0x2).u8(8).u8(0).u8(0).u8(0).i32(lists.records);
    if (major < 10)
        bytes.i32(4);
    bytes.array(lists.counts).i32(sumOf({lists.counts}) ^ lists.wrongCounts);
    bytes.i32(4).u8(3);
    const std::vector<Values> codes = {{0, 1, 2, 3}, {4, 4, 4, 4}, {7, 0, 7, 0}};
    for (int axis = 0; axis < 3; ++axis)
        bytes.f32(0).f32(14).u8(3);
    for (const Values& values : codes)
        bytes.array(values, Predictor::Lag1);
    return bytes.i32(sumOf(codes)).version();
}

std::vector<std::array<std::uint32_t, 2>> linesOf(const Shape& shape)
{
    std::vector<std::array<std::uint32_t, 2>> result;
    for (const auto& line : shape.lines)
        result.push_back({line[0].position, line[1].position});
    return result;
}

class JtIndexLists : public testing::TestWithParam<int>
{
protected:
    Shape polylines(const Lists& lists) const { return shapeOf(PolylineSet, bytesOf(GetParam(), lists)); }
};

} // namespace

TEST_P(JtIndexLists, PolylinesFollowTheirIndicesToPositionsThatRecordsShare)
{
    const Shape shape = polylines({});
    ASSERT_FALSE(shape.damage) << shape.damage.what;
    EXPECT_EQ(shape.hashes, 3u);
    EXPECT_THAT(shape.positions, ElementsAre(Vector{0, 8, 14}, Vector{2, 8, 0}, Vector{4, 8, 14}, Vector{6, 8, 0}));
    using Row = std::array<std::uint32_t, 2>;
    EXPECT_THAT(linesOf(shape), ElementsAre(Row{0, 1}, Row{1, 2}, Row{2, 3}, Row{1, 3}));
}

TEST_P(JtIndexLists, WrongCheckSumsOfIndicesAndRepeatCountsAreErrors)
{
    Lists indices;
    indices.wrongIndices = 1;
    EXPECT_STREQ(polylines(indices).damage.what, "the check sum of the indices is wrong");
    Lists counts;
    counts.wrongCounts = 0x100;
    EXPECT_STREQ(polylines(counts).damage.what, "the check sum of the repeated positions is wrong");
    EXPECT_THAT(polylines(counts).lines, IsEmpty());
}

TEST_P(JtIndexLists, ListsThatContradictEachOtherAreErrors)
{
    Lists longer;
    longer.starts = {0, 4, 7};
    EXPECT_STREQ(polylines(longer).damage.what, "a list of indices is shorter than a primitive needs");
    Lists fewer;
    fewer.starts = {0, 6};
    EXPECT_STREQ(polylines(fewer).damage.what, "a list of indices has another size than it says");
    Lists beyond;
    beyond.indices = {0, 1, 3, 6, 2, 4};
    EXPECT_STREQ(polylines(beyond).damage.what, "a shape names a point that is not there");
    Lists negative;
    negative.indices = {0, 1, 3, -1, 2, 4};
    EXPECT_STREQ(polylines(negative).damage.what, "a shape names a point that is not there");
    Lists many;
    many.counts = {1, 2, 2, 2};
    EXPECT_STREQ(polylines(many).damage.what, "positions are repeated more often than there are records");
    Lists few;
    few.counts = {1, 2, 1, 1};
    EXPECT_STREQ(polylines(few).damage.what, "positions are repeated less often than there are records");
}

TEST_P(JtIndexLists, ShapeWithoutRecordsIsEmptyAndNoError)
{
    Lists none;
    none.records = 0;
    const Shape shape = polylines(none);
    EXPECT_FALSE(shape.damage) << shape.damage.what;
    EXPECT_THAT(shape.lines, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Versions, JtIndexLists, testing::Values(9, 10));
