#include "host/znOpenSGUtils/znNodeUtils.h"

#include "scene/EditAudit.h"
#include "scene/NodeProperties.h"
#include "tests/standalone/session/SessionTest.h"

using osg::NodeProperties;

namespace
{

class NodeUtilsTest : public SessionTest
{
protected:
    const osg::NodePtr m_top = addGroup(m_session.sceneRoot(), "top");
    const osg::NodePtr m_middle = addGroup(m_top, "middle");
    const osg::NodePtr m_leaf = addGroup(m_middle, "leaf");
};

TEST_F(NodeUtilsTest, ANodeHasNoPropertiesAtFirst)
{
    EXPECT_FALSE(znNodeUtils::getLock(m_leaf));
    EXPECT_FALSE(znNodeUtils::hasLockedParent(m_leaf));
    EXPECT_FALSE(znNodeUtils::isUneditedAssetRoot(m_leaf));
}

TEST_F(NodeUtilsTest, ANullNodeHasNoProperties)
{
    EXPECT_FALSE(znNodeUtils::getLock(osg::NodePtr()));
    EXPECT_FALSE(znNodeUtils::hasLockedParent(osg::NodePtr()));
    EXPECT_FALSE(znNodeUtils::isUneditedAssetRoot(osg::NodePtr()));
}

TEST_F(NodeUtilsTest, ALockIsOfTheNodeItself)
{
    osg::setLocked(m_middle, true);
    EXPECT_FALSE(znNodeUtils::getLock(m_top));
    EXPECT_TRUE(znNodeUtils::getLock(m_middle));
    EXPECT_FALSE(znNodeUtils::getLock(m_leaf));
    osg::setLocked(m_middle, false);
    EXPECT_FALSE(znNodeUtils::getLock(m_middle));
}

TEST_F(NodeUtilsTest, ALockedParentIsAnyAncestorButNotTheNodeItself)
{
    osg::setLocked(m_top, true);
    EXPECT_TRUE(znNodeUtils::hasLockedParent(m_leaf));
    EXPECT_TRUE(znNodeUtils::hasLockedParent(m_middle));
    EXPECT_FALSE(znNodeUtils::hasLockedParent(m_top));
    EXPECT_FALSE(znNodeUtils::hasLockedParent(m_session.sceneRoot()));
}

TEST_F(NodeUtilsTest, AnAssetRootIsUneditedUntilItIsOpenedForEditing)
{
    osg::setAsset(m_middle, NodeProperties::Asset::Root);
    EXPECT_TRUE(znNodeUtils::isUneditedAssetRoot(m_middle));
    EXPECT_FALSE(znNodeUtils::isUneditedAssetRoot(m_leaf));
    osg::setAsset(m_middle, NodeProperties::Asset::RootOpenForEditing);
    EXPECT_FALSE(znNodeUtils::isUneditedAssetRoot(m_middle));
    osg::setAsset(m_middle, NodeProperties::Asset::None);
    EXPECT_FALSE(znNodeUtils::isUneditedAssetRoot(m_middle));
}

TEST_F(NodeUtilsTest, LockAndAssetDoNotTouchEachOther)
{
    osg::setAsset(m_leaf, NodeProperties::Asset::Root);
    osg::setLocked(m_leaf, true);
    EXPECT_TRUE(znNodeUtils::getLock(m_leaf));
    EXPECT_TRUE(znNodeUtils::isUneditedAssetRoot(m_leaf));
    osg::setLocked(m_leaf, false);
    EXPECT_TRUE(znNodeUtils::isUneditedAssetRoot(m_leaf));
}

TEST_F(NodeUtilsTest, ACopyWithAttachmentsHasTheSameProperties)
{
    osg::setLocked(m_leaf, true);
    osg::setAsset(m_leaf, NodeProperties::Asset::Root);
    const osg::RefPtr<osg::NodePtr> copy(osg::cloneTree(m_leaf, true));
    EXPECT_TRUE(znNodeUtils::getLock(copy));
    EXPECT_TRUE(znNodeUtils::isUneditedAssetRoot(copy));
    EXPECT_TRUE(osg::FieldContainer::isEqual(NodeProperties::of(copy), NodeProperties::of(m_leaf)));
    osg::setLocked(copy, false);
    EXPECT_TRUE(znNodeUtils::getLock(m_leaf));
    EXPECT_FALSE(osg::FieldContainer::isEqual(NodeProperties::of(copy), NodeProperties::of(m_leaf)));
}

TEST_F(NodeUtilsTest, PropertiesChangeWithinTheBracketsOfTheirFields)
{
    const osg::EditAudit audit;
    osg::setLocked(m_leaf, true);
    osg::setAsset(m_leaf, NodeProperties::Asset::Root);
    EXPECT_THAT(audit.unbracketed(), testing::IsEmpty());
    EXPECT_THAT(audit.idleBrackets(), testing::IsEmpty());
    EXPECT_EQ(audit.openBrackets(), 0u);
}

} // namespace
