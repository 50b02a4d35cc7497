#include "host/znInterfaces/znReferenceInterface.h"

#include "host/znInterfaces/znInterfaceFactory.h"
#include "tests/standalone/session/SessionTest.h"
#include "tests/support/ReferenceRecorder.h"

namespace
{

using ReferenceInterfaceInSession = SessionTest;

TEST_F(ReferenceInterfaceInSession, TellsTheObserverOfTheLivingSession)
{
    const ReferenceRecorder recorder(m_session);
    const osg::NodePtr root = m_session.sceneRoot();
    auto* references =
        dynamic_cast<znReferenceInterface*>(znInterfaceFactory::the()->get(typeid(znReferenceInterface)));
    ASSERT_NE(references, nullptr);
    references->notifyReferences(root, 18, 0);
    references->notifyReferences({}, 7, 5);
    const auto& notices = recorder.notifications();
    ASSERT_EQ(notices.size(), 2u);
    EXPECT_EQ(notices[0].rootId, root->getContainerId());
    EXPECT_EQ(notices[0].code, 18);
    EXPECT_EQ(notices[0].argument, 0);
    EXPECT_EQ(notices[1].rootId, 0u);
    EXPECT_EQ(notices[1].code, 7);
    EXPECT_EQ(notices[1].argument, 5);
    EXPECT_EQ(znInterfaceFactory::the()->get(typeid(int)), nullptr);
    EXPECT_EQ(znInterfaceFactory::the()->get(typeid(znReferenceInterface)), references);
}

TEST(ReferenceInterfaceTest, OutlivesSessions)
{
    auto* references =
        dynamic_cast<znReferenceInterface*>(znInterfaceFactory::the()->get(typeid(znReferenceInterface)));
    ASSERT_NE(references, nullptr);
    references->notifyReferences({}, 18, 0);
    zn::StandaloneSession session;
    references->notifyReferences({}, 18, 0);
    const ReferenceRecorder recorder(session);
    references->notifyReferences({}, 18, 0);
    EXPECT_EQ(recorder.notifications().size(), 1u);
}

} // namespace
