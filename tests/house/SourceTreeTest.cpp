#include "tests/house/SourceTree.h"

#include "tests/house/MadeTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using house::Include;
using house::MadeTree;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

std::vector<std::string> pathsOf(const std::vector<house::SourceFile>& files)
{
    std::vector<std::string> paths;
    for (const auto& file : files)
        paths.push_back(file.path);
    return paths;
}

} // namespace

TEST(SourceTree, FindsNothingInAnEmptyTree)
{
    EXPECT_THAT(MadeTree().read(), IsEmpty());
}

TEST(SourceTree, HoldsSourcesAndHeadersOfOwnFoldersOnly)
{
    const MadeTree tree;
    tree.write("host/znUtils/znFile.h");
    tree.write("cad/xml/CADDocument.cpp");
    tree.write("loader/README.md");
    tree.write("build/release/generated.h");

    EXPECT_THAT(pathsOf(tree.read()), ElementsAre("cad/xml/CADDocument.cpp", "host/znUtils/znFile.h"));
}

TEST(SourceTree, SeesIncludesWithBlanksAndIgnoresOtherLines)
{
    const MadeTree tree;
    tree.write("host/a.h", "// #include \"loader/a.h\"\n  #  include   \"loader/b.h\" // why\nint include = 3;\n");

    EXPECT_THAT(tree.read().front().includes, ElementsAre(Include{2, "loader/b.h"}));
}

TEST(SourceTree, FollowsAnIncludeBesideTheFileAndUpwards)
{
    const MadeTree tree;
    tree.write("standalone/session/Session.h");
    tree.write("loader/Session.h");
    tree.write("loader/a.cpp", "#include \"Session.h\"\n#include \"../standalone/session/Session.h\"\n");

    EXPECT_THAT(tree.read().at(1).includes,
                ElementsAre(Include{1, "loader/Session.h"}, Include{2, "standalone/session/Session.h"}));
}

TEST(SourceTree, CountsLettersOfALineAndNotItsBytes)
{
    const MadeTree tree;
    const std::string widest(house::widestLine - 1, 'x');
    tree.write("host/a.h", "short\n" + widest + "\xc3\xa4\n" + widest + "xy\n");

    EXPECT_THAT(tree.read().front().wideLines, ElementsAre(3));
}

TEST(SourceTree, KnowsAProgramByItsMain)
{
    const MadeTree tree;
    tree.write("tools/a.cpp", "// int main()\n");
    tree.write("tools/b.cpp", "int main(int argc, char** argv)\n");

    EXPECT_FALSE(tree.read().at(0).hasMain);
    EXPECT_TRUE(tree.read().at(1).hasMain);
}

TEST(SourceTree, TellsFoldersStemsAndTheProduct)
{
    EXPECT_EQ(house::folderOf("a/b/c.h"), "a/b");
    EXPECT_EQ(house::folderOf("c.h"), "");
    EXPECT_EQ(house::stemOf("a/b/c.cpp"), "c");
    EXPECT_TRUE(house::isBelow("import", "import/a.h"));
    EXPECT_FALSE(house::isBelow("import", "importer/a.h"));
    EXPECT_TRUE(house::isProduct("scene/Node.cpp"));
    for (const char* path : {"tests/scene/NodeTest.cpp", "bench/a.cpp", "examples/embed/main.cpp"})
        EXPECT_FALSE(house::isProduct(path)) << path;
}
