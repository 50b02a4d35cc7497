#include "host/znOpenSGExt/NodeUtils.h"

#include "host/OSGSystem/Names.h"
#include "scene/EditAudit.h"
#include "tests/scene/SceneGraphTest.h"

namespace
{

using NodeUtilsNameTest = SceneGraphTest;

TEST_F(NodeUtilsNameTest, ANameIsGivenAndReplaced)
{
    const osg::RefPtr<osg::NodePtr> node(osg::Node::create());
    NodeUtils::setName(node, "Räd 1", true);
    EXPECT_STREQ(osg::getName(node.get()), "Räd 1");
    NodeUtils::setName(node, "Räd 2", true);
    EXPECT_STREQ(osg::getName(node.get()), "Räd 2");
}

TEST_F(NodeUtilsNameTest, WithoutReplaceANameThatIsThereStays)
{
    const osg::RefPtr<osg::NodePtr> node(osg::Node::create());
    NodeUtils::setName(node, "first", false);
    NodeUtils::setName(node, "second", false);
    EXPECT_STREQ(osg::getName(node.get()), "first");
}

TEST_F(NodeUtilsNameTest, NullAndEmptyTextsTakeTheNameAway)
{
    const osg::RefPtr<osg::NodePtr> node(osg::Node::create());
    NodeUtils::setName(node, "name", true);
    NodeUtils::setName(node, "", true);
    EXPECT_EQ(osg::getName(node.get()), nullptr);
    NodeUtils::setName(node, "name", true);
    NodeUtils::setName(node, nullptr, true);
    EXPECT_EQ(osg::getName(node.get()), nullptr);
}

TEST_F(NodeUtilsNameTest, ANullNodeIsIgnored)
{
    NodeUtils::setName(osg::NodePtr(), "name", true);
}

TEST_F(NodeUtilsNameTest, TheNameIsWrittenInTheBracketOfTheAttachments)
{
    const osg::RefPtr<osg::NodePtr> node(osg::Node::create());
    const osg::EditAudit audit;
    NodeUtils::setName(node, "name", true);
    EXPECT_TRUE(audit.unbracketed().empty());
    ASSERT_FALSE(audit.brackets().empty());
    EXPECT_EQ(audit.brackets().back().mask, osg::AttachmentContainer::AttachmentsFieldMask);
}

} // namespace
