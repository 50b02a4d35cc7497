#include "cad/xml/CADProductView.h"

#include "cad/xml/CADOccurrence.h"
#include "cad/xml/CADUserData.h"
#include "tests/cad/xml/ModelFixture.h"

namespace HB::XML::CAD
{

class CADProductViewTest : public ModelTest
{
protected:
    static constexpr const char* threeOccurrences = "<Occurrence id='o1'/><Occurrence id='o2'/><Occurrence id='o3'/>";

    CADProductView& loadView(const std::string& attributes, const std::string& content = "")
    {
        return loadInProductDef<CADProductView>("<ProductView " + attributes + ">" + content + "</ProductView>");
    }
    Texts rootRefsOf(const std::string& attributes, const std::string& content = "")
    {
        return ModelTestAccess::rootRefs(loadView(attributes, content));
    }
    static Texts idsAt(const CADProductView& view, const Texts& path)
    {
        Texts ids;
        for (const auto* occurrence : view.findOccurrences(path))
            ids.push_back(occurrence->getId());
        return ids;
    }
};

TEST_F(CADProductViewTest, NameIdAndUserDataAreRead)
{
    const auto& view = loadView("id='v3' name='Variant'", "<UserData id='u'/>");
    EXPECT_EQ(view.getId(), "v3");
    EXPECT_EQ(view.getName(), "Variant");
    EXPECT_EQ(view.getUserData()->getId(), "u");
}

TEST_F(CADProductViewTest, StateMustBeTheExactWord)
{
    EXPECT_TRUE(loadView("state='active'").isActive());
    EXPECT_FALSE(loadView("state='Active'").isActive());
    EXPECT_FALSE(loadView("state='active '").isActive());
    EXPECT_FALSE(loadView("state='inactive'").isActive());
    EXPECT_FALSE(loadView("State='active'").isActive());
    EXPECT_FALSE(loadView("").isActive());
}

TEST_F(CADProductViewTest, RootRefsAreSplit)
{
    EXPECT_EQ(rootRefsOf("rootRefs='#a b\tf.xml#c'"), (Texts{"#a", "b", "f.xml#c"}));
}

TEST_F(CADProductViewTest, PrimaryOccurrenceViewIsOneEntryWithItsBlanks)
{
    EXPECT_EQ(rootRefsOf("primaryOccurrenceView='#a b'"), Texts{"#a b"});
}

TEST_F(CADProductViewTest, OtherWordsForThePrimaryOccurrenceAreUnknown)
{
    EXPECT_EQ(rootRefsOf("primaryOccurrenceRef='#a' primaryoccurrenceview='#b'"), Texts{});
}

TEST_F(CADProductViewTest, ListAttributesCombineByFileOrder)
{
    EXPECT_EQ(rootRefsOf("primaryOccurrenceView='a' rootRefs='b c'"), (Texts{"a", "b", "c"}));
    EXPECT_EQ(rootRefsOf("rootRefs='b c' primaryOccurrenceView='a'"), Texts{"a"});
}

TEST_F(CADProductViewTest, WithoutListAllOccurrencesAreTaken)
{
    EXPECT_EQ(rootRefsOf("", threeOccurrences), (Texts{"o1", "o2", "o3"}));
}

TEST_F(CADProductViewTest, OneEntryClosesTheListForOccurrences)
{
    EXPECT_EQ(rootRefsOf("primaryOccurrenceView='#o2'", threeOccurrences), Texts{"#o2"});
    EXPECT_NE(m_document.findOccurrence("o1"), nullptr);
    EXPECT_NE(m_document.findOccurrence("o2"), nullptr);
    EXPECT_NE(m_document.findOccurrence("o3"), nullptr);
    EXPECT_EQ(rootRefsOf("rootRefs='x'", threeOccurrences), Texts{"x"});
    EXPECT_EQ(rootRefsOf("primaryOccurrenceView=''", threeOccurrences), Texts{""});
}

TEST_F(CADProductViewTest, TwoEntriesLeaveTheListOpen)
{
    EXPECT_EQ(rootRefsOf("rootRefs='#a #b'", threeOccurrences), (Texts{"#a", "#b", "o1", "o2", "o3"}));
}

TEST_F(CADProductViewTest, CountIsTakenBehindAllAttributes)
{
    EXPECT_EQ(rootRefsOf("rootRefs='a' primaryOccurrenceView='b'", threeOccurrences), Texts{"b"});
    EXPECT_EQ(rootRefsOf("primaryOccurrenceView='b' rootRefs='a'", threeOccurrences),
              (Texts{"b", "a", "o1", "o2", "o3"}));
    EXPECT_EQ(rootRefsOf("rootRefs='a c' primaryOccurrenceView='b'", threeOccurrences), Texts{"b"});
}

TEST_F(CADProductViewTest, FirstOccurrenceDoesNotCloseTheList)
{
    EXPECT_EQ(rootRefsOf("rootRefs=''", threeOccurrences), (Texts{"o1", "o2", "o3"}));
}

TEST_F(CADProductViewTest, OccurrencesAreOwnedAndRegistered)
{
    const auto& view = loadView("id='v' primaryOccurrenceView='x'", "<Occurrence/>");
    const auto& occurrence = firstChild<CADOccurrence>(view);
    EXPECT_TRUE(isGeneratedId(occurrence, "v", "_o"));
    EXPECT_EQ(m_document.findOccurrence(occurrence.getId()), &occurrence);
}

TEST_F(CADProductViewTest, OccurrencesAreFoundByPathInTheOrderOfTheList)
{
    const auto& view = loadView("rootRefs='#o3 o1'", "<Occurrence id='o1' instanceRefs='#a b'/>"
                                                     "<Occurrence id='o2' instanceRefs='a'/>"
                                                     "<Occurrence id='o3' instanceRefs='f.xml#a #b'/>");
    EXPECT_EQ(idsAt(view, {"a", "b"}), (Texts{"o3", "o1", "o1", "o3"}));
    EXPECT_EQ(idsAt(view, {"#a"}), Texts{"o2"});
    EXPECT_EQ(idsAt(view, {}), Texts{});
}

TEST_F(CADProductViewTest, EntriesThatLeadNowhereMatchNothing)
{
    const auto& view = loadView("rootRefs='missing other.plmxml#o1 #'", "<Occurrence id='o1' instanceRefs='a'/>");
    EXPECT_EQ(idsAt(view, {"a"}), Texts{"o1"});
    EXPECT_EQ(idsAt(view, {}), Texts{});
}

TEST_F(CADProductViewTest, SearchDoesNotDescendIntoOccurrences)
{
    const char* nested =
        "<Occurrence id='outer' instanceRefs='a'><Occurrence id='inner' instanceRefs='a'/></Occurrence>";
    EXPECT_EQ(idsAt(loadView("", nested), {"a"}), Texts{"outer"});
}

TEST_F(CADProductViewTest, NestedOccurrenceIsFoundWhenTheListNamesIt)
{
    const char* nested =
        "<Occurrence id='outer' instanceRefs='a'><Occurrence id='inner' instanceRefs='a'/></Occurrence>";
    EXPECT_EQ(idsAt(loadView("rootRefs='inner'", nested), {"a"}), Texts{"inner"});
}

TEST_F(CADProductViewTest, MayNameOccurrencesThatStandElsewhere)
{
    loadProductDef("<ProductView id='v' rootRefs='#later #later'/><Occurrence id='later' instanceRefs='a'/>");
    EXPECT_EQ(idsAt(*m_document.getActiveProductView(), {"a"}), (Texts{"later", "later"}));
}

TEST_F(CADProductViewTest, WithoutDocumentNothingIsFound)
{
    EXPECT_TRUE(CADProductView(nullptr).findOccurrences({}).empty());
    EXPECT_FALSE(CADProductView(nullptr).isActive());
}

} // namespace HB::XML::CAD
