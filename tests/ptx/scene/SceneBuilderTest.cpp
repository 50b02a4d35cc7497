#include "ptx/scene/SceneBuilder.h"

#include "files/scenefile/ConvertedTree.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "ptx/model/ModelMerge.h"
#include "scene/Attributes.h"
#include "scene/Tags.h"

#include <gmock/gmock.h>

using namespace ptx;
using testing::ElementsAre;

namespace
{

model::Occurrence place(std::size_t product, const char* name, float x)
{
    model::Occurrence occurrence;
    occurrence.product = product;
    occurrence.name = name;
    occurrence.placement[12] = x;
    return occurrence;
}

osg::RefPtr<osg::NodePtr> build(const model::Model& model)
{
    const core::Outcome<scene::Scene> scene = scene::buildScene(model, "/cad/car.stp", 0);
    EXPECT_TRUE(scene);
    return scene.value().root;
}

/// A car, of product 0, with `child`, which stands for /cad/wheel.stp.
model::Model carWith(model::Occurrence child)
{
    model::Model model;
    model.products.resize(2);
    model.products[1].name = "wheel";
    model.references.push_back({1, "/cad/wheel.stp", "wheel.stp"});
    model.products[0].children = {std::move(child)};
    model.roots = {place(0, "car", 0)};
    return model;
}

osg::ExtReferencePtr referenceAt(const osg::NodePtr& node)
{
    return node ? osg::fcCast<osg::ExtReference>(node->getCore()) : osg::ExtReferencePtr();
}

} // namespace

TEST(SceneBuilder, APartInAnotherFileIsAReferenceInItsPlace)
{
    model::Occurrence wheel = place(1, "left wheel", 7);
    wheel.tags = {"ptx::layer=3"};
    wheel.isVisible = false;
    const osg::RefPtr<osg::NodePtr> root = build(carWith(wheel));
    const osg::NodePtr node = root->getChild(0)->getChild(0);
    ASSERT_TRUE(referenceAt(node));
    EXPECT_EQ(referenceAt(node)->getSourceFile()->getPath(), "/cad/wheel.stp");
    EXPECT_EQ(referenceAt(node)->getMatrix()[12], 7);
    EXPECT_STREQ(osg::getName(node), "left wheel");
    EXPECT_EQ(osg::findText(osg::attributesOf(node, osg::AttributeOwner::Occurrence), "Layer"), "3");
    EXPECT_FALSE(node->isActive());
    EXPECT_EQ(node->getNChildren(), 0u);
}

TEST(SceneBuilder, AReferenceWithoutATransformHangsBelowWhatItMustNotTakeAlong)
{
    model::Occurrence wheel = place(1, "left wheel", 0);
    wheel.tags = {"ptx::layer=3"};
    wheel.isVisible = false;
    const osg::RefPtr<osg::NodePtr> root = build(carWith(wheel));
    const osg::NodePtr node = root->getChild(0)->getChild(0);
    EXPECT_EQ(node->getCore()->getType().getId(), osg::Transform3D::_type.getId());
    EXPECT_STREQ(osg::getName(node), "left wheel");
    EXPECT_EQ(osg::findText(osg::attributesOf(node, osg::AttributeOwner::Occurrence), "Layer"), "3");
    EXPECT_FALSE(node->isActive());
    ASSERT_EQ(node->getNChildren(), 1u);
    const osg::NodePtr below = node->getChild(0);
    ASSERT_TRUE(referenceAt(below));
    EXPECT_EQ(referenceAt(below)->getSourceFile()->getPath(), "/cad/wheel.stp");
    EXPECT_TRUE(referenceAt(below)->isIdentity());
    EXPECT_EQ(referenceAt(below)->getState(), 0u);
    EXPECT_EQ(osg::getName(below), nullptr);
    EXPECT_TRUE(osg::attributesOf(osg::AttachmentContainerPtr(below)).empty());
    EXPECT_TRUE(osg::tagsOf(below).empty());
    EXPECT_TRUE(below->isActive());
    EXPECT_EQ(below->getNChildren(), 0u);
}

TEST(SceneBuilder, WhatAProductHasBesidesItsFileComesFirst)
{
    model::Model model = carWith(place(1, "left wheel", 7));
    model.products.resize(3);
    model.products[1].children = {place(2, "bolt", 1)};
    const osg::RefPtr<osg::NodePtr> root = build(model);
    const osg::NodePtr node = root->getChild(0)->getChild(0);
    EXPECT_FALSE(referenceAt(node));
    ASSERT_EQ(node->getNChildren(), 2u);
    EXPECT_STREQ(osg::getName(node->getChild(0)), "bolt");
    EXPECT_TRUE(referenceAt(node->getChild(1)));
}

namespace
{

/// Below each node its transform's number in the order in which they are met, and its place.
std::vector<std::string> transformsOf(const osg::NodePtr& root)
{
    std::vector<const osg::NodeCore*> known;
    std::vector<std::string> result;
    osg::traverse(root, [&](const osg::NodePtr& node) {
        const auto transform = osg::fcCast<osg::Transform3D>(node->getCore());
        auto found = std::find(known.begin(), known.end(), transform.get());
        if (found == known.end())
            found = known.insert(known.end(), transform.get());
        result.push_back(std::string(osg::getName(node)) + " " + std::to_string(found - known.begin()) + " at " +
                         std::to_string(int(transform->getMatrix()[12])));
        return osg::Action::Continue;
    });
    return result;
}

} // namespace

TEST(SceneBuilder, CopiesOfATreeShareTheirTransformsButNotThoseOfTheirPlaces)
{
    model::Model model;
    model.products.resize(3);
    model.products[0].children = {place(1, "left", 10), place(2, "right", 20), place(1, "left", 30)};
    model.roots = {place(0, "car", 0)};
    const std::vector<model::Occurrence> file = [&] {
        model::Model part;
        part.products.resize(3);
        part.products[0].children = {place(1, "first", 1), place(1, "second", 2)};
        part.products[1].children = {place(2, "bolt", 5)};
        part.roots = {place(0, "wheel", 0), place(1, "spare", 9)};
        return model::mergeModel(model, part, 0);
    }();
    model.products[1].children = file;
    model.products[2].children = file;
    EXPECT_THAT(transformsOf(build(model)->getChild(0)),
                ElementsAre("car 0 at 0", "left 1 at 10", "wheel 2 at 0", "first 3 at 1", "bolt 4 at 5",
                            "second 5 at 2", "bolt 6 at 5", "spare 7 at 9", "bolt 8 at 5", "right 9 at 20",
                            "wheel 2 at 0", "first 3 at 1", "bolt 4 at 5", "second 5 at 2", "bolt 6 at 5",
                            "spare 7 at 9", "bolt 8 at 5", "left 10 at 30", "wheel 2 at 0", "first 3 at 1",
                            "bolt 4 at 5", "second 5 at 2", "bolt 6 at 5", "spare 7 at 9", "bolt 8 at 5"));
}

TEST(SceneBuilder, ACopyWithinACopyIsSharedWithinThatOneAlone)
{
    // As a reader numbers them: the file of a bolt, that of a wheel which places it twice, and both of them in the car.
    model::Model model;
    model.products.resize(6);
    const auto head = [](std::size_t product, const char* name, std::size_t copied) {
        model::Occurrence occurrence = place(product, name, 0);
        occurrence.copied = copied;
        return occurrence;
    };
    model.products[5].children = {place(4, "thread", 3)};
    model.products[3].children = {head(5, "bolt", 0)};
    model.products[2].children = {place(3, "first", 1), place(3, "second", 2)};
    model.products[1].children = {head(2, "wheel", 1)};
    model.products[0].children = {place(1, "left", 10), place(3, "lone", 15), place(1, "right", 20)};
    model.roots = {place(0, "car", 0)};
    EXPECT_THAT(transformsOf(build(model)->getChild(0)),
                ElementsAre("car 0 at 0", "left 1 at 10", "wheel 2 at 0", "first 3 at 1", "bolt 4 at 0",
                            "thread 5 at 3", "second 6 at 2", "bolt 4 at 0", "thread 5 at 3", "lone 7 at 15",
                            "bolt 8 at 0", "thread 9 at 3", "right 10 at 20", "wheel 2 at 0", "first 3 at 1",
                            "bolt 4 at 0", "thread 5 at 3", "second 6 at 2", "bolt 4 at 0", "thread 5 at 3"));
}
