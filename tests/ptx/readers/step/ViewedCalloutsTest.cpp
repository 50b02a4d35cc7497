#include "ptx/readers/step/ViewedCallouts.h"

#include "ptx/core/Log.h"

#include <gmock/gmock.h>

#include <algorithm>

using namespace ptx::step;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

class ViewedCalloutsTest : public testing::Test
{
protected:
    SavedView view(std::vector<std::uint32_t> drawings) const { return {"", {}, std::move(drawings)}; }
    annotations::Callout callout(std::vector<std::uint32_t> models, bool isHidden = false) const
    {
        annotations::Callout made;
        made.models = std::move(models);
        made.isHidden = isHidden;
        return made;
    }
    /// Which view is the default; as many as there are for none.
    static std::ptrdiff_t defaultOf(const std::vector<SavedView>& views)
    {
        return std::find_if(views.begin(), views.end(), [](const SavedView& view) { return view.isDefault; }) -
               views.begin();
    }

    ptx::core::Log log{"/dev/null"};
};

} // namespace

TEST_F(ViewedCalloutsTest, AViewShowsWhatAnyOfItsDrawingsLists)
{
    const std::vector<SavedView> views = {view({10}), view({20, 30}), view({30})};
    const ViewedCallouts viewed(views, 1, log);
    EXPECT_THAT(viewed.viewsOf(callout({10})), ElementsAre(0u));
    EXPECT_THAT(viewed.viewsOf(callout({10, 30})), ElementsAre(0u, 1u, 2u));
    EXPECT_THAT(viewed.viewsOf(callout({20, 30})), ElementsAre(1u, 2u));
    EXPECT_THAT(viewed.viewsOf(callout({5})), IsEmpty());
}

TEST_F(ViewedCalloutsTest, TooManyPairsShowNothingAndAreTold)
{
    const std::vector<SavedView> views(2000, view({10}));
    EXPECT_EQ(ViewedCallouts(views, 1000, log).viewsOf(callout({10})).size(), 2000u);
    EXPECT_EQ(log.warnings(), 0);
    EXPECT_THAT(ViewedCallouts(views, 1001, log).viewsOf(callout({10})), IsEmpty());
    EXPECT_EQ(log.warnings(), 1);
}

TEST_F(ViewedCalloutsTest, TheOnlyViewWithoutHiddenCalloutsIsTheDefault)
{
    std::vector<SavedView> views = {view({10}), view({20}), view({30})};
    const ViewedCallouts viewed(views, 2, log);
    annotations::Drawing drawing;
    drawing.callouts = {callout({10, 20}), callout({10}, true)};
    findDefaultView(views, viewed, drawing);
    EXPECT_EQ(defaultOf(views), 1);
    findDefaultView(views, viewed, drawing);
    EXPECT_EQ(std::count_if(views.begin(), views.end(), [](const SavedView& each) { return each.isDefault; }), 1);
}

TEST_F(ViewedCalloutsTest, WhereNothingWasHiddenOrSeveralViewsHaveNoneNoneIsTheDefault)
{
    std::vector<SavedView> views = {view({10}), view({20}), view({30})};
    const ViewedCallouts viewed(views, 3, log);
    annotations::Drawing drawing;
    drawing.callouts = {callout({10}), callout({20})};
    findDefaultView(views, viewed, drawing);
    EXPECT_EQ(defaultOf(views), 3);
    drawing.callouts.push_back(callout({30}, true));
    findDefaultView(views, viewed, drawing);
    EXPECT_EQ(defaultOf(views), 3);
}
