#include "cad/xml/CADRepresentation.h"

#include "cad/xml/CADCompoundRef.h"
#include "cad/xml/CADMaterial.h"
#include "cad/xml/CADTransform.h"
#include "tests/cad/xml/ModelFixture.h"

namespace HB::XML::CAD
{

class CADRepresentationTest : public ModelTest
{
protected:
    CADRepresentation& loadRepresentation(const std::string& attributes, const std::string& content = "")
    {
        return loadInProductDef<CADRepresentation>("<Representation " + attributes + ">" + content +
                                                   "</Representation>");
    }
    int typeOf(const std::string& word)
    {
        return static_cast<int>(loadRepresentation("type='" + word + "'").getType());
    }
    int compoundTypeOf(const std::string& word)
    {
        const auto& representation = loadRepresentation("", "<CompoundRep type='" + word + "'/>");
        return static_cast<int>(firstChild<CADCompoundRef>(representation).getType());
    }
};

TEST_F(CADRepresentationTest, AttributesAreRead)
{
    const auto& representation = loadRepresentation("id='r3' name='Shape' format='JT' location='parts/a%20b.jt'"
                                                    " transformRef='#t'");
    EXPECT_EQ(representation.getId(), "r3");
    EXPECT_EQ(representation.getName(), "Shape");
    EXPECT_EQ(representation.getFormat(), "JT");
    EXPECT_EQ(representation.getLocation(), "parts/a%20b.jt");
    EXPECT_EQ(representation.getTransformRef(), "#t");
}

TEST_F(CADRepresentationTest, EverythingIsEmptyByDefault)
{
    const auto& representation = loadRepresentation("");
    EXPECT_EQ(representation.getFormat(), "");
    EXPECT_EQ(representation.getLocation(), "");
    EXPECT_EQ(representation.getTransformRef(), "");
    EXPECT_TRUE(representation.getCompoundRefs().empty());
    EXPECT_EQ(representation.getType(), CADRepresentation::Type::Default);
}

TEST_F(CADRepresentationTest, LocationAndFormatAreKeptAsTheyAre)
{
    const auto& representation = loadRepresentation("format='No Such' location='..\\x%C3%A4/./y#z '");
    EXPECT_EQ(representation.getFormat(), "No Such");
    EXPECT_EQ(representation.getLocation(), "..\\x%C3%A4/./y#z ");
}

TEST_F(CADRepresentationTest, TypesAreNumbered)
{
    EXPECT_EQ(typeOf("default"), 0);
    EXPECT_EQ(typeOf("simplified"), 1);
    EXPECT_EQ(typeOf("flat"), 2);
    EXPECT_EQ(typeOf("user"), 3);
}

TEST_F(CADRepresentationTest, WordsOfCompoundsChangeNothing)
{
    EXPECT_EQ(typeOf("construction"), 0);
    EXPECT_EQ(typeOf("weld"), 0);
    EXPECT_EQ(typeOf("midsurface"), 0);
    EXPECT_EQ(typeOf("Flat"), 0);
}

TEST_F(CADRepresentationTest, CompoundsKnowAllSevenWords)
{
    EXPECT_EQ(compoundTypeOf("default"), 0);
    EXPECT_EQ(compoundTypeOf("simplified"), 1);
    EXPECT_EQ(compoundTypeOf("flat"), 2);
    EXPECT_EQ(compoundTypeOf("user"), 3);
    EXPECT_EQ(compoundTypeOf("construction"), 4);
    EXPECT_EQ(compoundTypeOf("weld"), 5);
    EXPECT_EQ(compoundTypeOf("midsurface"), 6);
    EXPECT_EQ(compoundTypeOf("Weld"), 0);
    EXPECT_EQ(compoundTypeOf("unknown"), 0);
}

TEST_F(CADRepresentationTest, CompoundReadsTheAttributesOfARepresentation)
{
    const auto& representation =
        loadRepresentation("", "<CompoundRep id='c' name='Half' format='WRL' location='c.wrl' transformRef='t'/>");
    const auto& compound = firstChild<CADCompoundRef>(representation);
    EXPECT_EQ(compound.getId(), "c");
    EXPECT_EQ(compound.getName(), "Half");
    EXPECT_EQ(compound.getFormat(), "WRL");
    EXPECT_EQ(compound.getLocation(), "c.wrl");
    EXPECT_EQ(compound.getTransformRef(), "t");
}

TEST_F(CADRepresentationTest, TransformChildReplacesTheAttributeAndTheLastWins)
{
    const auto& representation = loadRepresentation("transformRef='#t1'", "<Transform id='t2'/><Transform id='t3'/>");
    EXPECT_EQ(representation.getTransformRef(), "t3");
    EXPECT_EQ(m_document.findTransform("t2")->getParent(), &representation);
}

TEST_F(CADRepresentationTest, CompoundsNestAndAreListedInFileOrder)
{
    const auto& representation = loadRepresentation(
        "", "<CompoundRep id='c1'><CompoundRep id='c2'><Transform id='t'/></CompoundRep></CompoundRep>"
            "<CompoundRep id='c3'/>");
    EXPECT_EQ(representation.getCompoundRefs(), (Texts{"c1", "c3"}));
    EXPECT_EQ(m_document.findRepresentation("c1")->getCompoundRefs(), Texts{"c2"});
    EXPECT_EQ(m_document.findRepresentation("c2")->getTransformRef(), "t");
}

TEST_F(CADRepresentationTest, CompoundIsFoundByItsGeneratedId)
{
    const auto& representation = loadRepresentation("id='r'", "<CompoundRep/>");
    const auto& compound = firstChild<CADCompoundRef>(representation);
    EXPECT_TRUE(isGeneratedId(compound, "r", "_cor"));
    EXPECT_EQ(m_document.findRepresentation(compound.getId()), &compound);
    EXPECT_EQ(representation.getCompoundRefs(), Texts{compound.getId()});
}

TEST_F(CADRepresentationTest, PlainOneIsNoCompound)
{
    EXPECT_EQ(dynamic_cast<CADCompoundRef*>(&loadRepresentation("id='r'")), nullptr);
}

TEST_F(CADRepresentationTest, MaterialChildIsFoundThroughTheDocument)
{
    const auto& representation =
        loadRepresentation("", "<Material id='m'/><CompoundRep><Material id='n'/></CompoundRep>");
    EXPECT_EQ(m_document.findMaterial("m")->getParent(), &representation);
    EXPECT_NE(m_document.findMaterial("n"), nullptr);
}

} // namespace HB::XML::CAD
