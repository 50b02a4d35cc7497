// The records are the same whatever the number of threads, in whole and in damaged texts.

#include "ptx/readers/step/p21/Scan.h"

#include "tests/ptx/readers/step/p21/RecordText.h"
#include "tests/support/TextMutations.h"

#include <gtest/gtest.h>

using namespace ptx::step::p21;
using namespace ptxtest;

namespace
{

constexpr std::uint64_t SmallShare = 256;

/// A record of one of several kinds, with what looks like the start of another in strings and comments.
std::string record(Random& random, int number)
{
    const std::string name = "#" + std::to_string(number) + "=";
    switch (pick(random, 7)) {
    case 0:
        return name + "A('text\n#5=B();\n#6=C();',$,*);\n";
    case 1:
        return "/* comment;\n#7=D();\n */ " + name + "E(1.5,(2,(3)),.T.);\n";
    case 2:
        return name + "(A()B(#" + std::to_string(number + 1) + ")C('it''s'));\n";
    case 3:
        return name + "CARTESIAN_POINT('',(1.,2.,-3.E-5));\n";
    case 4:
        return name + "LIST((" + std::string(pick(random, 2000) + 1, '1') + "));\r\n";
    case 5:
        return name + (pick(random, 2) == 0 ? "&SCOPE\n" : "A();\nENDSCOPE /#1/ H();\n");
    default:
        return pick(random, 50) == 0 ? "ENDSEC;\nDATA;\n" + name + "F();\n" : name + "G(#1,#2,#3);\n";
    }
}

std::string madeText(Random& random, std::size_t size)
{
    std::string text;
    for (int number = 1; text.size() < size; ++number)
        text += record(random, number);
    return fileWith(text);
}

void expectSameOnAnyNumberOfThreads(const std::string& text)
{
    const std::string one = allRecords(scan(text, 1));
    for (const unsigned threads : {2U, 3U, 5U, 8U})
        ASSERT_EQ(allRecords(scan(text, threads, SmallShare)), one) << threads << " threads";
}

} // namespace

TEST(ScanThreads, WholeTextsGiveTheSameRecords)
{
    Random random(1);
    const std::string text = madeText(random, 1 << 18);
    EXPECT_GT(scan(text, 8, SmallShare).pieces.size(), 8U);
    expectSameOnAnyNumberOfThreads(text);
}

TEST(ScanThreads, DamagedTextsGiveTheSameRecords)
{
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        Random random(seed);
        std::string text = madeText(random, 1 << 15);
        mutate(random, text);
        expectSameOnAnyNumberOfThreads(text);
    }
}

TEST(ScanThreads, AGuessWithinAStringOrACommentIsTakenBack)
{
    const std::string inner(std::size_t{1} << 14, 'x');
    std::string lines;
    while (lines.size() < inner.size())
        lines += "\n#9=NOT();";
    const std::string string = fileWith("#1=A('" + lines + "');\n#2=B();");
    EXPECT_EQ(entityTexts(scan(string, 4, SmallShare)).size(), 2U);
    const std::string comment = fileWith("#1=A();/*" + lines + "*/\n#2=B();");
    EXPECT_EQ(entityTexts(scan(comment, 4, SmallShare)).size(), 2U);
    const std::string trailing = fileWith("#1=A();") + lines;
    EXPECT_EQ(entityTexts(scan(trailing, 4, SmallShare)).size(), 1U);
}

TEST(ScanThreads, AHeaderBehindRecordsThatStandFirstIsNoneOnAnyNumberOfThreads)
{
    std::string text = "#1=A();\nENDSEC;\nHEADER;\nFILE_NAME('b');\nENDSEC;\nDATA;\n";
    for (int number = 2; text.size() < 8 * SmallShare; ++number)
        text += "#" + std::to_string(number) + "=C('x');\nENDSEC;\nHEADER;\nFILE_NAME('d');\nENDSEC;\nDATA;\n";
    EXPECT_TRUE(headerTexts(scan(text, 1)).empty());
    expectSameOnAnyNumberOfThreads(text);
}
