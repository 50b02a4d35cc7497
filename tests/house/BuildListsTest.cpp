#include "tests/house/BuildLists.h"

#include "tests/house/MadeTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using house::Finding;
using house::MadeTree;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

std::vector<Finding> strayIn(const MadeTree& tree)
{
    return house::strayBuildEntries(tree.root(), tree.read());
}

} // namespace

TEST(BuildLists, NameTheSourcesOfTheirOwnFolder)
{
    const MadeTree tree;
    tree.write("scene/Node.cpp");
    tree.write("scene/Node.h");
    tree.write("scene/CMakeLists.txt", "zn_object_library(zn_scene SOURCES Node.cpp) # ../files/a.cpp\n");

    EXPECT_THAT(strayIn(tree), IsEmpty());
}

TEST(BuildLists, ASourceOfAnotherFolderIsAStranger)
{
    const MadeTree tree;
    tree.write("scene/Node.cpp");
    tree.write("scene/CMakeLists.txt",
               "set(a\n  Node.cpp ../files/File.cpp ${PROJECT_SOURCE_DIR}/b/B.cpp sub/C.cpp)\n");

    EXPECT_THAT(strayIn(tree), ElementsAre(Finding{"scene/CMakeLists.txt", 2, "../files/File.cpp"},
                                           Finding{"scene/CMakeLists.txt", 2, "${PROJECT_SOURCE_DIR}/b/B.cpp"},
                                           Finding{"scene/CMakeLists.txt", 2, "sub/C.cpp"}));
}

TEST(BuildLists, SourcesThatTheBuildMakesAreNoStrangers)
{
    const MadeTree tree;
    tree.write("tests/a/ATest.cpp");
    tree.write("tests/a/CMakeLists.txt", "set(x ${CMAKE_CURRENT_BINARY_DIR}/made/a.cpp ${generated}/b.cpp)\n");

    EXPECT_THAT(strayIn(tree), IsEmpty());
}

TEST(BuildLists, NoSourceOfTheProductIsForgotten)
{
    const MadeTree tree;
    tree.write("scene/Node.cpp");
    tree.write("tests/scene/NodeTest.cpp");

    EXPECT_THAT(strayIn(tree), ElementsAre(Finding{"scene/Node.cpp", 0, "is not in the list of its folder"}));
}
