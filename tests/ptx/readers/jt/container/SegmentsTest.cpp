#include "ptx/readers/jt/container/Segments.h"

#include <gtest/gtest.h>

#include <string>

using namespace ptx::jt::container;

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
