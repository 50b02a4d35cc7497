#include "host/OSGSystem/Cast.h"
#include "host/znKernel/znTypeConverter.h"
#include "host/znKernelServices/znCameraService.h"
#include "host/znKernelServices/znKernelServiceFactory.h"
#include "host/znOpenSGUberCamera/znUberCameraPool.h"
#include "host/znOpenSGUberCamera/znUberCameraUtils.h"
#include "host/znVariants/znVariants.h"
#include "standalone/znOpenSGUberCamera/SessionCameras.h"
#include "standalone/znVariants/SessionVariants.h"
#include "tests/standalone/session/SessionTest.h"
#include "tests/support/QtPrinters.h"

namespace
{

QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

class CameraServiceTest : public SessionTest
{
protected:
    static znCameraService& service() { return *znKernelServiceFactory::the()->get<znCameraService>(); }
    static znUberCameraPool& pool() { return *znUberCameraPool::the(); }
    zn::cameras::CameraTree& cameras() { return zn::cameras::sessionCameras(); }
    osg::NodePtr node(const zndNode& wrapper) { return znTypeConverter::convertNode(wrapper); }

    static osg::RefPtr<osg::UberCameraPtr> camera(const char* name)
    {
        const osg::RefPtr<osg::UberCameraPtr> result(osg::UberCameraBase::create());
        osg::setName(result.get(), name);
        return result;
    }
};

TEST_F(CameraServiceTest, ANewCameraStandsBesideTheSceneAndInThePool)
{
    const zndCameraNode made = service().createCamera(text("Front"), osg::UberCameraBase::Parallel);
    EXPECT_EQ(m_session.sceneRoot()->getNChildren(), 0u);
    ASSERT_EQ(cameras().root()->getNChildren(), 1u);
    EXPECT_TRUE(node(made) == cameras().root()->getChild(0));
    EXPECT_STREQ(osg::getName(node(made)), "Front");
    const osg::UberCameraPtr core = znUberCameraPool::get(static_cast<unsigned>(made.getId()));
    ASSERT_TRUE(core);
    EXPECT_EQ(core->getProjection(), osg::UberCameraBase::Parallel);
    EXPECT_EQ(znUberCameraUtils::getName(core), text("Front"));
    EXPECT_EQ(pool().getNumCameras(), 1u);
}

TEST_F(CameraServiceTest, ACameraOfAKnownNameIsTheOneThatIsThere)
{
    const zndCameraNode first = service().createCamera(text("Front"), 0);
    EXPECT_EQ(service().createCamera(text("Front"), 1).getObjectId(), first.getObjectId());
    EXPECT_NE(service().createCamera(text("front"), 0).getObjectId(), first.getObjectId());
    EXPECT_NE(service().createCamera({}, 0).getObjectId(), 0u);
}

TEST_F(CameraServiceTest, TheFirstTrackOfACameraIsItsDefault)
{
    const zndCameraNode made = service().createCamera(text("Front"), 0);
    EXPECT_TRUE(made.getDefaultCameraTrack().isNull());
    const zndNode track = service().createCameraTrack(text("Front_track"), made);
    service().createCameraTrack(text("second"), made);
    EXPECT_EQ(made.getDefaultCameraTrack().getObjectId(), track.getObjectId());
    EXPECT_STREQ(osg::getName(node(track)), "Front_track");
    EXPECT_TRUE(node(track)->getParent() == node(made));
    EXPECT_TRUE(service().createCameraTrack(text("x"), zndCameraNode()).isNull());
    EXPECT_TRUE(zndCameraNode().getDefaultCameraTrack().isNull());
}

TEST_F(CameraServiceTest, ACameraPutBelowATrackGetsANodeThere)
{
    const zndCameraNode made = service().createCamera(text("Front"), 0);
    const osg::NodePtr track = node(service().createCameraTrack(text("track"), made));
    const auto viewpoint = camera("Dark_vp");
    pool().add(viewpoint.get(), track);
    ASSERT_EQ(track->getNChildren(), 1u);
    EXPECT_TRUE(track->getChild(0)->getCore() == viewpoint.get());
    EXPECT_STREQ(osg::getName(track->getChild(0)), "Dark_vp");
    EXPECT_EQ(pool().getNumCameras(), 2u);
    znUberCameraUtils::setName(viewpoint.get(), text("Day_vp"), false);
    EXPECT_STREQ(osg::getName(track->getChild(0)), "Day_vp");
    EXPECT_STREQ(osg::getName(viewpoint.get()), "Day_vp");
}

TEST_F(CameraServiceTest, OnlyACameraWithTheFlagIsAViewpoint)
{
    const auto viewpoint = camera("Dark_vp");
    const osg::NodePtr place = addGroup(m_session.sceneRoot(), "track");
    pool().add(viewpoint.get(), place);
    EXPECT_EQ(service().findViewpoint(text("Dark_vp")).getId(), 0u);
    viewpoint->addFlag(4);
    EXPECT_EQ(service().findViewpoint(text("Dark_vp")).getId(), viewpoint->getContainerId());
    EXPECT_EQ(service().findViewpoint(text("dark_vp")).getId(), 0u);
    pool().remove(viewpoint.get());
    EXPECT_EQ(service().findViewpoint(text("Dark_vp")).getId(), 0u);
}

TEST_F(CameraServiceTest, ThePoolListsACameraOnceAndKeepsNoneAlive)
{
    {
        const auto passing = camera("passing");
        const unsigned id = passing->getContainerId();
        pool().add(passing.get(), {});
        pool().add(passing.get(), {});
        pool().add({}, {});
        EXPECT_EQ(pool().getNumCameras(), 1u);
        EXPECT_TRUE(znUberCameraPool::get(id) == passing.get());
        EXPECT_FALSE(znUberCameraPool::get(id + 1));
        EXPECT_EQ(passing->getRefCount(), 1u);
    }
    EXPECT_EQ(pool().getNumCameras(), 0u);
}

TEST_F(CameraServiceTest, ARemovedCameraStaysInItsTree)
{
    const auto core = camera("part of a file");
    const osg::NodePtr place = addGroup(m_session.sceneRoot(), "bookmark");
    pool().add(core.get(), place);
    pool().remove(core.get());
    pool().remove(core.get());
    EXPECT_FALSE(znUberCameraPool::get(core->getContainerId()));
    EXPECT_EQ(place->getNChildren(), 1u);
}

TEST_F(CameraServiceTest, AUniqueNameGetsTheNextFreeNumber)
{
    const auto first = camera("");
    const auto second = camera("");
    const auto third = camera("");
    for (const auto& core : {first, second, third}) {
        pool().add(core.get(), {});
        znUberCameraUtils::setName(core.get(), text("View"), true);
    }
    EXPECT_STREQ(osg::getName(first.get()), "View");
    EXPECT_STREQ(osg::getName(second.get()), "View 2");
    EXPECT_STREQ(osg::getName(third.get()), "View 3");
    znUberCameraUtils::setName(second.get(), text("View"), false);
    EXPECT_STREQ(osg::getName(second.get()), "View");
    EXPECT_EQ(znUberCameraUtils::getName({}), QString());
}

TEST_F(CameraServiceTest, WrappersKnowTheirClass)
{
    const zndCameraNode made = service().createCamera(text("Front"), 0);
    EXPECT_TRUE(zndObject(made.getObjectId()).isTypeOf(&zndCameraNode::staticMetaObject));
    EXPECT_TRUE(zndObject(made.getObjectId()).isTypeOf(&zndNode::staticMetaObject));
    const osg::NodePtr plain = addGroup(m_session.sceneRoot(), "plain");
    EXPECT_FALSE(zndObject(plain->getContainerId()).isTypeOf(&zndCameraBaseNode::staticMetaObject));
    EXPECT_EQ(zndCameraBaseNode(plain->getContainerId()).getId(), 0u);
}

TEST_F(CameraServiceTest, ApplyingASetLooksThroughItsViewpoint)
{
    const auto viewpoint = camera("Dark_vp");
    viewpoint->addFlag(osg::UberCamera::ViewpointFlag);
    pool().add(viewpoint.get(), addGroup(m_session.sceneRoot(), "track"));
    znVariantSet* set = znVariants::createVariantSet(text("Dark"), true, nullptr);
    EXPECT_EQ(zn::variants::SessionVariants::apply(*set, cameras()), QStringList());
    EXPECT_FALSE(cameras().view());
    set->m_viewpointName = text("Dark_vp");
    EXPECT_EQ(zn::variants::SessionVariants::apply(*set, cameras()), QStringList());
    EXPECT_TRUE(cameras().view() == viewpoint.get());
}

TEST_F(CameraServiceTest, CamerasAreFoundByTheNamesThatTheyBearNow)
{
    const zndCameraNode made = service().createCamera(text("Front"), 0);
    const osg::UberCameraPtr core = znUberCameraPool::get(static_cast<unsigned>(made.getId()));
    osg::setName(core, "Side");
    EXPECT_TRUE(node(service().createCamera(text("Side"), 0)) == node(made));
    znUberCameraUtils::setName(core, text("Back"), false);
    EXPECT_TRUE(node(service().createCamera(text("Back"), 0)) == node(made));
    EXPECT_STREQ(osg::getName(node(made)), "Back");
    EXPECT_FALSE(cameras().findCamera(text("Front")));
    EXPECT_FALSE(cameras().findCamera(text("Side")));
}

TEST_F(CameraServiceTest, ACameraThatIsNotOfferedIsStillThere)
{
    const zndCameraNode made = service().createCamera(text("Front"), 0);
    const osg::UberCameraPtr core = znUberCameraPool::get(static_cast<unsigned>(made.getId()));
    const auto second = camera("Second");
    pool().add(second.get(), {});
    pool().remove(core);
    EXPECT_FALSE(znUberCameraPool::get(core->getContainerId()));
    EXPECT_FALSE(cameras().isTaken(text("Front"), 0));
    EXPECT_TRUE(node(service().createCamera(text("Front"), 0)) == node(made));
    pool().add(core, {});
    ASSERT_EQ(cameras().entries().size(), 2u);
    EXPECT_EQ(cameras().entries()[0].cameraId, second->getContainerId());
    EXPECT_EQ(cameras().entries()[1].cameraId, core->getContainerId());
    EXPECT_TRUE(cameras().isTaken(text("Front"), 0));
    EXPECT_FALSE(cameras().isTaken(text("Front"), core->getContainerId()));
}

} // namespace
