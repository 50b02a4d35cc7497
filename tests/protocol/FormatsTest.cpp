#include "protocol/Formats.h"

#include "import/filetypes/znCADFileTypes.h"

#include <gmock/gmock.h>

#include <set>
#include <string>

using namespace protocol;
using testing::ElementsAre;

namespace
{

std::set<std::string> extensionsOf(const ReadFormat& format)
{
    return {format.extensions.begin(), format.extensions.end()};
}

std::set<std::string> extensionsOf(znCADFileTypes::FileType type)
{
    const auto& extensions = znCADFileTypes::findRow(type)->extensions;
    return {extensions.begin(), extensions.end()};
}

} // namespace

TEST(Formats, AreReadUnderTheExtensionsOfTheVocabulary)
{
    EXPECT_EQ(extensionsOf(format::Step), extensionsOf(znCADFileTypes::Step));
    EXPECT_EQ(extensionsOf(format::Iges), extensionsOf(znCADFileTypes::Iges));
    EXPECT_EQ(extensionsOf(format::Jt), extensionsOf(znCADFileTypes::JT));
    EXPECT_EQ(extensionsOf(format::Stl), extensionsOf(znCADFileTypes::STL));
}

TEST(Formats, BrepIsTheConvertersOwn)
{
    EXPECT_THAT(extensionsOf(format::Brep), ElementsAre("brep", "brp"));
    for (const auto& [type, row] : znCADFileTypes::extensionTable())
        for (const char* extension : format::Brep.extensions)
            EXPECT_FALSE(row.extensions.contains(extension)) << extension;
}

TEST(Formats, NoExtensionStandsForTwo)
{
    std::set<std::string> seen;
    for (const ReadFormat& format : ReadFormats)
        for (const char* extension : format.extensions)
            EXPECT_TRUE(seen.insert(extension).second) << extension;
    EXPECT_EQ(seen.size(), 10u);
}

TEST(Formats, CadFormatsAndTheConvertersOwnAreConverted)
{
    for (const char* extension : {"stp", "catpart", "prt", "asm", "styl", "x_t", "brep", "brp"})
        EXPECT_TRUE(isConverted(extension)) << extension;
    for (const char* extension : {"", "obj", "osb", "plmxml", "txt", "STP", ".stp", "bre"})
        EXPECT_FALSE(isConverted(extension)) << extension;
}

TEST(Formats, PartFilesAreNamedByAssembliesOnly)
{
    for (const char* extension :
         {"catproduct", "model", "mdl", "session", "asm", "sldasm", "dgn", "jt", "stp", "step", "g"})
        EXPECT_TRUE(mayNamePartFiles(extension)) << extension;
    for (const char* extension : {"", "igs", "stl", "brep", "brp", "prt", "x_t", "plmxml"})
        EXPECT_FALSE(mayNamePartFiles(extension)) << extension;
}

/// No format that the converter reads holds parts of its own beside references in a way that a run without references
/// would be a good one.
TEST(Formats, NoneThatIsReadCanContainMixedAssemblies)
{
    for (const znCADFileTypes::FileType type : znCADFileTypes::mixedAssemblyTypes())
        for (const std::string& extension : znCADFileTypes::findRow(type)->extensions)
            for (const ReadFormat& format : ReadFormats)
                EXPECT_FALSE(extensionsOf(format).contains(extension)) << extension;
}

TEST(Formats, APackedNameHasTheExtensionOfWhatIsInIt)
{
    for (const auto& [name, extension] :
         {std::pair("a.stp", "stp"), std::pair("A.STEP", "step"), std::pair("a.stpZ", "stp"),
          std::pair("a.stp.gz", "stp"), std::pair("a.Step.GZ", "step"), std::pair("a.step.zip", "step"),
          std::pair("a.jt.gz", "gz"), std::pair("a.zip", "zip"), std::pair("stp.gz", "gz"), std::pair("a", ""),
          std::pair("folder.stp/a", ""), std::pair("folder.stp/gz", ""), std::pair("", "")})
        EXPECT_EQ(extensionOf(name), extension) << name;
}

TEST(Formats, OnlyStepFilesMayLiePacked)
{
    EXPECT_THAT(packedNames("x/a.Stp"), ElementsAre("x/a.stpz", "x/a.Stp.gz", "x/a.Stp.zip"));
    EXPECT_THAT(packedNames("a.jt"), ElementsAre());
    EXPECT_THAT(packedNames("a.stpz"), ElementsAre());
}
