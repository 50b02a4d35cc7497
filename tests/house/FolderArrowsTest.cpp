#include "tests/house/FolderArrows.h"

#include "tests/house/MadeTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using house::FolderArrows;
using house::MadeTree;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(FolderArrows, LeadFromAFolderToThoseThatItsFilesIncludeFrom)
{
    const MadeTree tree;
    tree.writeIncluding("scene/a.cpp", {"host/a.h", "scene/b.h", "QString", "scene/missing.h"});
    tree.write("scene/b.h");
    tree.write("host/a.h");

    EXPECT_EQ(house::folderArrows(tree.read()), (FolderArrows{{"host", {}}, {"scene", {"host"}}}));
}

TEST(FolderArrows, FoldersThatReachEachOtherAreARing)
{
    EXPECT_THAT(house::folderRings({{"a", {"b"}}, {"b", {"c"}}, {"c", {"a", "d"}}, {"d", {}}, {"e", {"a"}}}),
                ElementsAre(ElementsAre("a", "b", "c")));
}

TEST(FolderArrows, AFolderAndOneBelowItAreTwo)
{
    EXPECT_THAT(house::folderRings({{"a", {"a/b"}}, {"a/b", {"a"}}}), ElementsAre(ElementsAre("a", "a/b")));
}

TEST(FolderArrows, OneWayIsNoRing)
{
    EXPECT_THAT(house::folderRings({{"a", {"b", "c"}}, {"b", {"c"}}, {"c", {}}}), IsEmpty());
}

TEST(FolderArrows, AreReadFromTheBlockThatDrawsThem)
{
    EXPECT_EQ(house::drawnArrows("text -> x\n```arrows\na -> b, c/d\nc/d ->\n```\n```arrows\ne -> f\n```\n"),
              (FolderArrows{{"a", {"b", "c/d"}}, {"c/d", {}}}));
}

TEST(FolderArrows, AFolderHasTheNearestRoomAboveIt)
{
    EXPECT_EQ(house::roomOf("a/b/c", {"a", "a/b"}), "a/b");
    EXPECT_EQ(house::roomOf("a/b", {"a/b"}), "a/b");
    EXPECT_EQ(house::roomOf("b/a", {"a"}), "");
}

TEST(FolderArrows, BetweenRoomsCountTheFoldersBelow)
{
    const FolderArrows arrows{{"a/b/c", {"a/b", "d/e", "f"}}, {"a/b", {"a"}}, {"a", {"d"}}, {"f", {"a"}}};
    EXPECT_EQ(house::arrowsBetweenRooms(arrows, {"a", "a/b", "d"}), (FolderArrows{{"a", {"d"}}, {"a/b", {"a", "d"}}}));
}
