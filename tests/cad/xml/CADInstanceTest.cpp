#include "cad/xml/CADInstance.h"

#include "cad/xml/CADTransform.h"
#include "cad/xml/CADUserData.h"
#include "tests/cad/xml/ModelFixture.h"

#include <tinyxml.h>

namespace HB::XML::CAD
{

class CADInstanceTest : public ModelTest
{
protected:
    CADInstance& loadInstance(const std::string& attributes, const std::string& content = "")
    {
        return loadInGraph<CADInstance>("<Instance " + attributes + ">" + content + "</Instance>");
    }
};

TEST_F(CADInstanceTest, AttributesAreRead)
{
    const auto& instance = loadInstance("id='i3' name='Bolt' partRef='#p' materialRef='f.xml#m' transformRef='t'"
                                        " representationRefs='#r1 r2'");
    EXPECT_EQ(instance.getId(), "i3");
    EXPECT_EQ(instance.getName(), "Bolt");
    EXPECT_EQ(instance.getPartRef(), "#p");
    EXPECT_EQ(instance.getMaterialRef(), "f.xml#m");
    EXPECT_EQ(instance.getTransformRef(), "t");
    EXPECT_EQ(ModelTestAccess::representationRefs(instance), (Texts{"#r1", "r2"}));
    EXPECT_TRUE(instance.hasMaterialRef());
    EXPECT_TRUE(instance.hasTransformRef());
}

TEST_F(CADInstanceTest, EverythingIsEmptyByDefault)
{
    const auto& instance = loadInstance("id='i3'");
    EXPECT_EQ(instance.getName(), "");
    EXPECT_EQ(instance.getPartRef(), "");
    EXPECT_EQ(instance.getMaterialRef(), "");
    EXPECT_EQ(instance.getTransformRef(), "");
    EXPECT_TRUE(ModelTestAccess::representationRefs(instance).empty());
    EXPECT_FALSE(instance.hasMaterialRef());
    EXPECT_FALSE(instance.hasTransformRef());
    EXPECT_EQ(instance.getUserData(), nullptr);
}

TEST_F(CADInstanceTest, AttributeNamesAreMatchedExactly)
{
    const auto& instance = loadInstance("partref='p' MaterialRef='m' transformRefs='t'");
    EXPECT_EQ(instance.getPartRef(), "");
    EXPECT_FALSE(instance.hasMaterialRef());
    EXPECT_FALSE(instance.hasTransformRef());
}

TEST_F(CADInstanceTest, ReferencesAreNotSplit)
{
    EXPECT_EQ(loadInstance("partRef=' #p q '").getPartRef(), " #p q ");
}

TEST_F(CADInstanceTest, GeneratedIdHasNoUnderscore)
{
    EXPECT_TRUE(isGeneratedId(loadInstance(""), "g", "inst"));
}

TEST_F(CADInstanceTest, GeneratedIdIsMadeBehindUserDataAndBeforeTransforms)
{
    const auto& instance = loadInstance("", "<Transform/><UserData/>");
    const auto children = ModelTestAccess::children(instance);
    ASSERT_EQ(children.size(), 2U);
    EXPECT_TRUE(isGeneratedId(*children[0], "", "_ud"));
    EXPECT_TRUE(isGeneratedId(*children[1], instance.getId(), "_tr"));
    EXPECT_EQ(m_document.findInstance(instance.getId()), &instance);
}

TEST_F(CADInstanceTest, TransformChildReplacesTheAttributeByItsBareId)
{
    EXPECT_EQ(loadInstance("transformRef='#t1'", "<Transform id='t2'/>").getTransformRef(), "t2");
}

TEST_F(CADInstanceTest, LastTransformChildWins)
{
    const auto& instance = loadInstance("id='i'", "<Transform id='t1'/><Transform id='t2'/>");
    EXPECT_EQ(instance.getTransformRef(), "t2");
    EXPECT_EQ(m_document.findTransform("t1")->getParent(), &instance);
}

TEST_F(CADInstanceTest, TransformChildWithoutIdIsReferredToByItsGeneratedId)
{
    const auto& instance = loadInstance("id='i'", "<Transform>1 2 3</Transform>");
    ASSERT_NE(m_document.findTransform(instance.getTransformRef()), nullptr);
    EXPECT_EQ(m_document.findTransform(instance.getTransformRef())->getTransformValues(), (Floats{1.0F, 2.0F, 3.0F}));
}

TEST_F(CADInstanceTest, ProductInstanceIsTheSameThing)
{
    const auto& instance = loadInGraph<CADInstance>("<ProductInstance id='i' partRef='p'/>");
    EXPECT_EQ(m_document.findInstance("i"), &instance);
    EXPECT_EQ(instance.getPartRef(), "p");
}

TEST_F(CADInstanceTest, InstanceWithoutParentGeneratesItsIdAlone)
{
    CADInstance instance(nullptr);
    instance.load(TiXmlElement("Instance"));
    EXPECT_TRUE(isGeneratedId(instance, "", "inst"));
}

} // namespace HB::XML::CAD
