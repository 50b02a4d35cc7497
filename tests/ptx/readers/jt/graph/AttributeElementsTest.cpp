#include "ptx/readers/jt/graph/AttributeElements.h"
#include "tests/support/jt/JtBytes.h"

#include <gtest/gtest.h>

using namespace ptx::jt::container;
using namespace ptx::jt::codec;
using namespace ptx::jt::graph;
using namespace jttest;

namespace
{

constexpr unsigned FinalState = 0x01;
constexpr unsigned ForcedState = 0x02;
constexpr unsigned IgnoredState = 0x04;
constexpr unsigned HidesVertexColours = 0x0020;

/// A material as an attribute of a node.
struct MaterialBytes {
    std::array<float, 4> diffuse{};
    unsigned flags = 0; ///< of its data
    unsigned state = 0;
    std::uint32_t inhibited = 0;
    std::uint32_t final = 0; ///< version 10 alone
};

JtBytes materialBytes(int major, const MaterialBytes& material)
{
    JtBytes bytes(major);
    bytes.version().u8(material.state).i32(material.inhibited);
    if (major >= 10)
        bytes.i32(material.final);
    bytes.version().u16(material.flags).floats({0.9f, 0.8f, 0.7f, 0.6f});
    bytes.floats({material.diffuse.begin(), material.diffuse.end()});
    return bytes.floats({0.1f, 0.1f, 0.1f, 1, 0, 0, 0, 1, 20});
}

Attribute read(int major, const MaterialBytes& material)
{
    const JtBytes bytes = materialBytes(major, material);
    Cursor in(bytes.data(), false);
    Attribute attribute = readAttribute(in, major, ElementKind::Material);
    EXPECT_TRUE(in.isOk());
    return attribute;
}

Material materialOf(int major, const MaterialBytes& bytes)
{
    const Attribute attribute = read(major, bytes);
    EXPECT_TRUE(attribute.material.has_value());
    return attribute.material.value_or(Material());
}

constexpr Colour Orange = {0.75f, 0.5f, 0.25f, 1};

} // namespace

TEST(JtAttributeElements, StateFlagsOfEachVersionAreRead)
{
    for (const int major : {8, 9, 10}) {
        SCOPED_TRACE(major);
        const Material plain = materialOf(major, {Orange});
        EXPECT_EQ(plain.diffuse, Orange);
        EXPECT_EQ(plain.given, unsigned(AllFields));
        EXPECT_EQ(plain.final, 0u);
        EXPECT_FALSE(plain.isForced);
        EXPECT_FALSE(plain.hidesVertexColours);
        EXPECT_TRUE(materialOf(major, {Orange, 0, ForcedState}).isForced);
        EXPECT_TRUE(materialOf(major, {Orange, HidesVertexColours}).hidesVertexColours);
        EXPECT_FALSE(read(major, {Orange, 0, IgnoredState}).material.has_value());
    }
}

TEST(JtAttributeElements, FinalIsAStateBeforeVersion10AndAFieldFlagFromThenOn)
{
    EXPECT_EQ(materialOf(8, {Orange, 0, FinalState}).final, unsigned(AllFields));
    EXPECT_EQ(materialOf(9, {Orange, 0, FinalState}).final, unsigned(AllFields));
    EXPECT_EQ(materialOf(10, {Orange, 0, FinalState}).final, 0u);
    EXPECT_EQ(materialOf(10, {Orange, 0, 0, 0, 1u << 6}).final, unsigned(ColourField));
    EXPECT_EQ(materialOf(10, {Orange, 0, 0, 0, 1u << 7 | 1u << 4}).final, unsigned(AlphaField | VertexColourField));
}

TEST(JtAttributeElements, InhibitedFieldsDependOnTheVersion)
{
    const auto given = [](int major, std::uint32_t inhibited) {
        return materialOf(major, {Orange, 0, 0, inhibited}).given;
    };
    EXPECT_EQ(given(8, 1u << 1), unsigned(VertexColourField));
    EXPECT_EQ(given(9, 1u << 1), unsigned(VertexColourField));
    EXPECT_EQ(given(9, 1u << 7), unsigned(AlphaField | VertexColourField));
    EXPECT_EQ(given(9, 1u << 8), unsigned(ColourField | VertexColourField));
    EXPECT_EQ(given(9, 1u << 5), unsigned(ColourField | AlphaField));
    EXPECT_EQ(given(10, 1u << 6), unsigned(AlphaField | VertexColourField));
    EXPECT_EQ(given(10, 1u << 7), unsigned(ColourField | VertexColourField));
    EXPECT_EQ(given(10, 1u << 1), unsigned(AllFields));
}
