#include "cad/xml/CADProductDef.h"

#include "cad/xml/CADInstanceGraph.h"
#include "cad/xml/CADMaterial.h"
#include "cad/xml/CADOccurrence.h"
#include "cad/xml/CADRepresentation.h"
#include "tests/cad/xml/ModelFixture.h"

#include <typeinfo>

namespace HB::XML::CAD
{

class CADProductDefTest : public ModelTest
{
protected:
    Texts idsAt(const Texts& path) const
    {
        Texts ids;
        for (const auto* occurrence : m_document.getProductDef(0)->findOccurrences(path))
            ids.push_back(occurrence->getId());
        return ids;
    }
};

TEST_F(CADProductDefTest, GraphsAreListedInFileOrder)
{
    auto& productDef = loadProductDef("<InstanceGraph id='g1'/><Part/><InstanceGraph id='g2'/>");
    ASSERT_EQ(productDef.getInstanceGraphCount(), 2U);
    EXPECT_EQ(productDef.getInstanceGraph(0)->getId(), "g1");
    EXPECT_EQ(productDef.getInstanceGraph(1)->getId(), "g2");
}

TEST_F(CADProductDefTest, WithoutGraphTheCountIsZero)
{
    EXPECT_EQ(loadProductDef("<Part id='p'/>").getInstanceGraphCount(), 0U);
}

TEST_F(CADProductDefTest, GraphPastTheEndThrowsThePlainException)
{
    auto& productDef = loadProductDef("<InstanceGraph/>");
    try {
        productDef.getInstanceGraph(1);
        FAIL() << "no exception";
    } catch (const std::exception& error) {
        EXPECT_EQ(typeid(error), typeid(std::exception));
        EXPECT_STREQ(error.what(), std::exception().what());
    }
}

TEST_F(CADProductDefTest, OnlyNameAndIdCountOfItsAttributes)
{
    auto& productDef = loadProductDef("", "type='x' name='Engine' rootRefs='#a' id='pd3'");
    EXPECT_EQ(productDef.getName(), "Engine");
    EXPECT_EQ(productDef.getId(), "pd3");
    EXPECT_EQ(productDef.getInstanceGraphCount(), 0U);
}

TEST_F(CADProductDefTest, MissingIdStaysEmpty)
{
    auto& productDef = loadProductDef("<UserData/>", "name='Engine'");
    EXPECT_EQ(productDef.getId(), "");
    EXPECT_TRUE(isGeneratedId(*ModelTestAccess::children(productDef)[0], "", "_ud"));
}

TEST_F(CADProductDefTest, OtherChildrenAreReachedThroughTheDocument)
{
    auto& productDef = loadProductDef("<Representation id='r'/><Part id='p'/><ProductRevisionView id='q'/>"
                                      "<Material id='m'/><ProductView id='v'/>");
    EXPECT_EQ(ModelTestAccess::children(productDef).size(), 5U);
    EXPECT_EQ(m_document.findRepresentation("r")->getParent(), &productDef);
    EXPECT_EQ(m_document.findPart("p")->getParent(), &productDef);
    EXPECT_EQ(m_document.findPart("q")->getParent(), &productDef);
    EXPECT_EQ(m_document.findMaterial("m")->getParent(), &productDef);
    EXPECT_EQ(m_document.getActiveProductView()->getParent(), &productDef);
    EXPECT_TRUE(ModelTestAccess::occurrenceRefs(productDef).empty());
}

TEST_F(CADProductDefTest, OccurrencesUnderItAndUnderPartsAreListedInFileOrder)
{
    auto& productDef = loadProductDef("<Part><Occurrence id='o1'/></Part><Occurrence id='o2'/>"
                                      "<InstanceGraph><Part><Occurrence id='o3'/></Part></InstanceGraph>"
                                      "<Occurrence id='o4'><Occurrence id='inner'/></Occurrence>"
                                      "<ProductView><Occurrence id='of view'/></ProductView>");
    EXPECT_EQ(ModelTestAccess::occurrenceRefs(productDef), (Texts{"o1", "o2", "o3", "o4"}));
}

TEST_F(CADProductDefTest, OccurrenceWithoutIdIsListedByItsGeneratedId)
{
    auto& productDef = loadProductDef("<Occurrence instanceRefs='a'/>");
    const auto& occurrence = firstChild<CADOccurrence>(productDef);
    EXPECT_TRUE(isGeneratedId(occurrence, "pd", "_o"));
    EXPECT_EQ(ModelTestAccess::occurrenceRefs(productDef), Texts{occurrence.getId()});
    EXPECT_EQ(idsAt({"a"}), Texts{occurrence.getId()});
}

TEST_F(CADProductDefTest, AddOccurrenceRefTakesTheIdOfAnyElement)
{
    CADProductDef productDef(nullptr);
    CADPart part(nullptr);
    part.setId("p5");
    productDef.addOccurrenceRef(&part);
    EXPECT_EQ(ModelTestAccess::occurrenceRefs(productDef), Texts{"p5"});
}

TEST_F(CADProductDefTest, OccurrencesAreFoundByTheirWholePath)
{
    loadProductDef("<Occurrence id='o1' instanceRefs='#a #b'/><Occurrence id='o2' instanceRefs='#a'/>"
                   "<Occurrence id='o3' instanceRefs='a f.plmxml#b'/><Occurrence id='o4' instanceRefs='#b #a'/>"
                   "<Part><Occurrence id='o5' instanceRefs='a b'/></Part>");
    EXPECT_EQ(idsAt({"a", "b"}), (Texts{"o1", "o3", "o5"}));
    EXPECT_EQ(idsAt({"#a", "x.plmxml#b"}), (Texts{"o1", "o3", "o5"}));
    EXPECT_EQ(idsAt({"a"}), Texts{"o2"});
    EXPECT_EQ(idsAt({"b", "a"}), Texts{"o4"});
    EXPECT_EQ(idsAt({"b"}), Texts{});
    EXPECT_EQ(idsAt({"A", "b"}), Texts{});
    EXPECT_EQ(idsAt({"a", "b", "c"}), Texts{});
}

TEST_F(CADProductDefTest, OccurrenceWithoutPathMatchesTheEmptyPathOnly)
{
    loadProductDef("<Occurrence id='o1'/><Occurrence id='o2' instanceRefs=' '/><Occurrence id='o3' instanceRefs='a'/>");
    EXPECT_EQ(idsAt({}), (Texts{"o1", "o2"}));
    EXPECT_EQ(idsAt({""}), Texts{});
}

TEST_F(CADProductDefTest, RepeatedOccurrenceIdGivesTheLastOneForEachEntry)
{
    auto& productDef = loadProductDef("<Occurrence id='o' name='one' instanceRefs='a'/>"
                                      "<Occurrence id='o' name='two' instanceRefs='b'/>");
    EXPECT_EQ(idsAt({"a"}), Texts{});
    ASSERT_EQ(idsAt({"b"}), (Texts{"o", "o"}));
    EXPECT_EQ(productDef.findOccurrences({"b"})[0]->getName(), "two");
    EXPECT_EQ(productDef.findOccurrences({"b"})[1]->getName(), "two");
}

TEST_F(CADProductDefTest, EntryWhoseIdHoldsAHashSignMatchesNothing)
{
    loadProductDef("<Occurrence id='x#o' instanceRefs='a'/><Occurrence id='p' instanceRefs='a'/>");
    EXPECT_EQ(idsAt({"a"}), Texts{"p"});
}

TEST_F(CADProductDefTest, OccurrencesAddedBehindASearchAreFound)
{
    auto& productDef = loadProductDef("<Occurrence id='o1' instanceRefs='a'/>");
    EXPECT_EQ(idsAt({"a"}), Texts{"o1"});
    productDef.addOccurrenceRef(m_document.findOccurrence("o1"));
    EXPECT_EQ(idsAt({"a"}), (Texts{"o1", "o1"}));

    auto* replacement = new CADOccurrence(&productDef);
    replacement->setId("o1");
    m_document.addOccurrence(replacement);
    EXPECT_EQ(idsAt({"a"}), Texts{});
    EXPECT_EQ(idsAt({}), (Texts{"o1", "o1"}));
}

TEST_F(CADProductDefTest, EverySearchGivesAListOfItsOwn)
{
    auto& productDef = loadProductDef("<Occurrence id='o1' instanceRefs='a'/>");
    auto found = productDef.findOccurrences({"a"});
    found.clear();
    EXPECT_EQ(idsAt({"a"}), Texts{"o1"});
}

TEST_F(CADProductDefTest, WithoutDocumentNothingIsFound)
{
    EXPECT_TRUE(CADProductDef(nullptr).findOccurrences({}).empty());
}

} // namespace HB::XML::CAD
