#include "cad/xml/CADOccurrence.h"

#include "cad/xml/CADMaterial.h"
#include "cad/xml/CADTransform.h"
#include "cad/xml/CADUserData.h"
#include "tests/cad/xml/ModelFixture.h"

namespace HB::XML::CAD
{

class CADOccurrenceTest : public ModelTest
{
protected:
    CADOccurrence& loadOccurrence(const std::string& attributes, const std::string& content = "")
    {
        return loadInProductDef<CADOccurrence>("<Occurrence " + attributes + ">" + content + "</Occurrence>");
    }
};

TEST_F(CADOccurrenceTest, AttributesAreRead)
{
    const auto& occurrence = loadOccurrence("id='o3' name='Left' materialRef='#m' transformRef='f.xml#t'"
                                            " occurrenceRefs='#o1 o2' instanceRefs='#i1\n#i2'");
    EXPECT_EQ(occurrence.getId(), "o3");
    EXPECT_EQ(occurrence.getName(), "Left");
    EXPECT_EQ(occurrence.getMaterialRef(), "#m");
    EXPECT_EQ(occurrence.getTransformRef(), "f.xml#t");
    EXPECT_EQ(ModelTestAccess::occurrenceRefs(occurrence), (Texts{"#o1", "o2"}));
    EXPECT_EQ(occurrence.getInstanceRefs(), (Texts{"#i1", "#i2"}));
}

TEST_F(CADOccurrenceTest, EverythingIsEmptyByDefault)
{
    const auto& occurrence = loadOccurrence("");
    EXPECT_EQ(occurrence.getMaterialRef(), "");
    EXPECT_EQ(occurrence.getTransformRef(), "");
    EXPECT_TRUE(ModelTestAccess::occurrenceRefs(occurrence).empty());
    EXPECT_TRUE(occurrence.getInstanceRefs().empty());
}

TEST_F(CADOccurrenceTest, AttributeNamesAreMatchedExactly)
{
    const auto& occurrence = loadOccurrence("materialref='m' TransformRef='t' instanceRef='i'");
    EXPECT_EQ(occurrence.getMaterialRef(), "");
    EXPECT_EQ(occurrence.getTransformRef(), "");
    EXPECT_TRUE(occurrence.getInstanceRefs().empty());
}

TEST_F(CADOccurrenceTest, ChildrenOverrideAttributesAndTheLastWins)
{
    const auto& occurrence =
        loadOccurrence("materialRef='#m1' transformRef='#t1'",
                       "<Transform id='t2'/><Material id='m2'/><Transform id='t3'/><Material id='m3'/>");
    EXPECT_EQ(occurrence.getTransformRef(), "t3");
    EXPECT_EQ(occurrence.getMaterialRef(), "m3");
    EXPECT_EQ(m_document.findTransform("t2")->getParent(), &occurrence);
    EXPECT_EQ(m_document.findMaterial("m2")->getParent(), &occurrence);
}

TEST_F(CADOccurrenceTest, NestedOccurrencesComeBehindThoseOfTheAttribute)
{
    const auto& occurrence = loadOccurrence(
        "occurrenceRefs='#x'", "<Occurrence id='o1'><Occurrence id='o2'/></Occurrence><Occurrence id='o3'/>");
    EXPECT_EQ(ModelTestAccess::occurrenceRefs(occurrence), (Texts{"#x", "o1", "o3"}));
    EXPECT_EQ(ModelTestAccess::occurrenceRefs(*m_document.findOccurrence("o1")), Texts{"o2"});
}

TEST_F(CADOccurrenceTest, GeneratedIdsOfNestedOnesBeginWithTheIdTheirParentHasThen)
{
    const auto& occurrence = loadOccurrence("", "<Occurrence id='given'><Occurrence/></Occurrence><Occurrence/>");
    EXPECT_TRUE(isGeneratedId(occurrence, "pd", "_o"));
    EXPECT_TRUE(isGeneratedId(firstChild<CADOccurrence>(occurrence, 1), "", "_o"));
    EXPECT_TRUE(isGeneratedId(firstChild<CADOccurrence>(firstChild<CADOccurrence>(occurrence)), "given", "_o"));
}

TEST_F(CADOccurrenceTest, UserDataIsRead)
{
    EXPECT_EQ(loadOccurrence("", "<UserData id='u'/>").getUserData()->getId(), "u");
}

TEST_F(CADOccurrenceTest, PathIsGivenAsACopy)
{
    const auto& occurrence = loadOccurrence("instanceRefs='a b'");
    occurrence.getInstanceRefs().clear();
    EXPECT_EQ(occurrence.getInstanceRefs(), (Texts{"a", "b"}));
}

} // namespace HB::XML::CAD
