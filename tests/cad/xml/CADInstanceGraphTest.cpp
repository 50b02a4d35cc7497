#include "cad/xml/CADInstanceGraph.h"

#include "cad/xml/CADInstance.h"
#include "cad/xml/CADTransform.h"
#include "tests/cad/xml/ModelFixture.h"

namespace HB::XML::CAD
{

class CADInstanceGraphTest : public ModelTest
{
protected:
    CADInstanceGraph& loadGraph(const std::string& attributes, const std::string& content = "")
    {
        return loadInProductDef<CADInstanceGraph>("<InstanceGraph " + attributes + ">" + content + "</InstanceGraph>");
    }
};

TEST_F(CADInstanceGraphTest, NameAndIdAreRead)
{
    const auto& graph = loadGraph("id='g4' name='Graph'");
    EXPECT_EQ(graph.getId(), "g4");
    EXPECT_EQ(graph.getName(), "Graph");
}

TEST_F(CADInstanceGraphTest, MissingIdStaysEmpty)
{
    EXPECT_EQ(loadGraph("").getId(), "");
}

TEST_F(CADInstanceGraphTest, RootRefsAreSplit)
{
    EXPECT_EQ(loadGraph("rootRefs=' #a b\n\tc.plmxml#d'").getRootRefs(), (Texts{"#a", "b", "c.plmxml#d"}));
}

TEST_F(CADInstanceGraphTest, RootInstanceRefIsOneEntryWithItsBlanks)
{
    EXPECT_EQ(loadGraph("rootInstanceRef='#a b'").getRootRefs(), Texts{"#a b"});
}

TEST_F(CADInstanceGraphTest, RootRefsBehindRootInstanceRefAreAdded)
{
    EXPECT_EQ(loadGraph("rootInstanceRef='a' rootRefs='b c'").getRootRefs(), (Texts{"a", "b", "c"}));
}

TEST_F(CADInstanceGraphTest, RootInstanceRefBehindRootRefsReplacesThem)
{
    EXPECT_EQ(loadGraph("rootRefs='b c' rootInstanceRef='a'").getRootRefs(), Texts{"a"});
}

TEST_F(CADInstanceGraphTest, EmptyRootRefsAddNothing)
{
    EXPECT_EQ(loadGraph("rootRefs=''").getRootRefs(), Texts{});
    EXPECT_EQ(loadGraph("rootRefs=' \n'").getRootRefs(), Texts{});
}

TEST_F(CADInstanceGraphTest, EmptyRootInstanceRefIsAnEntry)
{
    EXPECT_EQ(loadGraph("rootRefs='b c' rootInstanceRef=''").getRootRefs(), Texts{""});
}

TEST_F(CADInstanceGraphTest, AttributeNamesAreMatchedExactly)
{
    EXPECT_EQ(loadGraph("rootrefs='a' RootRefs='b' rootInstanceRefs='c'").getRootRefs(), Texts{});
}

TEST_F(CADInstanceGraphTest, UserDataIsNotRead)
{
    const auto& graph = loadGraph("id='g'", "<UserData id='u'/><Instance id='i'/>");
    EXPECT_EQ(graph.getUserData(), nullptr);
    EXPECT_EQ(ModelTestAccess::children(graph).size(), 1U);
}

TEST_F(CADInstanceGraphTest, OwnsInstancesPartsAndTransformsInFileOrder)
{
    const auto& graph = loadGraph("id='g'", "<Transform id='t'>1</Transform><Instance id='i1'/><Part id='p1'/>"
                                            "<ProductInstance id='i2'/><ProductRevisionView id='p2'/>");
    Texts ids;
    for (const auto* child : ModelTestAccess::children(graph))
        ids.push_back(child->getId());
    EXPECT_EQ(ids, (Texts{"t", "i1", "p1", "i2", "p2"}));
    EXPECT_EQ(m_document.findTransform("t")->getParent(), &graph);
    EXPECT_EQ(m_document.findInstance("i2")->getParent(), &graph);
    EXPECT_EQ(m_document.findPart("p2")->getParent(), &graph);
}

TEST_F(CADInstanceGraphTest, PartsOfGraphAndProductDefShareATable)
{
    loadProductDef("<Part id='p1'/><InstanceGraph><Part id='p2'/></InstanceGraph>");
    EXPECT_NE(m_document.findPart("p1"), nullptr);
    EXPECT_NE(m_document.findPart("p2"), nullptr);
}

TEST_F(CADInstanceGraphTest, TransformWithoutIdBeginsWithTheGraphsId)
{
    const auto& graph = loadGraph("id='g'", "<Transform/>");
    EXPECT_TRUE(isGeneratedId(*ModelTestAccess::children(graph)[0], "g", "_tr"));
}

TEST_F(CADInstanceGraphTest, RootRefsAreGivenAsACopy)
{
    const auto& graph = loadGraph("rootRefs='a b'");
    graph.getRootRefs().clear();
    EXPECT_EQ(graph.getRootRefs(), (Texts{"a", "b"}));
}

} // namespace HB::XML::CAD
