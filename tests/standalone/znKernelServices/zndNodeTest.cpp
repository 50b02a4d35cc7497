#include "host/znKernelServices/zndNode.h"

#include "tests/standalone/session/SessionTest.h"

namespace
{

using NodeTest = SessionTest;

TEST_F(NodeTest, SettingTheNameNamesTheNode)
{
    const osg::NodePtr group = addGroup(m_session.sceneRoot(), "group");
    zndNode node(group->getContainerId());
    node.setName(QString::fromUtf8("Gehäuse 壳"));
    EXPECT_EQ(nameOf(group), "Gehäuse 壳");
    zndNode().setName(QStringLiteral("nobody"));
}

} // namespace
