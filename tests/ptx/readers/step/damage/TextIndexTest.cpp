#include "ptx/readers/step/damage/TextIndex.h"

#include "tests/roads/ptxconvert/TempFolder.h"

#include <gmock/gmock.h>

using ptx::step::damage::TextIndex;
using ptxtest::TempFolder;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

class StepTextIndex : public testing::Test
{
protected:
    TextIndex indexOf(const std::string& text) const { return TextIndex(m_folder.write("some.stp", text)); }

    TempFolder m_folder;
};

} // namespace

TEST_F(StepTextIndex, TellsLinesAndTypes)
{
    const TextIndex index = indexOf("DATA;\n#1=POINT(1.);\n\n#22 =\n PLANE('',#1);#3=(A() B(#1));\n");
    EXPECT_EQ(index.lineOf(1), 2);
    EXPECT_EQ(index.lineOf(22), 4);
    EXPECT_EQ(index.lineOf(3), 5);
    EXPECT_EQ(index.lineOf(4), 0);
    EXPECT_EQ(index.typeOf(1), "POINT");
    EXPECT_EQ(index.typeOf(22), "PLANE");
    EXPECT_EQ(index.typeOf(3), "(");
    EXPECT_EQ(index.typeOf(4), "");
}

TEST_F(StepTextIndex, TellsWhoRefersToAnEntity)
{
    const TextIndex index = indexOf("#1=A();\n#2=B(#1,(#3,#1));\n#3=C(#1);\n");
    EXPECT_THAT(index.referringTo(1), ElementsAre(2, 2, 3));
    EXPECT_THAT(index.referringTo(3), ElementsAre(2));
    EXPECT_THAT(index.referringTo(2), IsEmpty());
    EXPECT_THAT(index.referringTo(9), IsEmpty());
}

TEST_F(StepTextIndex, StringsAndCommentsAreNoEntities)
{
    const TextIndex index = indexOf("#1=A('#5=B;\n','it''s #6', #2);/* #7=C(#2);\n'*/\n#2=D(\"#8\");\n");
    EXPECT_EQ(index.lineOf(2), 4);
    EXPECT_EQ(index.lineOf(5), 0);
    EXPECT_EQ(index.lineOf(7), 0);
    EXPECT_THAT(index.referringTo(2), ElementsAre(1));
    EXPECT_THAT(index.referringTo(6), IsEmpty());
    EXPECT_THAT(index.referringTo(8), IsEmpty());
}

TEST_F(StepTextIndex, AStringThatDoesNotEndDoesNotHideTheRecordsBehindIt)
{
    const TextIndex index = indexOf("#1=A('open);\n#2=B('x',#1);\n#3=C('y',#2);\n");
    EXPECT_EQ(index.lineOf(2), 2);
    EXPECT_EQ(index.lineOf(3), 3);
    EXPECT_THAT(index.referringTo(1), ElementsAre(2));
    EXPECT_THAT(index.referringTo(2), ElementsAre(3));
}

TEST_F(StepTextIndex, TextThatEndsInTheMiddleIsTakenAsFarAsItGoes)
{
    EXPECT_EQ(indexOf("#1=A();\n#2=B('never closed #3=").lineOf(2), 2);
    EXPECT_EQ(indexOf("#1=A();\n/* #2=B();").lineOf(2), 0);
    EXPECT_EQ(indexOf("#1=A();\n#").lineOf(1), 1);
    EXPECT_EQ(indexOf("#1=").lineOf(1), 0);
    EXPECT_EQ(TextIndex(m_folder.file("no such file")).lineOf(1), 0);
}
