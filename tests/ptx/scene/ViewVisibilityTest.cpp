#include "ptx/scene/ViewVisibility.h"

#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/Tags.h"

#include <gmock/gmock.h>

using ptx::model::View;
using ptx::scene::ViewVisibility;
using testing::ElementsAre;

namespace
{

std::vector<View> threeViews()
{
    std::vector<View> views(3);
    for (std::size_t i = 0; i < views.size(); ++i)
        views[i].name = std::string(1, "ABC"[i]);
    return views;
}

} // namespace

TEST(ViewVisibility, EachViewIsToldBehindTheTagsThatAreThere)
{
    const std::vector<View> views = threeViews();
    ViewVisibility visibility(views);
    const osg::RefPtr<osg::NodePtr> node(osg::makeNodeFor(osg::Group::create()));
    osg::setTags(node.get(), {"own"});
    visibility.addTo(node.get(), {0, 2}, true);
    EXPECT_THAT(osg::tagsOf(node.get()), ElementsAre("own", "stylar::bookmark_visibilities", "bookmark[A]:visible",
                                                     "bookmark[B]:hidden", "bookmark[C]:visible"));
    EXPECT_TRUE(node->isActive());
    visibility.addTo(node.get(), {}, false);
    EXPECT_FALSE(node->isActive());
    EXPECT_GT(visibility.tags(), 5u);
}

TEST(ViewVisibility, TheViewAtOpeningCounts)
{
    std::vector<View> views = threeViews();
    views[1].isAtOpening = true;
    ViewVisibility visibility(views);
    const osg::RefPtr<osg::NodePtr> node(osg::makeNodeFor(osg::Group::create()));
    visibility.addTo(node.get(), {0, 2}, true);
    EXPECT_FALSE(node->isActive());
    visibility.addTo(node.get(), {1}, false);
    EXPECT_TRUE(node->isActive());
}
