#include "importer/inventory/AttributeChoice.h"

#include "host/OSGSystem/SimpleMaterial.h"
#include "tests/importer/inventory/InventoryScene.h"

namespace
{

using namespace importer::inventory;
using osg::AttributeOwner;

class AttributeChoiceTest : public InventoryTest
{
protected:
    AttributeChoiceTest()
    {
        const osg::GeometryPtr core = files::makeGeometry("", box({1, 1, 1}), material.get());
        add(root.get(), "shape", core);
        osg::addAttributes(material.get(), AttributeOwner::Product, {text("Coat", "zinc")});
        const osg::NodePtr first = addProduct(root.get(), "first", "bolt", {text("Material", "steel")});
        osg::setAttributes(add(root.get(), "second"), AttributeOwner::Product,
                           osg::attributeAttachment(first, AttributeOwner::Product));
        osg::addAttributes(first, AttributeOwner::Occurrence, {text("Side", "left")});
    }

    void TearDown() override
    {
        material = osg::SimpleMaterialPtr();
        InventoryTest::TearDown();
    }

    osg::AttributeList attributes(unsigned child) const
    {
        return osg::attributesOf(osg::AttachmentContainerPtr(root->getChild(child)));
    }

    osg::RefPtr<osg::SimpleMaterialPtr> material{osg::SimpleMaterial::create()};
};

TEST_F(AttributeChoiceTest, PatternsTakeAndLeave)
{
    EXPECT_TRUE((AttributeChoice{AttributeDetail::All, {}}).takes("Cost"));
    EXPECT_FALSE((AttributeChoice{AttributeDetail::None, {"*"}}).takes("Cost"));
    const AttributeChoice some{AttributeDetail::All, {"C*", "!Cost", "Mass"}};
    EXPECT_TRUE(some.takes("Colour"));
    EXPECT_FALSE(some.takes("Cost"));
    EXPECT_TRUE(some.takes("Mass"));
    EXPECT_FALSE(some.takes("Author"));
    const AttributeChoice others{AttributeDetail::All, {"!Cost"}};
    EXPECT_TRUE(others.takes("Author"));
    EXPECT_FALSE(others.takes("Cost"));
}

TEST_F(AttributeChoiceTest, WhatIsNotChosenGoesFromNodesAndMaterials)
{
    applyAttributeChoice(root.get(), {AttributeDetail::All, {"Material"}});
    EXPECT_EQ(attributes(1), (osg::AttributeList{text("Material", "steel")}));
    EXPECT_TRUE(osg::attributesOf(osg::AttachmentContainerPtr(material.get())).empty());
    EXPECT_EQ(osg::attributeAttachment(root->getChild(1), AttributeOwner::Product),
              osg::attributeAttachment(root->getChild(2), AttributeOwner::Product));
}

TEST_F(AttributeChoiceTest, NamesAloneAreWithoutValues)
{
    applyAttributeChoice(root.get(), {AttributeDetail::Names, {}});
    EXPECT_EQ(attributes(1), (osg::AttributeList{text("Product", ""), text("Material", ""), text("Side", "")}));
}

TEST_F(AttributeChoiceTest, NoneTakesTheAttachmentsAway)
{
    applyAttributeChoice(root.get(), {AttributeDetail::None, {}});
    EXPECT_FALSE(osg::attributeAttachment(root->getChild(1), AttributeOwner::Product));
    EXPECT_FALSE(osg::attributeAttachment(root->getChild(1), AttributeOwner::Occurrence));
}

TEST_F(AttributeChoiceTest, CountsWhatIsSharedOnce)
{
    EXPECT_EQ(countAttributes(root.get()),
              (std::map<std::string, std::size_t>{{"Coat", 1}, {"Material", 1}, {"Product", 1}, {"Side", 1}}));
}

} // namespace
