#include "ptx/readers/step/p21/Scan.h"

#include "tests/ptx/readers/step/p21/RecordText.h"

#include <gmock/gmock.h>

using namespace ptx::step::p21;
using namespace ptxtest;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

/// A text and what was found in it.
struct Scanned {
    explicit Scanned(std::string itsText) : text(std::move(itsText)), records(scan(text, 1)) {}

    std::vector<std::string> entities() const { return entityTexts(records); }
    std::vector<std::string> damages() const { return damageTexts(text, records); }

    std::string text;
    Records records;
};

Scanned data(const std::string& text)
{
    return Scanned(fileWith(text));
}

std::vector<Kind> kindsOf(const Scanned& scanned)
{
    std::vector<Kind> kinds;
    for (const Parameter& parameter : scanned.records.pieces.back().parameters)
        kinds.push_back(parameter.kind);
    return kinds;
}

} // namespace

TEST(Scan, FindsEntitiesWithTheirTypesAndParameters)
{
    const Scanned scanned = data("#12=POINT('a',1.5,#7);\n #7 = B ( ) ;");
    EXPECT_THAT(scanned.entities(), ElementsAre("#12=POINT('a',1.5,#7)", "#7=B()"));
    EXPECT_THAT(scanned.damages(), IsEmpty());
    EXPECT_TRUE(scanned.records.isComplete);
}

TEST(Scan, TellsTheKindsOfParametersApart)
{
    EXPECT_THAT(kindsOf(data("#1=A(12,-3,+4,1.,-1.5E-3,.5,2E5,'t',.T.,\"0F\",$,*,#9);")),
                ElementsAre(Kind::Integer, Kind::Integer, Kind::Integer, Kind::Real, Kind::Real, Kind::Real, Kind::Real,
                            Kind::Text, Kind::Enumeration, Kind::Binary, Kind::Omitted, Kind::Derived,
                            Kind::Reference));
}

TEST(Scan, WritesListsBeforeWhatHoldsThem)
{
    const Scanned scanned = data("#1=A((1,(2,3)),LENGTH_MEASURE(4.),());");
    EXPECT_THAT(scanned.entities(), ElementsAre("#1=A((1,(2,3)),LENGTH_MEASURE(4.),())"));
    const std::vector<Record>& records = scanned.records.pieces.back().records;
    ASSERT_EQ(records.size(), 5U);
    EXPECT_EQ(records[4].role, Role::Entity);
    EXPECT_EQ(records[4].number, 1U);
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(records[i].role, Role::List) << i;
}

TEST(Scan, KeepsTheMembersOfComplexEntitiesInTheirOrder)
{
    EXPECT_THAT(data("#1=(A(1)B((2))C($));#2=D();").entities(), ElementsAre("#1=(A(1)B((2))C($))", "#2=D()"));
}

TEST(Scan, ReadsTheHeader)
{
    EXPECT_THAT(headerTexts(Scanned("ISO-10303-21;HEADER;FILE_DESCRIPTION(('x'),'2;1');FILE_NAME('n');ENDSEC;DATA;"
                                    "ENDSEC;END-ISO-10303-21;")
                                .records),
                ElementsAre("FILE_DESCRIPTION(('x'),'2;1')", "FILE_NAME('n')"));
}

TEST(Scan, TakesNoHeaderBehindData)
{
    const Scanned scanned("ISO-10303-21;HEADER;A();ENDSEC;DATA;#1=B();ENDSEC;\nHEADER;C();ENDSEC;END-ISO-10303-21;");
    EXPECT_THAT(headerTexts(scanned.records), ElementsAre("A()"));
    EXPECT_THAT(scanned.damages(), testing::Contains("line 2: something else stands where a section should begin"));
}

TEST(Scan, LeavesStringsAsTheyAre)
{
    const char* const strings = "'it''s',';#2=B();','''','\\X2\\00E4\\X0\\\\S\\d','\xC3\xA4','\xE4',' /* no */ ',''";
    EXPECT_THAT(data(std::string("#1=A(") + strings + ");").entities(),
                ElementsAre(std::string("#1=A(") + strings + ")"));
}

TEST(Scan, PassesOverCommentsAndBlanksAnywhere)
{
    const Scanned scanned = data("/* #5=X(); */#1/**/=/*'*/A/**/(/* ) */1/**/,\r\n\t(/**/)/***/)/*;*/;/* end\n*/");
    EXPECT_THAT(scanned.entities(), ElementsAre("#1=A(1,())"));
    EXPECT_THAT(scanned.damages(), IsEmpty());
}

TEST(Scan, ReadsEveryKindOfLineEnd)
{
    EXPECT_THAT(data("#1=A(\r\n1);\r\n#2=B(\r2);\r#3=C(\n3);").entities(),
                ElementsAre("#1=A(1)", "#2=B(2)", "#3=C(3)"));
}

TEST(Scan, ReadsSeveralDataSectionsAndPassesOverTheOnesOfLaterEditions)
{
    const Scanned scanned("\xEF\xBB\xBFISO-10303-21;HEADER;FILE_NAME('a');ENDSEC;\n"
                          "ANCHOR;<x>=#1;ENDSEC;REFERENCE;#9=<y;z>;ENDSEC;\n"
                          "DATA('one',('S'));#1=A();ENDSEC;DATA;#2=B();ENDSEC;\n"
                          "END-ISO-10303-21;SIGNATURE;#3=C();ENDSEC;");
    EXPECT_THAT(scanned.entities(), ElementsAre("#1=A()", "#2=B()"));
    EXPECT_THAT(scanned.damages(), IsEmpty());
}

TEST(Scan, TakesWhatIsInTheScopeOfAnEntityAsItTakesTheRest)
{
    const Scanned scanned =
        data("#1=&SCOPE\n#2=A();\n#3=&SCOPE #4=B();ENDSCOPE C(#4);\nENDSCOPE /#2, #3/ D(#2);#5=E();");
    EXPECT_THAT(scanned.entities(), ElementsAre("#2=A()", "#4=B()", "#3=C(#4)", "#1=D(#2)", "#5=E()"));
    EXPECT_THAT(scanned.damages(), IsEmpty());
    EXPECT_THAT(data("#1=&SCOPE\n#2=A();").damages(), ElementsAre("#1 in line 6: its scope does not end"));
}

TEST(Scan, EndsWithTheText)
{
    EXPECT_TRUE(Scanned(fileWith("#1=A();") + "trailing #2=B(); bytes").damages().empty());
    EXPECT_FALSE(Scanned("ISO-10303-21;HEADER;ENDSEC;DATA;#1=A();ENDSEC;").records.isComplete);
    EXPECT_FALSE(Scanned("").records.isComplete);
}

TEST(Scan, LeavesOutRecordsThatCannotBeReadWithNumberAndLine)
{
    const Scanned scanned = data("#1=A(1);\n#2=B(1,,2);\n#3=C('x' y);\n#4=(D();\n#5=E(#0);\n#6=F(1);");
    EXPECT_THAT(scanned.entities(), ElementsAre("#1=A(1)", "#6=F(1)"));
    EXPECT_THAT(scanned.damages(),
                ElementsAre("#2 in line 5: a parameter is missing or of no known kind",
                            "#3 in line 6: a comma or a closing bracket is missing", "#4 in line 7: a type is missing",
                            "#5 in line 8: a reference has no number that can be counted with"));
}

TEST(Scan, GoesOnBehindWhatIsMissing)
{
    EXPECT_THAT(data("#1=A('x);\n#2=B(1);\n#3=C('y');\n#4=D('z');").entities(),
                ElementsAre("#2=B(1)", "#3=C('y')", "#4=D('z')"));
    EXPECT_THAT(data("#1=A(1)\n#2=B(2);#3=C(").entities(), ElementsAre("#2=B(2)"));
    EXPECT_THAT(data("#1=A((1);#2=B(2);").entities(), ElementsAre("#2=B(2)"));
    EXPECT_THAT(data("what\n#2=B(2);").entities(), ElementsAre("#2=B(2)"));
    EXPECT_THAT(Scanned("ISO-10303-21;HEADER;FILE_NAME(x);ENDSEC;#1=A();END-ISO-10303-21;").entities(),
                ElementsAre("#1=A()"));
}

TEST(Scan, RefusesNumbersThatCannotBeCountedWith)
{
    EXPECT_THAT(data("#0=A();\n#2147483647=B();\n#2147483648=C();\n#99999999999999999999=D();").entities(),
                ElementsAre("#2147483647=B()"));
}

TEST(Scan, TakesListsOfManyLevelsAndRefusesThoseOfTooMany)
{
    const auto nested = [](std::size_t depth) {
        return "#1=A(" + std::string(depth, '(') + std::string(depth, ')') + ");";
    };
    EXPECT_EQ(data(nested(900)).entities().size(), 1U);
    EXPECT_THAT(data(nested(100000)).damages(), ElementsAre("#1 in line 4: its lists are nested too deeply"));
}

TEST(Scan, TakesBackWhatItFoundOfARecordThatCannotBeRead)
{
    const Scanned scanned = data("#1=A((1),(2),3;\n#2=B(4);");
    EXPECT_EQ(scanned.records.pieces.back().records.size(), 1U);
    EXPECT_EQ(scanned.records.pieces.back().parameters.size(), 1U);
}
