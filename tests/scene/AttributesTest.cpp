#include "scene/Attributes.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Node.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "tests/scene/SceneGraphTest.h"

namespace
{

using AttributesTest = SceneGraphTest;
using osg::AttributeList;
using osg::AttributeOwner;
using osg::NodePtr;

const AttributeList wheel = {{"Material", std::string("Rubber")}, {"Spokes", std::int64_t(6)}};
const AttributeList left = {{"Side", std::string("left")}};

TEST_F(AttributesTest, ProductAndOccurrenceAreKeptApart)
{
    const osg::RefPtr<NodePtr> node(osg::Node::create());
    osg::addAttributes(node.get(), AttributeOwner::Product, wheel);
    osg::addAttributes(node.get(), AttributeOwner::Occurrence, left);
    EXPECT_EQ(osg::attributesOf(node.get(), AttributeOwner::Product), wheel);
    EXPECT_EQ(osg::attributesOf(node.get(), AttributeOwner::Occurrence), left);
    EXPECT_EQ(osg::attributesOf(osg::AttachmentContainerPtr(node.get())), (AttributeList{wheel[0], wheel[1], left[0]}));
}

TEST_F(AttributesTest, MoreComeBehindThoseThatAreThere)
{
    const osg::RefPtr<NodePtr> node(osg::Node::create());
    osg::addAttributes(node.get(), AttributeOwner::Product, left);
    osg::addAttributes(node.get(), AttributeOwner::Product, {});
    osg::addAttributes(node.get(), AttributeOwner::Product, wheel);
    EXPECT_EQ(osg::attributesOf(node.get(), AttributeOwner::Product), (AttributeList{left[0], wheel[0], wheel[1]}));
}

TEST_F(AttributesTest, NullTakesThemAway)
{
    const osg::RefPtr<NodePtr> node(osg::Node::create());
    osg::addAttributes(node.get(), AttributeOwner::Product, wheel);
    osg::addAttributes(node.get(), AttributeOwner::Occurrence, left);
    osg::setAttributes(node.get(), AttributeOwner::Product, {});
    EXPECT_TRUE(osg::attributesOf(node.get(), AttributeOwner::Product).empty());
    EXPECT_EQ(osg::attributesOf(node.get(), AttributeOwner::Occurrence), left);
}

TEST_F(AttributesTest, CopiesOfANodeShareTheAttachment)
{
    const osg::RefPtr<NodePtr> node(osg::Node::create());
    osg::addAttributes(node.get(), AttributeOwner::Product, wheel);
    const osg::RefPtr<NodePtr> copy(osg::cloneTree(node.get(), true));
    EXPECT_EQ(osg::attributeAttachment(copy.get(), AttributeOwner::Product),
              osg::attributeAttachment(node.get(), AttributeOwner::Product));
    osg::addAttributes(copy.get(), AttributeOwner::Product, left);
    EXPECT_EQ(osg::attributesOf(node.get(), AttributeOwner::Product), wheel);
}

TEST_F(AttributesTest, MaterialsWithDifferentAttributesDiffer)
{
    const osg::RefPtr<osg::SimpleMaterialPtr> a(osg::SimpleMaterial::create());
    const osg::RefPtr<osg::SimpleMaterialPtr> b(osg::SimpleMaterial::create());
    osg::addAttributes(a.get(), AttributeOwner::Product, wheel);
    EXPECT_FALSE(osg::FieldContainer::isEqual(a.get(), b.get()));
    osg::addAttributes(b.get(), AttributeOwner::Product, wheel);
    EXPECT_TRUE(osg::FieldContainer::isEqual(a.get(), b.get()));
    osg::addAttributes(b.get(), AttributeOwner::Product, left);
    EXPECT_FALSE(osg::FieldContainer::isEqual(a.get(), b.get()));
}

TEST_F(AttributesTest, ValuesAsAPersonReadsThem)
{
    EXPECT_EQ(osg::textOf(osg::Attribute{"", 0.1, "kg"}), "0.1 kg");
    EXPECT_EQ(osg::textOf(osg::AttributeValue(1e300)), "1e+300");
    EXPECT_EQ(osg::textOf(osg::AttributeValue(std::int64_t(-7))), "-7");
    EXPECT_EQ(osg::textOf(osg::AttributeValue(true)), "true");
    EXPECT_EQ(osg::textOf(osg::AttributeValue(osg::AttributeDate{"2024-05-31"})), "2024-05-31");
    EXPECT_EQ(osg::textOf(osg::AttributeValue(std::vector<std::string>{"a", "b"})), "a; b");
    EXPECT_EQ(osg::findText(wheel, "Spokes"), "6");
    EXPECT_EQ(osg::findText(wheel, "Tyre"), "");
}

} // namespace
