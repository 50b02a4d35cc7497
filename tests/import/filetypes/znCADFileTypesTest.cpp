#include "import/filetypes/znCADFileTypes.h"

#include <gmock/gmock.h>

#include <set>
#include <string>
#include <vector>

using namespace znCADFileTypes;
using testing::UnorderedElementsAre;

namespace
{

enum Road { NoRow, Native, Converted };

struct Expected {
    int number;
    const char* name;
    std::set<std::string> extensions;
    Road road;
};

const std::vector<Expected> vocabulary = {
    // clang-format off
    {0, "Cinema4D", {"c4d"}, Native},
    {1, "Cosmo", {"csb"}, Native},
    {2, "WebDraft", {"wdf"}, Native},
    {3, "XFB", {"xfb", "abc"}, Native},
    {4, "Animara", {"nm", "nb"}, Native},
    {5, "Obj", {"obj"}, Native},
    {6, "OpenSG", {"osb"}, Native},
    {7, "PLMXML", {"plmxml"}, Native},
    {8, "Python", {"py"}, Native},
    {9, "3DStage", {"3dg"}, Native},
    {10, "Quillon", {"qlb", "qle"}, Native},
    {11, "VRML", {"vrml", "wrl"}, Native},
    {12, "ACIS", {"sat", "smt"}, Converted},
    {13, "Stylar", {"styl"}, Converted},
    {14, "DraftKit", {"dkd", "dkx"}, Converted},
    {15, "Catia V4", {"model", "mdl", "session", "exp", "dlv", "dlv3", "dlv4"}, Converted},
    {16, "Catia V5", {"catpart", "catproduct", "cgr"}, Converted},
    {17, "DGN", {"dgn"}, Converted},
    {18, "Mechanor", {"mca", "mcp"}, Converted},
    {19, "JT", {"jt"}, Converted},
    {20, "NX", {"prt"}, Converted},
    {21, "Iges", {"iges", "igs"}, Converted},
    {22, "Parasolid", {"x_t", "x_b"}, Converted},
    {23, "ProEngineer", {"g", "prt", "asm", "neu"}, Converted},
    {24, "Rhino", {"3dm"}, Converted},
    {25, "SketchUp", {"skp", "skb", "style"}, Converted},
    {26, "SolidEdge", {"asm", "par", "pwd", "psm"}, Converted},
    {27, "SolidWorks", {"sldprt", "sldasm"}, Converted},
    {28, "Step", {"stp", "step"}, Converted},
    {29, "STL", {"stl", "stla", "stlb"}, Converted},
    {30, "BCAD", {}, NoRow},
    {31, "Undefined", {}, NoRow},
    {32, "Unsupported", {}, NoRow},
    // clang-format on
};

class EveryFileType : public testing::TestWithParam<Expected>
{
protected:
    FileType type() const { return static_cast<FileType>(GetParam().number); }
};

TEST_P(EveryFileType, HasItsName)
{
    EXPECT_STREQ(fileTypeName(type()), GetParam().name);
}

TEST_P(EveryFileType, HasItsRow)
{
    const FileTypeRow* row = findRow(type());
    ASSERT_EQ(row != nullptr, GetParam().road != NoRow);
    if (!row)
        return;
    EXPECT_EQ(std::set<std::string>(row->extensions.begin(), row->extensions.end()), GetParam().extensions);
    EXPECT_EQ(row->cadFormat, GetParam().road == Converted);
}

INSTANTIATE_TEST_SUITE_P(Vocabulary, EveryFileType, testing::ValuesIn(vocabulary),
                         [](const auto& tested) { return "Type" + std::to_string(tested.param.number); });

TEST(FileTypes, AreThirtyThreeWithoutGaps)
{
    EXPECT_EQ(vocabulary.size(), 33u);
    EXPECT_EQ(static_cast<int>(Unsupported), 32);
}

TEST(FileTypes, EnumeratorsBearTheirNumbers)
{
    EXPECT_EQ(static_cast<int>(Python), 8);
    EXPECT_EQ(static_cast<int>(ThreeDStage), 9);
    EXPECT_EQ(static_cast<int>(ACIS), 12);
    EXPECT_EQ(static_cast<int>(JT), 19);
    EXPECT_EQ(static_cast<int>(SolidEdge), 26);
    EXPECT_EQ(static_cast<int>(SolidWorks), 27);
    EXPECT_EQ(static_cast<int>(STL), 29);
    EXPECT_EQ(static_cast<int>(Undefined), 31);
}

TEST(FileTypes, AnythingElseIsUndefinedInLowerCase)
{
    EXPECT_STREQ(fileTypeName(static_cast<FileType>(33)), "undefined");
    EXPECT_STREQ(fileTypeName(static_cast<FileType>(-1)), "undefined");
    EXPECT_STREQ(fileTypeName(static_cast<FileType>(0x7FFFFFFF)), "undefined");
    EXPECT_STREQ(fileTypeName(static_cast<FileType>(-0x7FFFFFFF - 1)), "undefined");
    EXPECT_STREQ(fileTypeName(Undefined), "Undefined");
}

TEST(FileTypes, TheTableHasThirtyRowsAndGrowsByNoQuestion)
{
    EXPECT_EQ(extensionTable().size(), 30u);
    EXPECT_EQ(findRow(BCAD), nullptr);
    EXPECT_EQ(findRow(Undefined), nullptr);
    EXPECT_EQ(findRow(Unsupported), nullptr);
    EXPECT_EQ(findRow(static_cast<FileType>(77)), nullptr);
    EXPECT_EQ(extensionTable().size(), 30u);
}

TEST(FileTypes, ConvertedFormatsAreThoseFromTwelveToTwentyNine)
{
    for (const auto& [type, row] : extensionTable())
        EXPECT_EQ(row.cadFormat, type >= 12 && type <= 29) << fileTypeName(type);
}

TEST(FileTypes, TwoExtensionsStandInTwoRows)
{
    std::set<std::string> seen, repeated;
    for (const auto& [type, row] : extensionTable())
        for (const std::string& extension : row.extensions)
            if (!seen.insert(extension).second)
                repeated.insert(extension);
    EXPECT_EQ(repeated, (std::set<std::string>{"asm", "prt"}));
}

TEST(FileTypes, ElevenExtensionsCanBeAssemblies)
{
    EXPECT_THAT(assemblyExtensions(), UnorderedElementsAre("catproduct", "model", "mdl", "session", "asm", "sldasm",
                                                           "dgn", "jt", "stp", "step", "g"));
}

TEST(FileTypes, TwoFormatsCanContainMixedAssemblies)
{
    EXPECT_THAT(mixedAssemblyTypes(), UnorderedElementsAre(SketchUp, Parasolid));
}

TEST(JobStates, BearTheirNumbers)
{
    EXPECT_EQ(static_cast<int>(JobSucceeded), 0);
    EXPECT_EQ(static_cast<int>(JobFailed), 1);
    EXPECT_EQ(static_cast<int>(JobPartial), 3);
    EXPECT_EQ(static_cast<int>(JobRunning), 4);
    EXPECT_EQ(sizeof(JobState), 4u);
}

TEST(JobStates, ChildConversionsHavePriorityTwo)
{
    EXPECT_EQ(static_cast<int>(ChildPriority), 2);
}

} // namespace
