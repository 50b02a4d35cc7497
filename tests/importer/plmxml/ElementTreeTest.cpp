// The structure below one element of a document.

#include "tests/importer/plmxml/NormaliserTest.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace
{

class ElementTreeTest : public NormaliserTest
{
protected:
    const importer::plmxml::NormalisedDocument& normaliseBelow(const char* id, const std::string& content)
    {
        make("car.plmxml", QByteArray::fromStdString("<PLMXML>" + content + "</PLMXML>"));
        m_result = importer::plmxml::normalise(path("car.plmxml"), {{}, {}, false, {}, QString::fromUtf8(id)});
        return m_result;
    }

    static std::string graph()
    {
        return "<ProductDef id='d'><InstanceGraph id='g' rootRefs='a'><Instance id='a' name='A' partRef='#p'>" +
               at("1 0 0") + "</Instance><Instance id='b' name='B' partRef='#q'>" + at("0 2 0") +
               "</Instance></InstanceGraph><Part id='p' name='P' instanceRefs='b'/><Part id='q' name='Q' "
               "revisionRef='#r'/></ProductDef><ProductRevision id='r'/><Form id='f'/>";
    }
    static std::string tree()
    {
        return "<ProductView id='v' rootRefs='o'><Occurrence id='o' name='O' occurrenceRefs='u'/><Occurrence id='u' "
               "name='U' instancedRef='#r' occurrenceRefs='w'>" +
               at("5 0 0") + "</Occurrence><Occurrence id='w' name='W'>" + at("5 6 0") +
               "</Occurrence></ProductView><ProductView id='x' rootRefs='y'><Occurrence id='y' name='Y'/>"
               "</ProductView><ProductRevision id='r'/>";
    }
};

TEST_F(ElementTreeTest, InstancesPartsAndGraphsBeginAStructure)
{
    EXPECT_EQ(normaliseBelow("b", graph()).way, Way::AsText) << "never the document itself";
    EXPECT_THAT(places(), ElementsAre("B 0 2 0"));
    normaliseBelow("p", graph());
    EXPECT_THAT(places(), ElementsAre("P 0 0 0", "B 0 2 0"));
    normaliseBelow("g", graph());
    EXPECT_THAT(places(), ElementsAre("A 1 0 0", "B 1 2 0"));
    normaliseBelow("d", graph());
    EXPECT_THAT(places(), ElementsAre("A 1 0 0", "B 1 2 0"));
}

TEST_F(ElementTreeTest, AnOccurrenceStandsAtTheOrigin)
{
    normaliseBelow("u", tree());
    EXPECT_THAT(places(), ElementsAre("U 0 0 0", "W 0 6 0"));
    EXPECT_EQ(m_result.facts.unplacedCount, 0u) << "the others are not wanted";
    normaliseBelow("v", tree());
    EXPECT_THAT(places(), ElementsAre("O 0 0 0", "U 5 0 0", "W 5 6 0"));
    normaliseBelow("x", tree());
    EXPECT_THAT(places(), ElementsAre("Y 0 0 0"));
}

TEST_F(ElementTreeTest, ARevisionIsShownByItsPartOrOccurrence)
{
    normaliseBelow("r", graph());
    EXPECT_THAT(places(), ElementsAre("Q 0 0 0"));
    normaliseBelow("r", tree());
    EXPECT_THAT(places(), ElementsAre("U 0 0 0", "W 0 6 0"));
}

TEST_F(ElementTreeTest, WhatBeginsNothingIsRefused)
{
    for (const char* id : {"gone", "f", "a b"}) {
        EXPECT_EQ(normaliseBelow(id, graph()).way, Way::Refuse);
        EXPECT_EQ(reason(), QStringLiteral("the document has no element \"%1\" that a structure begins with")
                                .arg(QString::fromUtf8(id)));
    }
}

TEST_F(ElementTreeTest, AnElementInARingIsRefused)
{
    normaliseBelow("p", "<Part id='p' instanceRefs='i'/><Instance id='i' partRef='p'/>");
    EXPECT_EQ(m_result.way, Way::Refuse);
    EXPECT_TRUE(m_result.facts.isCut);
}

TEST_F(ElementTreeTest, WhatStandsInForAnElementOfAnotherDocumentIsRead)
{
    make("other.plmxml");
    make("whole.plmxml");
    make("car.plmxml",
         "<PLMXML><ProductView rootRefs='o'><Occurrence id='o' name='O' occurrenceRefs='a b c d'/>"
         "<Occurrence id='a' name='A' instancedRef='other.plmxml#x'/>"
         "<Occurrence id='b' name='B' partRef='other.plmxml#y' instancedRef=''/>"
         "<Occurrence id='c' name='C' instanceRefs='#i'/><Occurrence id='d' instancedRef='none.plmxml#x'/>"
         "</ProductView><ProductRevision id='x'/><Instance id='i' partRef='whole.plmxml#x'/></PLMXML>");
    m_result = importer::plmxml::normalise(path("car.plmxml"), {{}, {}, true, QStringLiteral("/in")});
    std::vector<std::string> elements;
    for (const importer::plmxml::DocumentElement& element : m_result.elements) {
        elements.push_back(QFileInfo(element.document).fileName().toStdString() + " " + element.id.toStdString());
        EXPECT_THAT(m_result.text, HasSubstr("location=\"" + element.standIn(QStringLiteral("/in")).toStdString()));
    }
    EXPECT_THAT(elements, ElementsAre("other.plmxml x", "other.plmxml y", "whole.plmxml x"));
    EXPECT_THAT(files(), ElementsAre("none.plmxml#x 1", "other.plmxml#x 1", "other.plmxml#y 1", "whole.plmxml#x 1"));
    EXPECT_EQ(m_result.facts.danglingCount, 0u);
}

TEST_F(ElementTreeTest, AnIdOfAnotherDocumentIsNoneOfThis)
{
    normalise("<ProductView rootRefs='o'><Occurrence id='o' name='O' occurrenceRefs='other.plmxml#u u'/>"
              "<Occurrence id='u' name='U' parentRef='other.plmxml#o'/></ProductView>");
    EXPECT_THAT(places(), ElementsAre("O 0 0 0", "U 0 0 0"));
    EXPECT_EQ(m_result.facts.placedTwice, 0u);
    EXPECT_EQ(m_result.facts.danglingCount, 1u);
}

} // namespace
