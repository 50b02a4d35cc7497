#include "ptx/readers/step/RecordLibrary.h"

#include "tests/ptx/readers/step/ReadModel.h"
#include "tests/roads/ptxconvert/TempFolder.h"
#include "tests/support/StepText.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>

using namespace ptxtest;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace
{

std::string boxText()
{
    StepText text;
    StepProduct part = text.product("Bräcket");
    text.box(part, {1, 2, 3}, {5, 7, 9});
    text.color(part.solid, {0.25, 0.5, 0.75});
    return text.text();
}

std::string withData(const std::string& data)
{
    return "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\n"
           "FILE_NAME('n','2026-01-01T00:00:00',(''),(''),'','','');\nFILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\nENDSEC;\n"
           "DATA;\n" +
           data + "\nENDSEC;\nEND-ISO-10303-21;\n";
}

void expectSame(const ReadModel& ours, const ReadModel& parsers)
{
    EXPECT_EQ(ours.isRead, parsers.isRead);
    EXPECT_EQ(ours.numbers, parsers.numbers);
    EXPECT_EQ(ours.reports, parsers.reports);
    EXPECT_TRUE(ours.text == parsers.text); // too long to be shown
}

/// Every file of the corpus but the ones that OCCT crashes on.
std::vector<std::string> corpusFiles()
{
    std::vector<std::string> files;
    const char* corpus = std::getenv("ZN_CORPUS");
    std::error_code missing;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(corpus ? corpus : "", missing)) {
        const std::string ending = entry.path().extension().string();
        if ((ending == ".stp" || ending == ".step") && entry.path().filename() != "Ad050.stp")
            files.push_back(entry.path().string());
    }
    return files;
}

} // namespace

TEST(RecordLibrary, GivesTheEntitiesOfTheParser)
{
    const TempFolder folder;
    const std::string path = folder.write("box.stp", boxText());
    const ReadModel ours = readByRecords(path);
    expectSame(ours, readByParser(path));
    EXPECT_GT(ours.numbers.size(), 100U);
    EXPECT_THAT(ours.text, HasSubstr("CARTESIAN_POINT('',(5.,7.,9.))"));
}

TEST(RecordLibrary, GivesTheSameReports)
{
    const TempFolder folder;
    const std::string path = folder.write(
        "odd.stp", withData("#1=CARTESIAN_POINT('',(1.,2.),3);\n#2=DIRECTION('',(#1));\n#3=VERTEX_POINT('',#99);\n"
                            "#4=UNKNOWN_THING((1,(2,#1)),LENGTH_MEASURE(1.),'a',.T.,\"0F\",*,$,#98);\n"
                            "#5=(NAMED_UNIT(*)LENGTH_UNIT()SI_UNIT(.MILLI. ,.METRE.));\n"
                            "#6=(SI_UNIT($,.METRE.)LENGTH_UNIT()NAMED_UNIT(*));\n#7=(FOO(#1)BAR((#2,#3)));\n"
                            "#8=UNKNOWN_THING((1),#1);"));
    const ReadModel ours = readByRecords(path);
    expectSame(ours, readByParser(path));
    EXPECT_GE(ours.reports.size(), 4U);
    EXPECT_THAT(ours.numbers, ElementsAre(1, 2, 3, 4, 5, 6, 7, 8));
}

TEST(RecordLibrary, LeavesTextsToTheParserThatItAloneUnderstands)
{
    const TempFolder folder;
    // A quote that is not doubled, and a number with two points.
    const std::string quote = folder.write("quote.stp", withData("#1=CARTESIAN_POINT('5' long',(1.,2.,3.));"));
    const std::string points = folder.write("points.stp", withData("#1=CARTESIAN_POINT('',(1.0.,2.,3.));"));
    for (const std::string& path : {quote, points}) {
        std::string log;
        expectSame(readByRecords(path, 2, &log), readByParser(path));
        EXPECT_THAT(log, HasSubstr("the text was read by OCCT's own parser, because #1 in line 8: "));
        EXPECT_THAT(log, Not(HasSubstr("Warning")));
    }
}

TEST(RecordLibrary, ReadsTheRestOfADamagedTextAndNamesWhatIsLeftOut)
{
    const TempFolder folder;
    const ReadModel ours = readByRecords(
        folder.write("damaged.stp",
                     withData("#1=CARTESIAN_POINT('',(1.,2.,3.));\n#2=VERTEX_POINT('',#1;\n#3=VERTEX_POINT('',#1);")));
    EXPECT_THAT(ours.numbers, ElementsAre(1, 3));
    EXPECT_THAT(ours.losses, ElementsAre("#2 in line 9: a comma or a closing bracket is missing"));
}

TEST(RecordLibrary, ReadsATextThatIsCutOff)
{
    const TempFolder folder;
    const std::string whole = boxText();
    const ReadModel ours = readByRecords(folder.write("cut.stp", whole.substr(0, whole.size() / 2)));
    EXPECT_TRUE(ours.isRead);
    EXPECT_GT(ours.numbers.size(), 40U);
    EXPECT_THAT(ours.losses, Contains("the text ends without END-ISO-10303-21"));
}

TEST(RecordLibrary, KeepsTheFirstOfSeveralWithOneNumber)
{
    const TempFolder folder;
    const std::string path =
        folder.write("twice.stp", withData("#1=CARTESIAN_POINT('first',(1.,2.,3.));\n#2=VERTEX_POINT('',#1);\n"
                                           "#1=(A()B());\n#3=oops;"));
    const ReadModel ours = readByRecords(path);
    EXPECT_THAT(ours.numbers, ElementsAre(1, 2));
    EXPECT_THAT(ours.text, HasSubstr("'first'"));
    EXPECT_THAT(ours.losses, Contains("1 records have numbers that others have too"));
}

TEST(RecordLibrary, ReadsEntitiesWithScopes)
{
    const TempFolder folder;
    const ReadModel ours = readByRecords(folder.write(
        "scope.stp", withData("#5=&SCOPE\n#2=CARTESIAN_POINT('',(1.,2.,3.));\nENDSCOPE VERTEX_POINT('',#2);\n"
                              "#7=VERTEX_LOOP('',#5);")));
    EXPECT_THAT(ours.numbers, ElementsAre(2, 5, 7));
    EXPECT_THAT(ours.text, HasSubstr("VERTEX_LOOP('',#2)"));
}

TEST(RecordLibrary, FailsWhereNothingIsLeft)
{
    const TempFolder folder;
    EXPECT_FALSE(readByRecords(folder.write("none.stp", "ISO-10303-21;\nHEADER;\nnothing")).isRead);
    EXPECT_FALSE(readByRecords(folder.file("missing.stp")).isRead);
}

TEST(RecordLibrary, LeavesLongListsOfNumbersOutOfEntitiesThatOcctDoesNotKnow)
{
    std::string numbers = "1";
    for (int i = 0; i < 1200; ++i)
        numbers += ",(1,2)";
    const TempFolder folder;
    const std::string path =
        folder.write("long.stp", withData("#1=UNKNOWN_THING('kept',(" + numbers + "),(7,8));\n#2=(MORE((" + numbers +
                                          "))THINGS(9));\n#3=UNKNOWN_THING((" + numbers + ",#1),10);"));
    const ReadModel ours = readByRecords(path);
    EXPECT_EQ(readByParser(path).longLists, 3);
    EXPECT_EQ(ours.longLists, 0);
    EXPECT_THAT(ours.numbers, ElementsAre(1, 2, 3));
    EXPECT_THAT(ours.text, HasSubstr("'kept'"));
    EXPECT_THAT(ours.text, HasSubstr("1:7"));
}

TEST(RecordLibrary, LongListsOfUnknownEntitiesKeepTheirReferences)
{
    std::string names = "#1";
    for (int i = 2; i <= 1300; ++i)
        names += ",(#" + std::to_string(i) + ")";
    std::string points;
    for (int i = 1; i <= 1300; ++i)
        points += "#" + std::to_string(i) + "=CARTESIAN_POINT('',(1.,2.,3.));\n";
    const TempFolder folder;
    const ReadModel ours =
        readByRecords(folder.write("names.stp", withData(points + "#9999=UNKNOWN_THING('',(" + names + "),#1301);")));
    EXPECT_EQ(ours.numbers.size(), 1301U);
    EXPECT_EQ(ours.longLists, 0);
    EXPECT_THAT(ours.text, HasSubstr("#513"));
    EXPECT_THAT(ours.text, HasSubstr("#1300"));
    EXPECT_THAT(ours.reports, Contains(HasSubstr("A reference to another entity is unresolved")));
}

TEST(RecordLibrary, CorpusGivesTheEntitiesOfTheParser)
{
    const std::vector<std::string> files = corpusFiles();
    if (files.empty())
        GTEST_SKIP() << "ZN_CORPUS names no folder with STEP files";
    for (const std::string& path : files) {
        SCOPED_TRACE(path);
        expectSame(readByRecords(path), readByParser(path));
    }
}
