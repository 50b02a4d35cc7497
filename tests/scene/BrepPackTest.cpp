#include "scene/BrepPack.h"

#include <gmock/gmock.h>

#include <cstring>
#include <string>

using testing::ElementsAre;
using testing::Optional;

namespace
{

osg::Buffer<std::byte> bytes(const std::string& text)
{
    std::vector<std::byte> result(text.size());
    std::memcpy(result.data(), text.data(), text.size());
    return result;
}

std::string text(const osg::Buffer<std::byte>& buffer)
{
    return {reinterpret_cast<const char*>(buffer.data()), buffer.size()};
}

std::vector<std::string> membersOf(const osg::Buffer<std::byte>& pack)
{
    std::vector<std::string> result;
    const auto members = osg::unpackBreps(pack);
    EXPECT_TRUE(members);
    for (const auto& member : members.value_or(std::vector<osg::Buffer<std::byte>>()))
        result.push_back(text(member));
    return result;
}

TEST(BrepPack, OneMemberStandsForItself)
{
    const auto one = bytes("surface");
    EXPECT_EQ(osg::packBreps(std::vector{one}), one);
    EXPECT_THAT(membersOf(one), ElementsAre("surface"));
}

TEST(BrepPack, SeveralMembersComeBackInOrder)
{
    const auto pack = osg::packBreps(std::vector{bytes("a"), bytes("second"), bytes("third")});
    EXPECT_EQ(pack.size(), 8u + 8 + 3 * 8 + 12);
    EXPECT_THAT(membersOf(pack), ElementsAre("a", "second", "third"));
}

TEST(BrepPack, APackWithinAPackBecomesPartOfIt)
{
    const auto inner = osg::packBreps(std::vector{bytes("b"), bytes("c")});
    const auto pack = osg::packBreps(std::vector{bytes("a"), inner, bytes("d")});
    EXPECT_THAT(membersOf(pack), ElementsAre("a", "b", "c", "d"));
}

TEST(BrepPack, ADamagedHeadIsRefused)
{
    const std::string sound = text(osg::packBreps(std::vector{bytes("one"), bytes("three")}));
    EXPECT_FALSE(osg::unpackBreps(bytes(sound + "x")));
    EXPECT_FALSE(osg::unpackBreps(bytes(sound.substr(0, sound.size() - 1))));
    for (const std::size_t place : {8, 15, 16, 23, 24, 31}) {
        std::string damaged = sound;
        damaged[place] = char(damaged[place] + 64);
        EXPECT_FALSE(osg::unpackBreps(bytes(damaged))) << "byte " << place;
    }
}

} // namespace
