#include "host/OSGSystem/Geometry.h"
#include "scene/NodeProperties.h"
#include "standalone/znOpenSGUtils/NodePredicates.h"
#include "tests/import/FileLoaderTest.h"

using osg::NodeProperties;
using testing::ElementsAre;
using testing::IsEmpty;
using znCADFileTypes::JobSucceeded;

namespace
{

/// Below which node the loader job hangs what it loads.
class InsertionNode : public FileLoaderTest
{
protected:
    /// The id of the node that a plain load for this target was given; 0 for none.
    unsigned chosenFor(const zndNode& target)
    {
        load(m_missing, target);
        return lastLoad().parentId;
    }
    static unsigned idOf(const osg::NodePtr& node) { return node->getContainerId(); }

    /// A target that stands for a node that is gone.
    zndNode gone()
    {
        const osg::NodePtr node = addGroup(m_root, "gone");
        const zndNode target = wrapped(node);
        m_root->subChild(node);
        return target;
    }

    zn::nodes::NodePredicates& predicates() { return zn::nodes::nodePredicates(); }
};

bool isNull(const osg::NodePtr& node)
{
    return !node;
}

TEST_F(InsertionNode, IsTheTarget)
{
    EXPECT_EQ(chosenFor(wrapped(m_part)), idOf(m_part));
}

TEST_F(InsertionNode, IsTheSelectedNodeWhenTheTargetIsGone)
{
    m_session.select(m_part);
    EXPECT_EQ(chosenFor(gone()), idOf(m_part));
    EXPECT_EQ(chosenFor(zndNode()), idOf(m_part));
}

TEST_F(InsertionNode, IsTheSelectedNodeWhenTheTargetIsNoNode)
{
    m_session.select(m_part);
    EXPECT_EQ(chosenFor(zndNode(m_root->getCore()->getContainerId())), idOf(m_part));
}

TEST_F(InsertionNode, IsFoundByTheLowThirtyTwoBitsOfTheId)
{
    zndNode target;
    target.assign(m_session.id(), (std::uint64_t(7) << 32) + idOf(m_part));
    EXPECT_EQ(chosenFor(target), idOf(m_part));
}

TEST_F(InsertionNode, IsTheRootForATargetThatIsDrawn)
{
    const osg::NodePtr drawn = osg::makeNodeFor(osg::GeometryBase::create());
    m_part->addChild(drawn);
    std::vector<std::string> asked;
    predicates().getLock = [&](const osg::NodePtr&) {
        asked.emplace_back("lock");
        return false;
    };
    EXPECT_EQ(chosenFor(wrapped(drawn)), idOf(m_root));
    EXPECT_THAT(asked, IsEmpty());
}

TEST_F(InsertionNode, MayBeANodeWithoutACore)
{
    const osg::NodePtr bare = osg::Node::create();
    m_part->addChild(bare);
    EXPECT_EQ(chosenFor(wrapped(bare)), idOf(bare));
}

TEST_F(InsertionNode, IsTheRootForALockedTarget)
{
    osg::setLocked(m_part, true);
    EXPECT_EQ(chosenFor(wrapped(m_part)), idOf(m_root));
}

TEST_F(InsertionNode, IsTheRootForATargetBelowALockedParent)
{
    const osg::NodePtr child = addGroup(addGroup(m_part, "child"), "grandchild");
    osg::setLocked(m_part, true);
    EXPECT_EQ(chosenFor(wrapped(child)), idOf(m_root));
}

TEST_F(InsertionNode, IsTheRootForAnAssetThatIsNotEdited)
{
    osg::setAsset(m_part, NodeProperties::Asset::Root);
    EXPECT_EQ(chosenFor(wrapped(m_part)), idOf(m_root));
    osg::setAsset(m_part, NodeProperties::Asset::RootOpenForEditing);
    EXPECT_EQ(chosenFor(wrapped(m_part)), idOf(m_part));
}

TEST_F(InsertionNode, TheRulesHoldForASelectedNodeAsWell)
{
    osg::setLocked(m_part, true);
    m_session.select(m_part);
    EXPECT_EQ(chosenFor(zndNode()), idOf(m_root));
}

TEST_F(InsertionNode, ATargetThatIsTheRootStaysEvenIfLocked)
{
    osg::setLocked(m_root, true);
    EXPECT_EQ(chosenFor(wrapped(m_root)), idOf(m_root));
    EXPECT_EQ(load(m_file, wrapped(m_root))->getState(), JobSucceeded);
    EXPECT_THAT(childNames(m_root), ElementsAre("part", "Größe 1"));
}

TEST_F(InsertionNode, TheThreeQuestionsAreAskedInOrderUntilOneIsAnsweredYes)
{
    std::vector<std::string> asked;
    bool locked = false, below = false;
    predicates().getLock = [&](const osg::NodePtr& node) {
        asked.push_back("lock " + nameOf(node));
        return locked;
    };
    predicates().hasLockedParent = [&](const osg::NodePtr& node) {
        asked.push_back("parent " + nameOf(node));
        return below;
    };
    predicates().isUneditedAssetRoot = [&](const osg::NodePtr& node) {
        asked.push_back("asset " + nameOf(node));
        return false;
    };
    EXPECT_EQ(chosenFor(wrapped(m_part)), idOf(m_part));
    EXPECT_THAT(asked, ElementsAre("lock part", "parent part", "asset part"));
    asked.clear();
    below = true;
    EXPECT_EQ(chosenFor(wrapped(m_part)), idOf(m_root));
    EXPECT_THAT(asked, ElementsAre("lock part", "parent part"));
    asked.clear();
    locked = true;
    EXPECT_EQ(chosenFor(wrapped(m_part)), idOf(m_root));
    EXPECT_THAT(asked, ElementsAre("lock part"));
}

TEST_F(InsertionNode, IsNoneWithoutTargetAndSelection)
{
    EXPECT_EQ(chosenFor(zndNode()), 0u);
    EXPECT_EQ(chosenFor(gone()), 0u);
}

TEST_F(InsertionNode, ALoadWithoutOneGivesATreeThatStandsAlone)
{
    const Job job = load(m_file, zndNode());
    EXPECT_EQ(job->getState(), JobSucceeded);
    EXPECT_THAT(childNames(m_root), ElementsAre("part"));
    const osg::RefPtr<osg::NodePtr> loaded(job->getLoadedNode());
    ASSERT_TRUE(loaded);
    EXPECT_EQ(nameOf(loaded), "Größe 1");
    EXPECT_FALSE(loaded->getParent());
}

TEST_F(InsertionNode, ASmartReferenceWithoutOneStandsAlone)
{
    const Job job = makeJob(m_file, zndNode());
    job->setImportAsSmartReference(true);
    job->process();
    EXPECT_THAT(childNames(m_root), ElementsAre("part"));
    const osg::RefPtr<osg::NodePtr> loaded(job->getLoadedNode());
    ASSERT_TRUE(loaded);
    EXPECT_FALSE(loaded->getParent());
    EXPECT_EQ(loaded->getNChildren(), 1u);
}

TEST_F(InsertionNode, TheQuestionsAreAskedOfANullNodeToo)
{
    predicates().getLock = isNull;
    EXPECT_EQ(chosenFor(zndNode()), idOf(m_root));
    predicates() = {};
    predicates().hasLockedParent = isNull;
    EXPECT_EQ(chosenFor(zndNode()), idOf(m_root));
    predicates() = {};
    predicates().isUneditedAssetRoot = isNull;
    EXPECT_EQ(chosenFor(zndNode()), idOf(m_root));
    predicates() = {};
    EXPECT_EQ(chosenFor(zndNode()), 0u);
}

TEST_F(InsertionNode, OfANewSmartReferenceFollowsTheSameRules)
{
    osg::setLocked(m_part, true);
    const Job job = makeJob(m_file, wrapped(m_part));
    job->setImportAsSmartReference(true);
    job->process();
    EXPECT_EQ(m_part->getNChildren(), 0u);
    EXPECT_THAT(childNames(m_root), ElementsAre("part", "Größe 1"));
}

TEST_F(InsertionNode, OfALockedReferenceIsTheRootWhichGetsTheContent)
{
    const osg::NodePtr reference = addReference(m_root, "reference");
    osg::setLocked(reference, true);
    leavesSplicedNodes("Größe 1");
    const Job job = load(m_file, wrapped(reference));
    EXPECT_EQ(job->getState(), JobSucceeded);
    EXPECT_TRUE(job->getLoadedNode() == m_root);
    EXPECT_EQ(reference->getNChildren(), 0u);
    EXPECT_EQ(referenceCore(reference)->getState(), 0u);
    ASSERT_EQ(m_root->getNChildren(), 3u);
    EXPECT_TRUE(osg::fcCast<osg::Geometry>(m_root->getChild(2)->getCore()));
}

TEST_F(InsertionNode, ATargetWhoseReferenceIsGoneIsNoReferenceAnyMore)
{
    const osg::NodePtr reference = addReference(m_root, "reference");
    const zndNode target = wrapped(reference);
    m_root->subChild(reference);
    m_session.select(m_part);
    const Job job = load(m_file, target);
    EXPECT_THAT(childNames(m_part), ElementsAre("Größe 1"));
    EXPECT_TRUE(job->getLoadedNode() == m_part->getChild(0));
}

} // namespace
