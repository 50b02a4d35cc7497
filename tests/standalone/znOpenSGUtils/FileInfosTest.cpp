#include "host/OSGSystem/Cast.h"
#include "host/znOpenSGExt/FileInfo.h"
#include "host/znOpenSGUtils/znNodeUtils.h"
#include "scene/EditAudit.h"
#include "tests/standalone/session/SessionTest.h"

namespace
{

class FileInfosTest : public SessionTest
{
protected:
    osg::FileInfoPtr info() const
    {
        return osg::fcCast<osg::FileInfo>(m_node->findAttachment(osg::FileInfo::_type.getGroupId()));
    }

    const osg::NodePtr m_node = addGroup(m_session.sceneRoot(), "engine");
};

TEST_F(FileInfosTest, ANodeGetsItsFileAndFormat)
{
    znNodeUtils::setFileInfo(m_node, "/cad/ä.stp", "STEP");
    ASSERT_TRUE(info());
    EXPECT_EQ(info()->getFileName(), "/cad/ä.stp");
    EXPECT_EQ(info()->getFormat(), "STEP");
}

TEST_F(FileInfosTest, NullLeavesWhatIsThere)
{
    znNodeUtils::setFileInfo(m_node, "/cad/a.stp", "STEP");
    const osg::FileInfoPtr first = info();
    znNodeUtils::setFileInfo(m_node, "/cad/b.stp", nullptr);
    znNodeUtils::setFileInfo(m_node, nullptr, "JT");
    EXPECT_TRUE(info() == first);
    EXPECT_EQ(info()->getFileName(), "/cad/b.stp");
    EXPECT_EQ(info()->getFormat(), "JT");
    znNodeUtils::setFileInfo(osg::NodePtr(), "/cad/c.stp", nullptr);
}

TEST_F(FileInfosTest, EveryChangeIsAnEdit)
{
    const osg::EditAudit audit;
    znNodeUtils::setFileInfo(m_node, "/cad/a.stp", "STEP");
    EXPECT_TRUE(audit.unbracketed().empty());
    EXPECT_TRUE(audit.idleBrackets().empty());
    EXPECT_EQ(audit.brackets().size(), 3u);
}

} // namespace
