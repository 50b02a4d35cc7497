#include "scene/ViewTags.h"

#include "host/OSGSystem/Node.h"
#include "scene/Tags.h"
#include "tests/scene/SceneGraphTest.h"

namespace
{

using ViewTagsTest = SceneGraphTest;
using Texts = std::vector<std::string>;

TEST_F(ViewTagsTest, FactsAreTagsAndComeBack)
{
    const Texts tags = osg::tagsFor({1.5F, {{0, 0, -1, 12.25F}, {1, 0, 0, -3}}, true});
    EXPECT_EQ(tags, (Texts{"ptx::view-aspect=1.5", "ptx::view-section=0 0 -1 12.25", "ptx::view-section=1 0 0 -3",
                           "ptx::view-annotations-in-front"}));
    const osg::RefPtr<osg::NodePtr> node(osg::Node::create());
    osg::setTags(node.get(), tags);
    const osg::ViewFacts facts = osg::viewFactsOf(node.get());
    EXPECT_EQ(facts.aspect, 1.5F);
    EXPECT_EQ(facts.sections, (std::vector<osg::HalfSpace>{{0, 0, -1, 12.25F}, {1, 0, 0, -3}}));
    EXPECT_TRUE(facts.areAnnotationsInFront);
    EXPECT_EQ(osg::tagsFor({}), Texts());
}

TEST_F(ViewTagsTest, TagsThatCannotBeReadSayNothing)
{
    const osg::RefPtr<osg::NodePtr> node(osg::Node::create());
    osg::setTags(node.get(), {"ptx::view-aspect=-2", "ptx::view-aspect=", "ptx::view-section=1 0 0",
                              "ptx::view-section=1 0 0 nan", "ptx::view-section=1 0 0 2 3", "ptx::view-section"});
    EXPECT_EQ(osg::viewFactsOf(node.get()).aspect, 0);
    EXPECT_TRUE(osg::viewFactsOf(node.get()).sections.empty());
    EXPECT_FALSE(osg::viewFactsOf(node.get()).areAnnotationsInFront);
}

} // namespace
