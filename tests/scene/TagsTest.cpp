#include "scene/Tags.h"

#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Node.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/EditAudit.h"
#include "tests/scene/SceneGraphTest.h"

namespace
{

using TagsTest = SceneGraphTest;
using osg::NodePtr;
using Texts = std::vector<std::string>;

TEST_F(TagsTest, TagsKeepTheirOrderAndRepeats)
{
    const osg::RefPtr<NodePtr> node(osg::Node::create());
    EXPECT_EQ(osg::tagsOf(node.get()), Texts());
    osg::setTags(node.get(), {"zebra", "apple", "", "zebra"});
    EXPECT_EQ(osg::tagsOf(node.get()), (Texts{"zebra", "apple", "", "zebra"}));
    osg::setTags(node.get(), {"pear"});
    EXPECT_EQ(osg::tagsOf(node.get()), Texts{"pear"});
}

TEST_F(TagsTest, AnEmptyListTakesTheAttachmentAway)
{
    const osg::RefPtr<NodePtr> node(osg::Node::create());
    osg::setTags(node.get(), {"pear"});
    EXPECT_TRUE(node->findAttachment(osg::TagAttachment::_type.getGroupId()));
    osg::setTags(node.get(), {});
    EXPECT_FALSE(node->findAttachment(osg::TagAttachment::_type.getGroupId()));
    EXPECT_EQ(osg::livingContainerCount(), 1u);
}

TEST_F(TagsTest, TagsAndNamesAreAttachedSideBySide)
{
    const osg::RefPtr<NodePtr> node(osg::Node::create());
    osg::setTags(node.get(), {"pear"});
    osg::setName(node.get(), "tree");
    EXPECT_STREQ(osg::getName(node.get()), "tree");
    EXPECT_EQ(osg::tagsOf(node.get()), Texts{"pear"});
}

TEST_F(TagsTest, NullHasNoTagsAndTakesNone)
{
    osg::setTags(NodePtr(), {"pear"});
    EXPECT_EQ(osg::tagsOf(NodePtr()), Texts());
}

TEST_F(TagsTest, TagsOfACloneAreItsOwn)
{
    const osg::RefPtr<NodePtr> node(osg::Node::create());
    osg::setTags(node.get(), {"pear"});
    const osg::RefPtr<NodePtr> clone(osg::cloneTree(node, true));
    osg::setTags(clone.get(), {"plum"});
    EXPECT_EQ(osg::tagsOf(node.get()), Texts{"pear"});
    EXPECT_EQ(osg::tagsOf(clone.get()), Texts{"plum"});
}

TEST_F(TagsTest, EqualityLooksAtTheTexts)
{
    const osg::RefPtr<osg::TagAttachment::Ptr> a(osg::TagAttachment::create({"pear", "plum"}));
    const osg::RefPtr<osg::TagAttachment::Ptr> b(osg::TagAttachment::create({"plum", "pear"}));
    EXPECT_FALSE(osg::FieldContainer::isEqual(a.get(), b.get()));
    b->setTags({"pear", "plum"});
    EXPECT_TRUE(osg::FieldContainer::isEqual(a.get(), b.get()));
}

TEST_F(TagsTest, EachChangeIsBracketedByTheFieldItChanges)
{
    const osg::RefPtr<NodePtr> node(osg::Node::create());
    const osg::EditAudit audit;
    osg::setTags(node.get(), {"pear"});
    osg::setTags(node.get(), {"plum"});
    osg::setTags(node.get(), {});
    EXPECT_TRUE(audit.unbracketed().empty());
    const std::vector<osg::EditAudit::Record> expected = {
        {1, "Node", osg::AttachmentContainer::AttachmentsFieldMask},
        {2, "Tags", osg::TagAttachment::TagsFieldMask},
        {1, "Node", osg::AttachmentContainer::AttachmentsFieldMask},
    };
    EXPECT_EQ(audit.brackets(), expected);
}

} // namespace
