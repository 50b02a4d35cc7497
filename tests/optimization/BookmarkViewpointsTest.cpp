#include "optimization/BookmarkViewpoints.h"
#include "host/znKernelServices/znCameraService.h"
#include "host/znOpenSGUberCamera/znUberCameraUtils.h"
#include "optimization/BookmarkConversion.h"
#include "tests/optimization/BookmarkTest.h"

using namespace optimization;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{

class BookmarkViewpoints : public BookmarkTest
{
protected:
    /// The names of the nodes in the tree of cameras, with their depth as dots.
    std::vector<std::string> cameraTree()
    {
        std::vector<std::string> lines;
        osg::traverse(zn::cameras::sessionCameras().root(), [&lines](const osg::NodePtr& node) {
            std::string dots;
            for (osg::NodePtr parent = node->getParent(); parent; parent = parent->getParent())
                dots += '.';
            lines.push_back(dots + nameOf(node));
            return osg::Action::Continue;
        });
        return lines;
    }
    znVariantSet* set(const char* name) { return znVariants::findVariantSet(QString::fromUtf8(name)); }
};

TEST_F(BookmarkViewpoints, ACameraBecomesAViewpointBelowTheTrackOfItsCamera)
{
    const osg::UberCameraPtr camera = addCamera(addBookmark("Open Roof"), {"Camera1", "other"});
    convertStylarBookmarks(root, false);
    EXPECT_TRUE(znUberCameraPool::get(camera->getContainerId()) == camera);
    EXPECT_EQ(camera->getFlags() & 4U, 4U);
    EXPECT_EQ(znUberCameraUtils::getName(camera), QStringLiteral("Open Roof_vp"));
    EXPECT_THAT(texts(set("Open Roof")->getViewpoints()), ElementsAre("Open Roof_vp"));
    EXPECT_EQ(set("Open Roof")->m_viewpointName, QStringLiteral("Open Roof_vp"));
    EXPECT_THAT(cameraTree(), ElementsAre("Cameras", ".Camera1", "..Camera1_track", "...Open Roof_vp"));
    EXPECT_EQ(root->getNChildren(), 0U);
}

TEST_F(BookmarkViewpoints, TheHostIsAskedInThisOrder)
{
    osg::NodePtr node = addBookmark("Red");
    const osg::UberCameraPtr camera = addCamera(node, {"Camera1"});
    znVariantSet* red = znVariants::createVariantSet(QStringLiteral("Red"), true, nullptr);
    const std::string id = std::to_string(camera->getContainerId());
    const std::string child = zn::tracetext::of(node->getChild(0));
    const std::vector<std::string> calls = callsOf([&] { initViewPoints(node, red); });
    ASSERT_EQ(calls.size(), 12U) << testing::PrintToString(calls);
    EXPECT_EQ(calls[0], "znUberCameraPool::remove(" + id + ")");
    EXPECT_EQ(calls[1], "znNodeUtils::getTags(" + child + ")");
    EXPECT_EQ(calls[2], "znCameraService::createCamera('Camera1', 0)");
    EXPECT_THAT(calls[3], HasSubstr("zndCameraNode::getDefaultCameraTrack("));
    EXPECT_THAT(calls[4], HasSubstr("znCameraService::createCameraTrack('Camera1_track', "));
    EXPECT_EQ(calls[5], "znNodeUtils::getName(" + zn::tracetext::of(node) + ")");
    EXPECT_EQ(calls[6], "znCameraService::findViewpoint('Red_vp')");
    EXPECT_THAT(calls[7], HasSubstr("znQRPCConverter::idToNode("));
    EXPECT_THAT(calls[8], HasSubstr("znUberCameraPool::add(" + id + ", node "));
    EXPECT_EQ(calls[9], "znUberCameraUtils::setName(" + id + ", 'Red_vp', false)");
    EXPECT_EQ(calls[10], "znUberCameraPool::get(" + id + ")");
    EXPECT_EQ(calls[11], "znVariantSet::addViewpoint('Red', 'Red_vp')");
}

TEST_F(BookmarkViewpoints, TheFlagIsSetWithinItsBracket)
{
    osg::NodePtr node = addBookmark("Red");
    const osg::UberCameraPtr camera = addCamera(node, {"Camera1"});
    znVariantSet* red = znVariants::createVariantSet(QStringLiteral("Red"), true, nullptr);
    const osg::EditAudit audit;
    initViewPoints(node, red);
    EXPECT_THAT(audit.brackets(), testing::Contains(osg::EditAudit::Record{camera->getContainerId(), "UberCamera",
                                                                           osg::Transform3DBase::FlagsFieldMask}));
    EXPECT_THAT(audit.unbracketed(), IsEmpty());
}

TEST_F(BookmarkViewpoints, ATrackThatIsThereIsUsedAgain)
{
    addCamera(addBookmark("Red"), {"Camera1"});
    addCamera(addBookmark("Blue"), {"Camera1"});
    convertStylarBookmarks(root, false);
    EXPECT_THAT(cameraTree(), ElementsAre("Cameras", ".Camera1", "..Camera1_track", "...Red_vp", "...Blue_vp"));
}

TEST_F(BookmarkViewpoints, AViewpointThatIsThereWins)
{
    const osg::UberCameraPtr first = addCamera(addBookmark("Red"), {"Camera1"});
    convertStylarBookmarks(root, false);
    const osg::UberCameraPtr second = addCamera(addBookmark("Red"), {"Camera1"});
    const unsigned secondId = second->getContainerId();
    convertStylarBookmarks(root, false);
    EXPECT_FALSE(znUberCameraPool::get(secondId));
    EXPECT_TRUE(znUberCameraPool::get(first->getContainerId()) == first);
    EXPECT_THAT(texts(set("Red")->getViewpoints()), ElementsAre("Red_vp"));
    EXPECT_THAT(cameraTree(), ElementsAre("Cameras", ".Camera1", "..Camera1_track", "...Red_vp"));
}

TEST_F(BookmarkViewpoints, OfSeveralCamerasTheFirstBecomesTheViewpoint)
{
    const osg::NodePtr node = addBookmark("Red");
    const osg::UberCameraPtr first = addCamera(node, {"A"});
    const unsigned second = addCamera(node, {"B"})->getContainerId();
    convertStylarBookmarks(root, false);
    EXPECT_TRUE(znUberCameraPool::get(first->getContainerId()));
    EXPECT_FALSE(znUberCameraPool::get(second));
    EXPECT_THAT(cameraTree(), ElementsAre("Cameras", ".A", "..A_track", "...Red_vp", ".B", "..B_track"));
}

TEST_F(BookmarkViewpoints, ACameraWithoutTagsHasAnEmptyName)
{
    addCamera(addBookmark("Red"), {});
    convertStylarBookmarks(root, false);
    EXPECT_THAT(cameraTree(), ElementsAre("Cameras", ".", ".._track", "...Red_vp"));
}

TEST_F(BookmarkViewpoints, OtherChildrenAndDeeperCamerasArePassedOver)
{
    const osg::NodePtr node = addBookmark("Red");
    node->addChild(osg::Node::create());
    const osg::UberCameraPtr deep = addCamera(addGroup(node, "below"), {"A"});
    const osg::RefPtr<osg::UberCameraPtr> holder(deep);
    convertStylarBookmarks(root, false);
    EXPECT_THAT(texts(set("Red")->getViewpoints()), IsEmpty());
    EXPECT_TRUE(znUberCameraPool::get(deep->getContainerId()) == deep);
}

TEST_F(BookmarkViewpoints, WithoutTheServiceTheCameraLeavesThePoolAndNoViewpointIsMade)
{
    m_session.removeService<znCameraService>();
    const unsigned id = addCamera(addBookmark("Red"), {"A"})->getContainerId();
    testing::internal::CaptureStderr();
    convertStylarBookmarks(root, false);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              std::string("znKernelServiceFactory: couldn't find class '") + typeid(znCameraService).name() + "'!\n");
    EXPECT_FALSE(znUberCameraPool::get(id));
    EXPECT_THAT(texts(set("Red")->getViewpoints()), IsEmpty());
}

TEST_F(BookmarkViewpoints, SwitchingToTheSetLooksThroughItsCamera)
{
    const osg::UberCameraPtr camera = addCamera(addBookmark("Red"), {"A"});
    convertStylarBookmarks(root, false);
    EXPECT_THAT(texts(zn::variants::SessionVariants::apply(*set("Red"), zn::cameras::sessionCameras())), IsEmpty());
    EXPECT_TRUE(zn::cameras::sessionCameras().view() == camera);
}

} // namespace
