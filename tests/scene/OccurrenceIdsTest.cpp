#include "scene/OccurrenceIds.h"

#include "host/OSGSystem/Names.h"
#include "scene/Attributes.h"
#include "scene/SceneEdits.h"
#include "tests/scene/SceneGraphTest.h"

namespace
{

using osg::AttributeOwner;
using osg::NodePtr;
using osg::OccurrenceIds;

class OccurrenceIdsTest : public SceneGraphTest
{
protected:
    void TearDown() override
    {
        root = NodePtr();
        SceneGraphTest::TearDown();
    }

    static NodePtr add(const NodePtr& parent, const char* name, const char* product = "")
    {
        const NodePtr node = osg::Node::create();
        osg::addChild(parent, node);
        if (*name)
            osg::setName(node, name);
        if (*product)
            osg::addAttributes(node, AttributeOwner::Product, {{"Product", std::string(product)}});
        return node;
    }

    osg::RefPtr<NodePtr> root{osg::Node::create()};
};

TEST_F(OccurrenceIdsTest, AnIdIsTheStepsFromBelowTheRoot)
{
    const NodePtr axle = add(root.get(), "front axle", "axle");
    const NodePtr wheel = add(axle, "wheel", "wheel");
    const OccurrenceIds ids(root.get());
    EXPECT_EQ(ids.of(axle), "front axle@axle");
    EXPECT_EQ(ids.of(wheel), "front axle@axle/wheel");
    EXPECT_EQ(ids.step(wheel), "wheel");
    EXPECT_EQ(ids.of(root.get()), "");
    EXPECT_EQ(ids.of({}), "");
}

TEST_F(OccurrenceIdsTest, EqualSiblingsOfAProductAreCounted)
{
    const NodePtr first = add(root.get(), "bolt", "M8");
    const NodePtr other = add(root.get(), "bolt", "M10");
    const NodePtr second = add(root.get(), "bolt", "M8");
    const OccurrenceIds ids(root.get());
    EXPECT_EQ(ids.of(first), "bolt@M8");
    EXPECT_EQ(ids.of(other), "bolt@M10");
    EXPECT_EQ(ids.of(second), "bolt@M8#2");
}

TEST_F(OccurrenceIdsTest, SiblingsThatComeLaterOrAreOthersChangeNothing)
{
    const NodePtr axle = add(root.get(), "axle", "axle");
    const NodePtr wheel = add(axle, "left", "wheel");
    const std::string before = OccurrenceIds(root.get()).of(wheel);
    const NodePtr spare = add(root.get(), "spare", "wheel");
    // Moves behind its new sibling, and gets an equal one behind it.
    osg::addChild(root.get(), axle);
    add(axle, "left", "wheel");
    const OccurrenceIds ids(root.get());
    EXPECT_EQ(ids.of(wheel), before);
    EXPECT_EQ(ids.of(spare), "spare@wheel");
}

TEST_F(OccurrenceIdsTest, AReferenceDesignatorIsBetterThanTheName)
{
    const NodePtr node = add(root.get(), "NAUO17", "resistor");
    osg::addAttributes(node, AttributeOwner::Occurrence, {{"Designator", std::string("R12")}});
    EXPECT_EQ(OccurrenceIds(root.get()).of(node), "R12@resistor");
}

TEST_F(OccurrenceIdsTest, ANodeWithoutANameIsCalledAsItsProduct)
{
    const NodePtr part = add(root.get(), "", "rod");
    const NodePtr nothing = add(root.get(), "");
    const OccurrenceIds ids(root.get());
    EXPECT_EQ(ids.of(part), "rod");
    EXPECT_EQ(ids.of(nothing), "-");
}

TEST_F(OccurrenceIdsTest, MarksWithinNamesAreEscaped)
{
    const NodePtr odd = add(root.get(), "a/b@c#2%", "x");
    EXPECT_EQ(OccurrenceIds(root.get()).of(odd), "a%2Fb%40c%232%25@x");
}

} // namespace
