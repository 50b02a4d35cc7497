#include "importer/RepeatedParts.h"

#include "host/znOpenSGExt/ExtReference.h"
#include "tests/standalone/session/SessionTest.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

class RepeatedPartsTest : public SessionTest
{
protected:
    void TearDown() override
    {
        m_root = osg::NodePtr();
        SessionTest::TearDown();
    }

    /// Four places of one part file in the given state, of which the second has a node with a child as its content.
    void makePlaces(unsigned state)
    {
        m_root = osg::makeNodeFor(osg::Group::create());
        const osg::ExtReferencePtr core = osg::ExtReference::create();
        core->setState(state);
        for (int i = 0; i < 4; ++i)
            m_root->addChild(osg::makeNodeFor(core));
        addGroup(addGroup(m_root->getChild(1), "part"), "inner");
    }

    std::size_t fill(std::size_t nodes)
    {
        m_left = nodes;
        return importer::fillRepeatedParts(m_root, m_left);
    }

    osg::RefPtr<osg::NodePtr> m_root;
    std::size_t m_left = 0;
};

TEST_F(RepeatedPartsTest, EmptyPlacesOfALoadedPartGetItsContent)
{
    makePlaces(2);
    EXPECT_EQ(fill(10), 0u);
    EXPECT_EQ(m_left, 1u);
    const osg::NodePtr part = m_root->getChild(1)->getChild(0);
    for (unsigned i : {0u, 2u, 3u}) {
        ASSERT_THAT(childNames(m_root->getChild(i)), ElementsAre("part"));
        EXPECT_NE(m_root->getChild(i)->getChild(0), part);
        EXPECT_EQ(m_root->getChild(i)->getChild(0)->getCore(), part->getCore());
        EXPECT_THAT(childNames(m_root->getChild(i)->getChild(0)), ElementsAre("inner"));
    }
    EXPECT_EQ(m_root->getChild(1)->getNChildren(), 1u);
}

TEST_F(RepeatedPartsTest, NothingChangesTheSecondTime)
{
    makePlaces(2);
    fill(100);
    EXPECT_EQ(fill(100), 0u);
    for (unsigned i = 0; i < 4; ++i)
        EXPECT_EQ(m_root->getChild(i)->getNChildren(), 1u);
}

TEST_F(RepeatedPartsTest, PlacesOfAPartThatIsNotLoadedStayEmpty)
{
    makePlaces(0);
    EXPECT_EQ(fill(100), 0u);
    EXPECT_THAT(childNames(m_root->getChild(0)), IsEmpty());
}

TEST_F(RepeatedPartsTest, PlacesBeyondTheLimitStayEmptyAndAreCounted)
{
    makePlaces(2);
    // Three nodes a copy, the reference's own counted in.
    EXPECT_EQ(fill(7), 1u);
    EXPECT_EQ(m_root->getChild(0)->getNChildren() + m_root->getChild(2)->getNChildren(), 2u);
    EXPECT_EQ(m_root->getChild(3)->getNChildren(), 0u);
}

} // namespace
