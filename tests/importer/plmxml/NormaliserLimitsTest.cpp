// Documents that somebody made to do harm: each comes to an end soon, with an answer.

#include "cad/xml/CADDocument.h"
#include "tests/importer/plmxml/NormaliserTest.h"

#include <QElapsedTimer>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace
{

class NormaliserLimitsTest : public NormaliserTest
{
protected:
    static std::string repeated(const std::string& text, std::size_t count)
    {
        std::string all;
        for (std::size_t i = 0; i < count; ++i)
            all += text;
        return all;
    }

    /// The document that is given to the loader is one that it can read.
    void expectReadable()
    {
        ASSERT_EQ(m_result.way, Way::AsText);
        make("text.plmxml", QByteArray::fromStdString(m_result.text));
        HB::XML::CAD::CADDocument document;
        EXPECT_NO_THROW(document.load(path("text.plmxml").toStdString()));
        EXPECT_EQ(document.getProductDefCount(), 1u);
    }
};

TEST_F(NormaliserLimitsTest, AMillionReferencesToOneElementAreAsManyPlaces)
{
    normalise("<ProductView rootRefs='a'><Occurrence id='a' name='A' occurrenceRefs='" + repeated("b ", 1000000) +
              "'/><Occurrence id='b' name='B'/></ProductView>");
    EXPECT_THAT(places(), ElementsAre("A 0 0 0", "B 0 0 0"));
    EXPECT_EQ(m_result.facts.placedTwice, 999999u);
    normalise("<InstanceGraph rootRefs='" + repeated("a ", 1000000) + "'><Instance id='a'/></InstanceGraph>");
    EXPECT_EQ(m_result.facts.roots, 1000000u);
}

TEST_F(NormaliserLimitsTest, LongIdsAreExchanged)
{
    const std::string id(1 << 20, 'x');
    normalise("<ProductView rootRefs='" + id + "'><Occurrence name='A' id='" + id + "'/></ProductView>");
    EXPECT_THAT(places(), ElementsAre("A 0 0 0"));
    EXPECT_LT(m_result.text.size(), 2000u);
    expectReadable();
}

TEST_F(NormaliserLimitsTest, ManyAreAsLinearAsFew)
{
    const auto secondsFor = [this](int count) {
        std::string occurrences, lists;
        for (int i = 1; i < count; ++i) {
            lists += " o" + std::to_string(i);
            occurrences +=
                "<Occurrence id='o" + std::to_string(i) + "' parentRef='#o0'>" + at("1 2 3") + "</Occurrence>";
        }
        const std::string content = "<ProductView rootRefs='o0'><Occurrence id='o0' occurrenceRefs='" + lists + "'/>" +
                                    occurrences + "</ProductView>";
        QElapsedTimer timer;
        timer.start();
        normalise(content);
        return double(timer.nsecsElapsed()) / 1e9;
    };
    secondsFor(1000);
    const double few = secondsFor(20000);
    const double many = secondsFor(80000);
    EXPECT_LT(many, 12 * few) << few << " s and " << many << " s";
}

TEST_F(NormaliserLimitsTest, DeepNestingIsNoRecursion)
{
    constexpr std::size_t depth = 100000;
    normalise("<ProductView>" + repeated("<Occurrence>", depth) + repeated("</Occurrence>", depth) + "</ProductView>");
    EXPECT_TRUE(m_result.facts.isCut);
    normalise(repeated("<Group>", depth) + repeated("</Group>", depth));
    EXPECT_EQ(m_result.way, Way::Refuse);
    normalise("<Part id='p'><Representation>" + repeated("<CompoundRep>", depth) + repeated("</CompoundRep>", depth) +
              "</Representation></Part>");
    EXPECT_EQ(m_result.way, Way::AsText);
}

TEST_F(NormaliserLimitsTest, EntitiesAreNotRead)
{
    make("secret", "TOP SECRET");
    make("car.plmxml", "<!DOCTYPE PLMXML [<!ENTITY a SYSTEM 'secret'><!ENTITY b '&a;&a;'>]><PLMXML><Instance "
                       "id='i' name='&a;&b;'/></PLMXML>");
    m_result = importer::plmxml::normalise(path("car.plmxml"), {{}, {}, true});
    EXPECT_THAT(places(), ElementsAre("&a;&b; 0 0 0"));
    EXPECT_THAT(m_result.text, Not(HasSubstr("SECRET")));
}

TEST_F(NormaliserLimitsTest, PathsThatLeadAwayAreThoseOfRegularFilesOrNone)
{
    for (const char* location :
         {"/dev/zero", "file:///dev/zero", "../../../../../../../../../dev/zero", "/proc/self/mem/x"})
        EXPECT_THAT(
            normalise(std::string("<Part id='p'><Representation format='JT' location='") + location + "'/></Part>")
                .text,
            Not(HasSubstr("location=\"/dev/zero\"")))
            << location;
}

TEST_F(NormaliserLimitsTest, NamesOfAnyBytesAreWrittenAsText)
{
    normalise("<Instance id='a b' name='&lt;&amp;&quot;&#1;\xC3 \xF0\x9F'/>");
    expectReadable();
}

TEST_F(NormaliserLimitsTest, WordsAmongTheNumbersOfAMaterialAreLeftOut)
{
    normalise("<ProductDef><InstanceGraph rootRefs='a'><Instance id='a' materialRef='m' partRef='p'/></InstanceGraph>"
              "</ProductDef><Part id='p'/><Material id='m' diffuse='0.25  +1 0.5 ' ambient='1 red 1' alpha='' "
              "shininess='96,5' specular='1e-400 1e400 nan'/>");
    expectReadable();
    EXPECT_THAT(m_result.text, HasSubstr("<Material id=\"zn.m0\" diffuse=\"0.25 1 0.5\"/>"));
    EXPECT_EQ(m_result.facts.badMaterialNumbers, 4u);
}

TEST_F(NormaliserLimitsTest, NumbersOfAnySizeAreWrittenAsNumbers)
{
    normalise("<Instance id='a'><Transform>1e300 0 0 0 0 1 0 0 0 0 1e-300 0 -1e308 1e39 0 1</Transform></Instance>");
    expectReadable();
    EXPECT_THAT(m_result.text, Not(HasSubstr("inf")));
}

} // namespace
