#include "tests/house/Mirrors.h"

#include "tests/house/MadeTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using house::MadeTree;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

std::vector<std::string> filesOf(const std::vector<house::Finding>& findings)
{
    std::vector<std::string> files;
    for (const auto& finding : findings)
        files.push_back(finding.file);
    return files;
}

} // namespace

TEST(Mirrors, ASourceHasAHeaderOfItsNameBesideIt)
{
    const MadeTree tree;
    tree.write("loader/a.cpp");
    tree.write("loader/a.h");
    tree.write("loader/b.cpp");
    tree.write("converter/b.h");

    EXPECT_THAT(filesOf(house::sourcesWithoutHeader(tree.read())), ElementsAre("loader/b.cpp"));
}

TEST(Mirrors, TheOpenHostDefinesClassesOfTheContract)
{
    const MadeTree tree;
    tree.write("host/znKernel/znFileIO.h");
    tree.write("host/OSGSystem/Node.h");
    tree.write("standalone/znKernel/znFileIO.cpp");
    tree.write("scene/Node.cpp");
    tree.write("standalone/znUtils/znFileIO.cpp");

    EXPECT_THAT(filesOf(house::sourcesWithoutHeader(tree.read())), ElementsAre("standalone/znUtils/znFileIO.cpp"));
}

TEST(Mirrors, ProgramsAndTestsNeedNoHeader)
{
    const MadeTree tree;
    tree.write("tools/a/main.cpp", "int main(int, char**)\n");
    tree.write("tests/loader/aTest.cpp");
    tree.write("bench/b.cpp");

    EXPECT_THAT(house::sourcesWithoutHeader(tree.read()), IsEmpty());
}

TEST(Mirrors, ATestBearsTheNameOfItsUnitAndLiesAtItsPlace)
{
    const MadeTree tree;
    tree.write("loader/Parts.h");
    tree.write("host/znKernel/znFileIO.h");
    tree.write("tests/loader/PartsTest.cpp");
    tree.write("tests/loader/PartsAbortTest.cpp");
    tree.write("tests/loader/PartsmithTest.cpp");
    tree.write("tests/converter/PartsTest.cpp");
    tree.write("tests/standalone/znKernel/znFileIOTest.cpp");

    EXPECT_THAT(filesOf(house::testsWithoutUnit(tree.read())),
                ElementsAre("tests/converter/PartsTest.cpp", "tests/loader/PartsmithTest.cpp"));
}

TEST(Mirrors, SomeFoldersOfTestsMirrorNothing)
{
    const MadeTree tree;
    tree.write("tests/roads/AnythingTest.cpp");
    tree.write("tests/house/AnythingTest.cpp");
    tree.write("tests/support/AnythingTest.cpp");

    EXPECT_THAT(house::testsWithoutUnit(tree.read()), IsEmpty());
}
