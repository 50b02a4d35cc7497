// Holds the rules of the house against this checkout.

#include "tests/house/BuildLists.h"
#include "tests/house/FolderArrows.h"
#include "tests/house/Layers.h"
#include "tests/house/Mirrors.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

using house::SourceFile;
using testing::IsEmpty;

namespace
{

const std::vector<SourceFile>& sources()
{
    static const std::vector<SourceFile> files = house::readSourceTree(ZN_SOURCE_ROOT);
    return files;
}

std::vector<SourceFile> product()
{
    std::vector<SourceFile> files;
    std::ranges::copy_if(sources(), std::back_inserter(files),
                         [](const SourceFile& file) { return house::isProduct(file.path); });
    return files;
}

std::string textOf(const std::string& path)
{
    std::ifstream input(std::string(ZN_SOURCE_ROOT) + '/' + path);
    std::ostringstream text;
    text << input.rdbuf();
    return text.str();
}

} // namespace

TEST(House, HoldsTheVocabulary)
{
    EXPECT_TRUE(std::ranges::any_of(
        sources(), [](const SourceFile& file) { return file.path == "import/filetypes/znCADFileTypes.h"; }));
}

TEST(House, NoIncludePointsTheWrongWay)
{
    EXPECT_THAT(house::brokenLayers(sources()), IsEmpty());
}

TEST(House, NoFoldersIncludeEachOtherInARing)
{
    EXPECT_THAT(house::folderRings(house::folderArrows(product())), IsEmpty());
}

TEST(House, EachFolderCompilesItsOwnSources)
{
    EXPECT_THAT(house::strayBuildEntries(ZN_SOURCE_ROOT, sources()), IsEmpty());
}

TEST(House, EachSourceHasAHeaderOfItsName)
{
    EXPECT_THAT(house::sourcesWithoutHeader(sources()), IsEmpty());
}

TEST(House, EachTestMirrorsAUnit)
{
    EXPECT_THAT(house::testsWithoutUnit(sources()), IsEmpty());
}

TEST(House, InstalledHeadersIncludeInstalledOnesAlone)
{
    std::istringstream list(ZN_INSTALLED_HEADERS);
    const std::set<std::string> installed{std::istream_iterator<std::string>(list), {}};
    ASSERT_GT(installed.size(), 30U);
    std::vector<house::Finding> missing;
    for (const SourceFile& file : sources()) {
        if (!installed.contains(file.path))
            continue;
        for (const auto& [line, included] : file.includes)
            if (std::filesystem::exists(std::filesystem::path(ZN_SOURCE_ROOT) / included) &&
                !installed.contains(included))
                missing.push_back({file.path, line, included + " is not installed"});
    }
    EXPECT_THAT(missing, IsEmpty());
}

TEST(House, NoLineIsWiderThanThePage)
{
    std::vector<house::Finding> wide;
    for (const SourceFile& file : sources()) {
        for (const int line : file.wideLines)
            wide.push_back({file.path, line, "is too wide"});
    }
    EXPECT_THAT(wide, IsEmpty());
}

TEST(House, TheArchitecturePageDrawsTheArrowsThatAreThere)
{
    const house::FolderArrows drawn = house::drawnArrows(textOf("docs/architecture.md"));
    ASSERT_GT(drawn.size(), 10U);
    std::set<std::string> rooms;
    for (const auto& [room, targets] : drawn)
        rooms.insert(room);
    const house::FolderArrows arrows = house::folderArrows(product());
    for (const auto& [folder, targets] : arrows)
        EXPECT_NE(house::roomOf(folder, rooms), "") << folder << " is not drawn";
    EXPECT_EQ(drawn, house::arrowsBetweenRooms(arrows, rooms));
}
