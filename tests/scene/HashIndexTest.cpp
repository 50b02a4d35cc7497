#include "scene/HashIndex.h"

#include <gtest/gtest.h>

namespace
{

using osg::HashIndex;

std::uint32_t find(const HashIndex& index, std::uint64_t hash, std::uint32_t wanted)
{
    return index.find(hash, [wanted](std::uint32_t entry) { return entry == wanted; });
}

TEST(HashIndexTest, AnEmptyOneFindsNothing)
{
    EXPECT_EQ(find({}, 1, 0), HashIndex::None);
}

TEST(HashIndexTest, FindsEachOfManyUnderItsOwnHashAlone)
{
    HashIndex index;
    constexpr std::uint32_t count = 3000;
    const auto hashOf = [](std::uint32_t entry) { return std::uint64_t(entry) << 40; };
    for (std::uint32_t entry = 0; entry < count; ++entry)
        index.add(hashOf(entry), entry);
    for (std::uint32_t entry = 0; entry < count; ++entry) {
        EXPECT_EQ(find(index, hashOf(entry), entry), entry);
        EXPECT_EQ(find(index, hashOf(entry + 1), entry), HashIndex::None) << entry;
    }
}

TEST(HashIndexTest, OfOneHashTheEarliestThatIsWantedIsFound)
{
    HashIndex index;
    for (std::uint32_t entry = 0; entry < 100; ++entry)
        index.add(5, entry);
    EXPECT_EQ(index.find(5, [](std::uint32_t entry) { return entry % 10 == 3; }), 3u);
    EXPECT_EQ(index.find(5, [](std::uint32_t) { return false; }), HashIndex::None);
    for (std::uint64_t hash = 6; hash < 1000; ++hash)
        EXPECT_EQ(index.find(hash, [](std::uint32_t) { return true; }), HashIndex::None) << hash;
}

} // namespace
