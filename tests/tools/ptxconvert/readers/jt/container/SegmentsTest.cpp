#include "tools/ptxconvert/readers/jt/container/Segments.h"
#include "tools/ptxconvert/readers/jt/container/CountedText.h"
#include "tools/ptxconvert/readers/jt/graph/SceneGraph.h"

#include <gtest/gtest.h>

#include <string>

using namespace ptx::jt;

namespace
{

using Data = std::vector<std::uint8_t>;

void put(Data& data, std::uint32_t value, int bytes = 4)
{
    for (int i = 0; i < bytes; ++i)
        data.push_back(static_cast<std::uint8_t>(value >> 8 * i));
}

/// The header of a file of version 9.5 whose table of contents lies at `table`.
Data header(std::uint32_t table)
{
    const std::string text = "Version 9.5 made by hand";
    Data data(text.begin(), text.end());
    data.resize(80, ' ');
    data.push_back(0);
    put(data, 0);
    put(data, table);
    data.resize(105, 7);
    return data;
}

Data utf16(std::initializer_list<unsigned> units)
{
    Data data;
    put(data, static_cast<std::uint32_t>(units.size()));
    for (const unsigned unit : units)
        put(data, unit, 2);
    return data;
}

std::string textOf(const Data& data)
{
    Cursor in(data, false);
    return readText(in);
}

} // namespace

TEST(JtFraming, OtherVersionsAreNotRead)
{
    EXPECT_TRUE(isJtHeader(std::string("Version 8.1 x") + std::string(80, ' ')));
    EXPECT_FALSE(isJtHeader(std::string("Version 7.0 x") + std::string(80, ' ')));
    EXPECT_FALSE(isJtHeader(std::string("Version 11.0 x") + std::string(80, ' ')));
    EXPECT_FALSE(isJtHeader("Version 9.5"));
}

TEST(JtFraming, TableBeyondTheEndIsAnError)
{
    const Framing framing = readFraming(header(106));
    EXPECT_STREQ(framing.damage.what, "the table of contents lies beyond the end of the file");
    EXPECT_EQ(framing.damage.offset, 80u);
}

TEST(JtFraming, TableWithMoreRowsThanBytesIsAnErrorAtItsPlace)
{
    Data file = header(105);
    put(file, 3);
    file.resize(file.size() + 2 * 28, 1);
    const Framing framing = readFraming(file);
    EXPECT_STREQ(framing.damage.what, "a count is larger than what follows");
    EXPECT_EQ(framing.damage.offset, 109u);
    EXPECT_TRUE(framing.segments.empty());
}

TEST(JtFraming, PackedSegmentWithoutItsBytesIsAnError)
{
    Data data;
    put(data, 2);
    put(data, 1000);
    data.push_back(2);
    Damage damage;
    EXPECT_TRUE(unpack({1, 300, data}, false, damage).empty());
    EXPECT_STREQ(damage.what, "the header of a packed segment is damaged");
    EXPECT_EQ(damage.offset, 300u);
}

TEST(JtSceneGraph, BytesWithoutANodeAreAnError)
{
    EXPECT_STREQ(readSceneGraph(Data(64, 0xFF), 9, false).damage.what, "the scene graph holds no nodes");
}

TEST(JtText, PairsZerosAndBrokenUnitsBecomeUtf8)
{
    EXPECT_EQ(textOf(utf16({'a', 0xE9, 0x20AC, 0xD83D, 0xDE00, 0, 0})), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(textOf(utf16({'x', 0xD83D, 'y', 0xDE00, 1})), "x\xEF\xBF\xBDy\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(JtText, CountBeyondTheEndGivesNoText)
{
    Data data = utf16({'a', 'b'});
    data[0] = 3;
    EXPECT_EQ(textOf(data), "");
}

TEST(JtText, NamesLoseTheirTailOnlyWhenItIsWhole)
{
    EXPECT_EQ(shownName("shaft.asm;55;0:"), "shaft");
    EXPECT_EQ(shownName("a;b.part;-1;99999999999:"), "a;b");
    EXPECT_EQ(shownName("rod;1:"), "rod;1:");
    EXPECT_EQ(shownName("rod;x;0:"), "rod;x;0:");
    EXPECT_EQ(shownName(".part"), ".part");
}

TEST(JtPlacement, InnerOneComesFirst)
{
    Placement twice = NoMove;
    twice[0] = twice[5] = twice[10] = 2;
    Placement moved = NoMove;
    moved[12] = 5;
    EXPECT_EQ(combined(moved, twice)[12], 10);
    EXPECT_EQ(combined(twice, moved)[12], 5);
}
