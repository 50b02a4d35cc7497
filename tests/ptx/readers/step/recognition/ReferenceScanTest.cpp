#include "ptx/readers/step/recognition/ReferenceScan.h"
#include "ptx/readers/ReferenceGraph.h"
#include "tests/roads/ptxconvert/TempFolder.h"

#include <gmock/gmock.h>

#include <filesystem>

using namespace ptx::readers;
using namespace ptx::step::recognition;
using ptxtest::TempFolder;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(ReferenceScan, NamesEveryNameOfADocumentOnce)
{
    EXPECT_THAT(scanReferences("#1=DOCUMENT_FILE ( 'part.stp' , 'Part One','',#2,'',$);\n"
                               "#3=APPLIED_DOCUMENT_REFERENCE(#1,'',(#9));\n"
                               "#4=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('dir/part.stp',#5,#6,(#1));\n"
                               "#7=DOCUMENT_FILE('part.stp',' ','',#2,'',$);\n"),
                ElementsAre("dir/part.stp", "part.stp", "Part One"));
}

TEST(ReferenceScan, TakesDocumentsOfTheOlderWay)
{
    EXPECT_THAT(scanReferences("#1=DOCUMENT('','part.stp','',#2);"
                               "#3=PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS('','',#4,#5,(#1));"),
                ElementsAre("part.stp"));
}

TEST(ReferenceScan, DocumentsThatNobodyAppliesAreNoReferences)
{
    EXPECT_THAT(scanReferences("#1=DOCUMENT_FILE('part.stp','','',#2,'',$);"), IsEmpty());
    EXPECT_THAT(scanReferences("#1=APPLIED_DOCUMENT_REFERENCE(#2,'',(#9));#2=DOCUMENT('a','b','',#3);"), IsEmpty());
}

TEST(ReferenceScan, TextThatEndsAnywhereIsHarmless)
{
    const std::string whole = "#3=APPLIED_DOCUMENT_REFERENCE(#1,'',(#9));#1=DOCUMENT_FILE('a\\X2\\00C4\\X0\\','b'";
    for (std::size_t length = 0; length <= whole.size(); ++length)
        EXPECT_LE(scanReferences(whole.substr(0, length)).size(), 2u) << length;
}

TEST(ReferenceScan, FindsTheFilesThatLeadBack)
{
    const auto text = [](const std::string& name) {
        return "#1=APPLIED_DOCUMENT_REFERENCE(#2,'',(#9));#2=DOCUMENT_FILE('" + name + "','','',#3,'',$);";
    };
    TempFolder folder;
    const std::string top = folder.write("top.stp", text("a.stp") + text("c.stp"));
    const std::string a = folder.write("a.stp", text("b.stp"));
    const std::string b = folder.write("b.stp", text("Top.STP"));
    folder.write("c.stp", text("c.stp") + text("gone.stp"));
    EXPECT_THAT(filesLeadingBackTo(top, referencesOf), testing::UnorderedElementsAre(top, a, b));
    EXPECT_THAT(filesLeadingBackTo(folder.file("c.stp"), referencesOf), ElementsAre(folder.file("c.stp")));
}
