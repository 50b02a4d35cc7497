#include "cad/xml/CADPart.h"

#include "cad/xml/CADMaterial.h"
#include "cad/xml/CADOccurrence.h"
#include "cad/xml/CADRepresentation.h"
#include "tests/cad/xml/ModelFixture.h"

#include <tinyxml.h>

namespace HB::XML::CAD
{

class CADPartTest : public ModelTest
{
protected:
    CADPart& loadPart(const std::string& attributes, const std::string& content = "")
    {
        return loadInProductDef<CADPart>("<Part " + attributes + ">" + content + "</Part>");
    }
    int typeOf(const std::string& word) { return static_cast<int>(loadPart("type='" + word + "'").getType()); }
};

TEST_F(CADPartTest, AttributesAreRead)
{
    const auto& part = loadPart("id='p3' name='Bolt' materialRef='#m' partRefs='#p1 p2' instanceRefs='#i1\ti2 i3'"
                                " representationRefs='r1'");
    EXPECT_EQ(part.getId(), "p3");
    EXPECT_EQ(part.getName(), "Bolt");
    EXPECT_EQ(ModelTestAccess::materialRef(part), "#m");
    EXPECT_EQ(ModelTestAccess::partRefs(part), (Texts{"#p1", "p2"}));
    EXPECT_EQ(part.getInstanceRefs(), (Texts{"#i1", "i2", "i3"}));
    EXPECT_EQ(part.getRepresentationRefs(), Texts{"r1"});
}

TEST_F(CADPartTest, EverythingIsEmptyByDefault)
{
    const auto& part = loadPart("");
    EXPECT_EQ(part.getId(), "");
    EXPECT_TRUE(part.getInstanceRefs().empty());
    EXPECT_TRUE(part.getRepresentationRefs().empty());
    EXPECT_TRUE(ModelTestAccess::partRefs(part).empty());
    EXPECT_EQ(ModelTestAccess::materialRef(part), "");
}

TEST_F(CADPartTest, TypesAreNumbered)
{
    EXPECT_EQ(typeOf("assembly"), 0);
    EXPECT_EQ(typeOf("minimal"), 1);
    EXPECT_EQ(typeOf("wire"), 2);
    EXPECT_EQ(typeOf("solid"), 3);
    EXPECT_EQ(typeOf("sheet"), 4);
    EXPECT_EQ(typeOf("general"), 5);
}

TEST_F(CADPartTest, TypeIsAssemblyByDefaultAndForUnknownWords)
{
    EXPECT_EQ(loadPart("").getType(), CADPart::Type::Assembly);
    EXPECT_EQ(typeOf("Solid"), 0);
    EXPECT_EQ(typeOf(""), 0);
    EXPECT_EQ(typeOf("solid "), 0);
}

TEST_F(CADPartTest, UnknownWordKeepsTheTypeReadBefore)
{
    CADPart part(nullptr);
    TiXmlElement element("Part");
    element.SetAttribute("type", "sheet");
    part.loadAttributes(element);
    element.SetAttribute("type", "liquid");
    part.loadAttributes(element);
    EXPECT_EQ(part.getType(), CADPart::Type::Sheet);
}

TEST_F(CADPartTest, RepresentationChildrenComeBehindThoseOfTheAttribute)
{
    const auto& part = loadPart("representationRefs='#r1 #r2'", "<Representation id='r3'/><Representation id='r4'/>");
    EXPECT_EQ(part.getRepresentationRefs(), (Texts{"#r1", "#r2", "r3", "r4"}));
}

TEST_F(CADPartTest, RepresentationWithoutIdBeginsWithThePartsId)
{
    const auto& part = loadPart("id='p1'", "<Representation><Transform/></Representation>");
    const auto& representation = firstChild<CADRepresentation>(part);
    EXPECT_TRUE(isGeneratedId(representation, "p1", "_rep"));
    EXPECT_EQ(part.getRepresentationRefs(), Texts{representation.getId()});
    EXPECT_TRUE(isGeneratedId(*ModelTestAccess::children(representation)[0], "", "_tr"));
}

TEST_F(CADPartTest, LastMaterialChildReplacesTheAttribute)
{
    const auto& part = loadPart("materialRef='#m1'", "<Material id='m2'/><Material id='m3'/>");
    EXPECT_EQ(ModelTestAccess::materialRef(part), "m3");
    EXPECT_EQ(m_document.findMaterial("m2")->getParent(), &part);
}

TEST_F(CADPartTest, OccurrenceChildrenGoToTheProductDef)
{
    const auto& part = loadPart("", "<Occurrence id='o1' instanceRefs='a'/>");
    EXPECT_EQ(ModelTestAccess::occurrenceRefs(*m_document.getProductDef(0)), Texts{"o1"});
    EXPECT_EQ(m_document.findOccurrence("o1")->getParent(), &part);
    ASSERT_EQ(m_document.getProductDef(0)->findOccurrences({"a"}).size(), 1U);
}

TEST_F(CADPartTest, OccurrenceUnderAPartWithoutProductDefGoesNowhere)
{
    CADPart part(nullptr);
    TiXmlElement element("Part");
    element.InsertEndChild(TiXmlElement("Occurrence"));
    part.load(element);
    EXPECT_EQ(ModelTestAccess::children(part).size(), 1U);
}

TEST_F(CADPartTest, ProductRevisionViewIsTheSameThing)
{
    const auto& part = loadInProductDef<CADPart>("<ProductRevisionView id='p' type='wire'/>");
    EXPECT_EQ(m_document.findPart("p"), &part);
    EXPECT_EQ(part.getType(), CADPart::Type::Wire);
}

TEST_F(CADPartTest, ListsAreGivenAsCopies)
{
    const auto& part = loadPart("instanceRefs='a' representationRefs='b'");
    part.getInstanceRefs().clear();
    part.getRepresentationRefs().clear();
    EXPECT_EQ(part.getInstanceRefs(), Texts{"a"});
    EXPECT_EQ(part.getRepresentationRefs(), Texts{"b"});
}

} // namespace HB::XML::CAD
