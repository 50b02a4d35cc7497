// What exporters write in ways of their own, one habit after the other.

#include "tests/importer/plmxml/NormaliserTest.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace
{

class NormaliserExportsTest : public NormaliserTest
{
protected:
    /// Of a whole text.
    const importer::plmxml::NormalisedDocument& normaliseText(const QByteArray& text)
    {
        make("car.plmxml", text);
        m_result = importer::plmxml::normalise(path("car.plmxml"), {{}, {}, true});
        return m_result;
    }
    static std::string graph(const std::string& instances, const std::string& more = {}, const char* roots = "a")
    {
        return std::string("<ProductDef><InstanceGraph rootRefs='") + roots + "'>" + instances + "</InstanceGraph>" +
               more + "</ProductDef>";
    }
    static std::string view(const std::string& occurrences)
    {
        return "<ProductView rootRefs='o'>" + occurrences + "</ProductView>";
    }
};

TEST_F(NormaliserExportsTest, NamespacesVersionsAndDatesDoNotMatter)
{
    const QByteArray content = "><Instance id='1' name='A'/></PLMXML>";
    for (const char* root :
         {"<PLMXML xmlns='http://www.plmxml.org/Schemas/PLMXMLSchema' schemaVersion='4' author='a' date='2005-01-01'",
          "<PLMXML", "\xEF\xBB\xBF<PLMXML schemaVersion='7'",
          "<PLMXML xmlns='urn:x' xmlns:plm='http://www.plmxml.org/Schemas/PLMXMLSchema' schemaVersion='6.0'"}) {
        normaliseText(root + content);
        EXPECT_THAT(places(), ElementsAre("A 0 0 0")) << root;
    }
}

TEST_F(NormaliserExportsTest, SomeElementsMayHaveAPrefixAndOthersNone)
{
    const QByteArray root = "<PLMXML xmlns:p='http://www.plmxml.org/Schemas/PLMXMLSchema'><ProductDef><InstanceGraph "
                            "rootRefs='a b'><Instance id='a' name='A'/>";
    const QByteArray end = "</InstanceGraph></ProductDef></PLMXML>";
    normaliseText(root + "<p:Instance id='b' name='B'/>" + end);
    EXPECT_EQ(m_result.way, Way::AsText) << "the loader skips elements with a prefix";
    EXPECT_THAT(places(), ElementsAre("A 0 0 0", "B 0 0 0"));
    normaliseText(root + "<Instance id='b' name='B'/>" + end);
    EXPECT_EQ(m_result.way, Way::AsItStands) << "a declaration alone changes nothing";
}

TEST_F(NormaliserExportsTest, LinesMayEndWithTwoCharactersAndListsBeginWithBlanks)
{
    normaliseText("<PLMXML>\r\n<ProductView rootRefs='\r\n o'>\r\n<Occurrence id='o' name='O'\r\n occurrenceRefs='  "
                  "1\r\n\t#2 '/>\r\n<Occurrence id='1' name='A'/>\r\n<Occurrence id='2' name='B'/></ProductView>\r\n"
                  "<Occurrence id='lost'/></PLMXML>");
    EXPECT_THAT(places(), ElementsAre("O 0 0 0", "A 0 0 0", "B 0 0 0"));
    ASSERT_EQ(m_result.facts.unplaced.size(), 1u);
    EXPECT_EQ(m_result.facts.unplaced.front().line, 9);
}

TEST_F(NormaliserExportsTest, WhereTheExporterBeganIsNoRoot)
{
    normalise("<Header traverseRootRefs='#b'/><ProductView><Occurrence id='a' name='A' occurrenceRefs='b'/>"
              "<Occurrence id='b' name='B'/></ProductView>");
    EXPECT_THAT(places(), ElementsAre("A 0 0 0", "B 0 0 0"));
}

TEST_F(NormaliserExportsTest, IdsAndReferencesMayHaveAHashSignOrNone)
{
    const std::string parts = "<Part id='5' name='P' instanceRefs='#b'/><Part id='q' name='Q'/>";
    normalise(graph("<Instance id='a' name='A' partRef='5'/><Instance id='b' name='B' partRef='q'/>", parts, "#a"));
    EXPECT_THAT(places(), ElementsAre("A 0 0 0", "B 0 0 0"));
    normalise("<ProductView rootRefs='#1'><Occurrence id='1' name='A' occurrenceRefs='#2'/>"
              "<Occurrence id='2' name='B' parentRef='1'/></ProductView>");
    EXPECT_THAT(places(), ElementsAre("A 0 0 0", "B 0 0 0"));
    EXPECT_EQ(m_result.facts.danglingCount, 0u);
}

TEST_F(NormaliserExportsTest, ATransformThatStandsInsideAndIsReferredToIsOne)
{
    normalise(view("<Occurrence id='o' name='O' transformRef='t'><Transform id='t'>1 0 0 0 0 1 0 0 0 0 1 0 1.6e-008 -0 "
                   "2.5E+002 1</Transform></Occurrence>"));
    EXPECT_THAT(places(), ElementsAre("O 1.6e-08 0 250"));
    EXPECT_EQ(m_result.facts.badTransforms, 0u);
}

TEST_F(NormaliserExportsTest, LengthsAreMetresWhateverUnitsArePreferred)
{
    normalise("<ProductDef preferredUnits='millimetres'><UserData><UserValue title='__TC-VIS_NO_UNITS' value='false'/>"
              "</UserData><InstanceGraph rootRefs='a'><Instance id='a' name='A' partRef='#p'>" +
              at("2 3 4") + "</Instance></InstanceGraph></ProductDef><Part id='p'/>");
    EXPECT_FALSE(m_result.facts.hasNoUnits);
    EXPECT_THAT(m_result.text, HasSubstr("<Transform>1 0 0 0 0 1 0 0 0 0 1 0 2 3 4 1</Transform>"));
}

TEST_F(NormaliserExportsTest, ALastNumberThatIsNotOneIsNotLeftToTheLoader)
{
    const auto document = [](const char* numbers) {
        return graph("<Instance id='a' name='A'><Transform>1 0 0 0 0 1 0 0 0 0 1 0 " + std::string(numbers) +
                     "</Transform></Instance>");
    };
    EXPECT_EQ(normalise(document("2 4 6 1")).way, Way::AsItStands);
    EXPECT_EQ(normalise(document("2 4 6 1.0")).way, Way::AsItStands);
    EXPECT_EQ(normalise(document("2 4 6 0")).way, Way::AsText);
    EXPECT_THAT(places(), ElementsAre("A 2 4 6"));
    EXPECT_EQ(normalise(document("2 4 6 2")).way, Way::AsText);
    EXPECT_THAT(places(), ElementsAre("A 1 2 3"));
}

TEST_F(NormaliserExportsTest, AQuantityPlacesOnceAndKeepsTheTransform)
{
    normalise(graph("<Instance id='a' name='A' quantity='1'>" + at("1 0 0") + "</Instance><Instance id='b' name='B' " +
                        "quantity='10'/>",
                    {}, "a b"));
    EXPECT_THAT(places(), ElementsAre("A 1 0 0", "B 0 0 0"));
    EXPECT_THAT(m_result.structure.placements[1].tags, ElementsAre("ptx::attribute::quantity=10"));
    normalise(view("<Occurrence id='o' name='O'><UserData><UserValue title='Quantity' value='10'/></UserData>" +
                   at("0 5 0") + "</Occurrence>"));
    EXPECT_THAT(places(), ElementsAre("O 0 5 0"));
    EXPECT_THAT(m_result.structure.placements[0].tags, ElementsAre("ptx::attribute::Quantity=10"));
}

TEST_F(NormaliserExportsTest, NamesMayHaveLineBreaksQuotesAndAnyScript)
{
    normalise(view("<Occurrence id='o' name='&quot;a&lt;b&quot;&#10;\xE6\xBC\xA2'/>"));
    EXPECT_THAT(m_result.structure.placements[0].name, "\"a<b\"\n\xE6\xBC\xA2");
    EXPECT_THAT(m_result.text, HasSubstr("name=\"&quot;a&lt;b&quot; \xE6\xBC\xA2\""));
}

TEST_F(NormaliserExportsTest, APropertyMaySayWhatIsVisible)
{
    const auto said = [this](const char* attribute, const char* property) {
        normalise(view("<Occurrence id='o' name='O' " + std::string(attribute) + "><PropertyGroup><Visibility value='" +
                       property + "'/></PropertyGroup></Occurrence>"));
        return m_result.facts.hiddenLeaves;
    };
    EXPECT_EQ(said("", "false"), 1);
    EXPECT_EQ(said("", "true"), 0);
    EXPECT_EQ(said("visible='true'", "false"), 0) << "the attribute is nearer";
    normalise(graph("<Instance id='a' name='A'/>", "<Occurrence instanceRefs='#a'><PropertyGroup><Visibility "
                                                   "value='0'/></PropertyGroup></Occurrence>"));
    EXPECT_EQ(m_result.way, Way::AsText);
    EXPECT_EQ(m_result.facts.hiddenLeaves, 1);
}

TEST_F(NormaliserExportsTest, RulesAreNotEvaluatedAndConditionsAreCounted)
{
    normalise("<RevisionRule id='r' name='Latest Working'/><ProductView ruleRefs='#r' usage='variant' rootRefs='o'>"
              "<Occurrence id='o' name='O' instanceRefs='#i'/></ProductView><Instance id='i'><VariantCondition/>"
              "</Instance><Effectivity id='e'/><DateEffectivity id='f'/><SerialNumberEffectivity/>");
    EXPECT_THAT(places(), ElementsAre("O 0 0 0"));
    EXPECT_EQ(m_result.facts.conditions, 4u);
    EXPECT_EQ(m_result.facts.danglingCount, 0u);
}

TEST_F(NormaliserExportsTest, ConditionsOfADocumentThatIsLeftAsItIsAreCountedWhereNobodyAsks)
{
    make("a.jt");
    make("car.plmxml",
         QByteArray::fromStdString("<PLMXML>" +
                                   graph("<Instance id='a' partRef='#p'><VariantCondition/></Instance>",
                                         "<Part id='p'><Representation format='JT' location='a.jt'/></Part>") +
                                   "</PLMXML>"));
    m_result = importer::plmxml::normalise(path("car.plmxml"), {});
    EXPECT_EQ(m_result.way, Way::AsItStands);
    EXPECT_EQ(m_result.facts.conditions, 1u);
}

TEST_F(NormaliserExportsTest, BoundsAndPathsOfTheExporterAreNoShapes)
{
    normalise(graph("<Instance id='a' name='A' partRef='#p'/>",
                    "<Part id='p' name='P'><Bound id='b' values='0 0 0 1 1 1'/><UserData type='LocalCopy'><UserValue "
                    "title='LocalCopy' value='C:\\old\\a.jt'/></UserData></Part>"));
    EXPECT_EQ(m_result.way, Way::AsItStands);
    EXPECT_THAT(files(), IsEmpty());
    EXPECT_EQ(m_result.facts.leavesWithoutShape, 1);
}

TEST_F(NormaliserExportsTest, OverridesStandInPartsGraphsAndDefinitions)
{
    const std::string moved = "<Occurrence instanceRefs='#a #b'>" + at("7 0 0") + "</Occurrence>";
    const std::string instances = "<Instance id='a' name='A' partRef='#p'/><Instance id='b' name='B' partRef='#q'/>";
    for (const std::string& text :
         {graph(instances, "<Part id='p' instanceRefs='b'/><Part id='q'>" + moved + "</Part>"),
          graph(instances + moved, "<Part id='p' instanceRefs='b'/><Part id='q'/>"),
          graph(instances, "<Part id='p' instanceRefs='b'/><Part id='q'/>" + moved),
          graph(instances, "<Part id='p' instanceRefs='b'/><Part id='q'/>") + moved}) {
        normalise(text);
        EXPECT_THAT(places(), ElementsAre("A 0 0 0", "B 7 0 0")) << text;
    }
}

TEST_F(NormaliserExportsTest, OverridesOfOtherViewsDoNotCount)
{
    const auto moved = [](const char* state, const char* x) {
        return std::string("<ProductView ") + state + "><Occurrence instanceRefs='#a #b'>" + at(x) +
               "</Occurrence></ProductView>";
    };
    normalise(graph("<Instance id='a' name='A' partRef='#p'/><Instance id='b' name='B'/>",
                    "<Part id='p' instanceRefs='b'/>" + moved("", "1 0 0") + moved("state='active'", "2 0 0")));
    EXPECT_THAT(places(), ElementsAre("A 0 0 0", "B 2 0 0"));
    EXPECT_EQ(m_result.facts.unplacedCount, 0u);
}

TEST_F(NormaliserExportsTest, APathIsCompletedByTheReferenceToTheOccurrenceAbove)
{
    normalise(graph("<Instance id='a' name='A' partRef='#p'/><Instance id='b' name='B'/>",
                    "<Part id='p' instanceRefs='b'/><ProductView><Occurrence id='o' instanceRefs='#a'/>"
                    "<Occurrence id='u' name='Under' parentRef='#o' instanceRefs='#b'/></ProductView>"));
    EXPECT_THAT(places(), ElementsAre("A 0 0 0", "Under 0 0 0"));
}

TEST_F(NormaliserExportsTest, RootsOfAllGraphsCountAndMayBeParts)
{
    normalise("<ProductDef>" + graph("<Instance id='a' name='A' partRef='#p'/>").substr(12) +
              "<ProductDef><InstanceGraph rootRefs='q c'><Instance id='b' name='B'/><Instance id='c' name='C'/>"
              "</InstanceGraph></ProductDef><Part id='p'/><Part id='q' name='Q' instanceRefs='b'/>");
    EXPECT_THAT(places(), ElementsAre("A 0 0 0", "Q 0 0 0", "B 0 0 0", "C 0 0 0"));
    EXPECT_EQ(m_result.facts.roots, 3u);
}

TEST_F(NormaliserExportsTest, BelowAFlatOccurrenceThatOfTheInstanceHolds)
{
    normalise(view("<Occurrence id='o' name='O' occurrenceRefs='u'><Transform>1 0 0 0 0 1 0 0 0 0 0 0 5 0 0 1"
                   "</Transform></Occurrence><Occurrence id='u' name='U' instanceRefs='#i'>" +
                   at("9 9 9") + "</Occurrence>") +
              "<Instance id='i'>" + at("0 3 0") + "</Instance>");
    EXPECT_EQ(m_result.structure.placements[1].placed[13], 3);
    EXPECT_EQ(m_result.structure.placements[1].placed[12], 0);
}

TEST_F(NormaliserExportsTest, AMirrorIsKept)
{
    normalise(view("<Occurrence id='o' name='O' occurrenceRefs='u'><Transform>-2 0 0 0 0 1 0 0 0 0 1 0 5 0 0 1"
                   "</Transform></Occurrence><Occurrence id='u' name='U'><Transform>-2 0 0 0 0 1 0 0 0 0 1 0 3 0 0 1"
                   "</Transform></Occurrence>"));
    EXPECT_THAT(m_result.text, HasSubstr("<Transform>-2 0 0 0 0 1 0 0 0 0 1 0 5 0 0 1</Transform>"));
    EXPECT_EQ(m_result.structure.placements[1].placed[12], 1);
}

TEST_F(NormaliserExportsTest, FormsMayBeAttachedToAnOccurrence)
{
    normalise(view("<Occurrence id='o' name='O' associatedAttachmentRefs='#t'/><AssociatedAttachment id='t' "
                   "attachmentRef='#f' role='r'/>") +
              "<Form id='f' name='Paint'><UserData type='x'><UserValue value='red' title='colour'/><UserValue "
              "title='layers' value='2' type='int'/></UserData><UserData><UserValue title='colour' value='blue'/>"
              "</UserData></Form>");
    EXPECT_THAT(m_result.structure.placements[0].tags,
                ElementsAre("ptx::attribute::Paint: colour=red", "ptx::attribute:integer::Paint: layers=2"));
}

} // namespace
