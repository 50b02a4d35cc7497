#include "ptx/readers/jt/codec/Packets.h"

#include "ptx/readers/jt/codec/Hash.h"

#include <gtest/gtest.h>

#include <string>

using namespace ptx::jt::container;
using namespace ptx::jt::codec;

namespace
{

std::vector<std::uint8_t> bytesOf(const std::string& hex)
{
    std::vector<std::uint8_t> bytes;
    for (std::size_t i = 0; i + 1 < hex.size(); i += 2)
        bytes.push_back(static_cast<std::uint8_t>(std::stoul(hex.substr(i, 2), nullptr, 16)));
    return bytes;
}

Values decode(int major, const std::string& hex, std::size_t budget = 100000)
{
    const std::vector<std::uint8_t> bytes = bytesOf(hex);
    Cursor cursor(bytes, false);
    Values values = PacketReader(cursor, major, budget).read();
    EXPECT_EQ(cursor.left(), 0u);
    return values;
}

} // namespace

TEST(JtPackets, Version8BitLength)
{
    EXPECT_EQ(decode(8, "011c0000000300000001000000c08ab57c"), (Values{0, 90, 172}));
}

TEST(JtPackets, Version8HuffmanKeepsOrderOfEqualWeights)
{
    const Values values =
        decode(8, "0201000000040c6480fffe00015dbfffed9ffffa300000005ffff000000000b50000006c00000006000000341a8d"
                  "0673ce39e70000c09c0e00001039e79c73009873ce");
    EXPECT_EQ(values.size(), 108u);
    EXPECT_EQ(hash32(values, 0), 0x3929476fu);
}

TEST(JtPackets, Version8ArithmeticWithOneTableAndEscapes)
{
    const Values values = decode(8, "03010000000208600000000000bc0707000000013e0000000700000002000000cf0ec5e60411104c40"
                                    "00000043000000020000007825fde400000080");
    EXPECT_EQ(values.size(), 67u);
    EXPECT_EQ((Values(values.begin(), values.begin() + 5)), (Values{0, 6, 10, 14, 0}));
    EXPECT_EQ(hash32(values, 0), 0x440f86a6u);
}

TEST(JtPackets, Version8SecondTableHasTheValuesOfTheFirst)
{
    const Values values = decode(
        8, "0302000000060c8281fffffe3f532d11cbbc0892002a470400ee0b83383000000020c907eca00c07000000015300000007000000"
           "03000000031ef0fcf90f78c0000044e0000400008003000086030000200000001de59efc144bd573f133cd71240478fb135519"
           "192b1fb2e65cda31bf299ce04f2647cc067e499c892ca3667348bc082782d88a1cc21c92fe1862127766623e9d81e57fc03062"
           "48d2cc62137a22b9df094570d10863a2a04be3a374272c3aaf090d25a40b2e1a42641474a90894ee644ce735617c8474814543"
           "88aca100004045");
    EXPECT_EQ(values.size(), 896u);
    EXPECT_EQ((Values(values.begin(), values.begin() + 7)), (Values{480, 480, 480, 480, 0, 0, -449}));
    EXPECT_EQ(hash32(values, 0), 0xc9929c36u);
}

TEST(JtPackets, Version9BitLengths)
{
    EXPECT_EQ(decode(9, "04000000011c000000e0602306"), (Values{3, 3, 6, 5}));
    EXPECT_EQ(decode(9, "0e0000000151000000010000804c00304800007992"),
              (Values{2, 2, 2, 2, 2, 2, 2, 2, 4, 4, 4, 5, 0, 4}));
}

TEST(JtPackets, Version9ArithmeticAndChopper)
{
    EXPECT_EQ(hash32(decode(9, "f30200000327000000008615b700000000000308a0bfffffffd0046f15006000000000"), 0),
              0xac11fc83u);
    EXPECT_EQ(
        hash32(decode(9, "2c0000000407fefeffff0a2c00000003590000000ee2cefe81eef2250000001300050851c000000013807681"
                         "340433d1d0000000002c00000004002c000000019600000020c72102152d4aa54ca614114c59b448004c8234"),
               0),
        0x6f04953du);
}

TEST(JtPackets, Version10BitLengthsArithmeticAndMoveToFront)
{
    EXPECT_EQ(decode(10, "05000000011a0000000014ce19"), (Values{6, 7, 4, 5, 3}));
    EXPECT_EQ(hash32(decode(10, "40010000036600000051036bee69247d1e00f4014a00000000000324280000001a680012a045c0"), 0),
              0x6aa56234u);
    EXPECT_EQ(
        hash32(decode(10, "30010000050300000001b100000063082104082104fb0000f36300400000402000000000000030010000032a"
                          "000000c03f5401000000000002240ffffffff8064b60"),
               0),
        0x1af77eb0u);
}

TEST(JtPackets, LaterVersionsVariableBitLengthAndChopWithoutBits)
{
    EXPECT_EQ(hash32(decode(10, "20000000015b0000001400708803d846880000db14"), 0), 0x542ee150u);
    const Values values = decode(9, "2100000004002100000001570000005531220855d554550052554c");
    EXPECT_EQ(values.size(), 33u);
    EXPECT_EQ(hash32(values, 0), 0x3fe835d6u);
}

TEST(JtPackets, CountBeyondTheBudgetIsAnErrorAtItsPlace)
{
    const std::vector<std::uint8_t> bytes = bytesOf("04000000011c000000e0602306");
    Cursor cursor(bytes, false);
    EXPECT_TRUE(PacketReader(cursor, 9, 3).read().empty());
    EXPECT_STREQ(cursor.damage().what, "an array has more values than its segment can mean");
    EXPECT_EQ(cursor.damage().offset, 4u);
}
