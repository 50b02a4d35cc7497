#include "ptx/readers/jt/container/CountedText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace ptx::jt::container;

namespace
{

using Data = std::vector<std::uint8_t>;

void put(Data& data, std::uint32_t value, int bytes = 4)
{
    for (int i = 0; i < bytes; ++i)
        data.push_back(static_cast<std::uint8_t>(value >> 8 * i));
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
