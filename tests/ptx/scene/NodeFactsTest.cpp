#include "ptx/scene/NodeFacts.h"

#include "host/OSGSystem/TreeFunctions.h"
#include "scene/AttributeLimits.h"
#include "scene/Tags.h"

#include <gtest/gtest.h>

using namespace ptx::model;
using namespace ptx::scene;
using osg::AttributeList;
using osg::AttributeOwner;
using NodeRef = osg::RefPtr<osg::NodePtr>;

namespace
{

Occurrence occurrence(const std::string& name, std::vector<std::string> tags = {})
{
    return {0, name, {}, NoAppearance, true, std::move(tags)};
}

struct Wheel {
    Model model;
    Wheel()
    {
        model.products.push_back({"wheel", {}, NoBody, NoAppearance, {"ptx::layer=7", "ptx::missing=x\ny"}, {}});
    }
};

} // namespace

TEST(NodeFacts, AttributesOfProductAndOccurrenceAreKeptApartAndTheRestAreTags)
{
    const Wheel wheel;
    NodeFacts facts(wheel.model);
    const NodeRef node(osg::Node::create());
    facts.addTo(node.get(), occurrence("left", {"a=b", "ptx::attribute::Side=port"}));
    EXPECT_EQ(osg::attributesOf(node.get(), AttributeOwner::Product),
              (AttributeList{{"Product", std::string("wheel")}, {"Layer", std::string("7")}}));
    EXPECT_EQ(osg::attributesOf(node.get(), AttributeOwner::Occurrence),
              (AttributeList{{"Side", std::string("port")}}));
    EXPECT_EQ(osg::tagsOf(node.get()), (std::vector<std::string>{"a=b", "ptx::missing=x\ny"}));
}

TEST(NodeFacts, NodesOfAProductShareItsAttributes)
{
    const Wheel wheel;
    NodeFacts facts(wheel.model);
    const NodeRef left(osg::Node::create());
    const NodeRef right(osg::Node::create());
    facts.addTo(left.get(), occurrence("left"));
    facts.addTo(right.get(), occurrence("right"));
    EXPECT_TRUE(osg::attributeAttachment(left.get(), AttributeOwner::Product));
    EXPECT_EQ(osg::attributeAttachment(left.get(), AttributeOwner::Product),
              osg::attributeAttachment(right.get(), AttributeOwner::Product));
    EXPECT_FALSE(osg::attributeAttachment(left.get(), AttributeOwner::Occurrence));
}

TEST(NodeFacts, AnOccurrenceKeepsTheNameThatItsNodeDoesNotBear)
{
    const Wheel wheel;
    NodeFacts facts(wheel.model);
    const NodeRef node(osg::Node::create());
    facts.addTo(node.get(), occurrence("NAUO3"));
    EXPECT_EQ(osg::attributesOf(node.get(), AttributeOwner::Occurrence),
              (AttributeList{{"Occurrence", std::string("NAUO3")}}));
}

TEST(NodeFacts, ExactMeasuresOfTheBodyAreThoseOfTheProduct)
{
    Model model;
    model.products.push_back({"", {}, 0, NoAppearance, {}, {}});
    model.bodies.push_back({{}, {22.5, 6.25}});
    const NodeRef node(osg::Node::create());
    NodeFacts(model).addTo(node.get(), occurrence(""));
    EXPECT_EQ(osg::attributesOf(node.get(), AttributeOwner::Product),
              (AttributeList{{"Exact area", 22.5, "mm2"}, {"Exact volume", 6.25, "mm3"}}));
}

TEST(NodeFacts, WhatIsTooMuchIsCutAndCounted)
{
    Model model;
    std::vector<std::string> tags(osg::MostAttributes + 7, "ptx::attribute::a=b");
    tags[3] = "ptx::attribute::long=" + std::string(osg::MostTextBytes - 1, 'x') + "\xC3\xA4";
    model.products.push_back({"", {}, NoBody, NoAppearance, std::move(tags), {}});
    const NodeRef node(osg::Node::create());
    NodeFacts(model).addTo(node.get(), occurrence(""));
    const AttributeList attributes = osg::attributesOf(node.get(), AttributeOwner::Product);
    ASSERT_EQ(attributes.size(), osg::MostAttributes + 2);
    EXPECT_EQ(std::get<std::string>(attributes[3].value), std::string(osg::MostTextBytes - 1, 'x'));
    EXPECT_EQ(attributes[osg::MostAttributes], (osg::Attribute{"Attributes left out", std::int64_t(7)}));
    EXPECT_EQ(attributes.back(), (osg::Attribute{"Attributes cut short", std::int64_t(1)}));
}

TEST(NodeFacts, AProductThatNothingIsSaidOfGivesNone)
{
    Model model;
    model.products.emplace_back();
    const NodeRef node(osg::Node::create());
    NodeFacts(model).addTo(node.get(), occurrence(""));
    EXPECT_TRUE(osg::attributesOf(osg::AttachmentContainerPtr(node.get())).empty());
    EXPECT_TRUE(osg::tagsOf(node.get()).empty());
}
