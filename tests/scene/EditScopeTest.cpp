#include "scene/EditScope.h"

#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Node.h"
#include "scene/EditAudit.h"
#include "tests/scene/SceneGraphTest.h"

#include <stdexcept>

namespace
{

using EditScopeTest = SceneGraphTest;
using Records = std::vector<osg::EditAudit::Record>;

TEST_F(EditScopeTest, TheBracketIsOpenAsLongAsTheScopeLives)
{
    const osg::RefPtr<osg::NodePtr> node(osg::Node::create());
    const osg::EditAudit audit;
    {
        const osg::EditScope edit(node.get(), osg::Node::CoreFieldMask);
        node->setCore(osg::Group::create());
        EXPECT_EQ(audit.openBrackets(), 1u);
    }
    EXPECT_EQ(audit.openBrackets(), 0u);
    EXPECT_EQ(audit.unbracketed(), Records());
    EXPECT_EQ(audit.brackets(), (Records{{node->getContainerId(), "Node", osg::Node::CoreFieldMask}}));
}

TEST_F(EditScopeTest, EditRunsTheChangeWithinTheBracket)
{
    const osg::RefPtr<osg::NodePtr> node(osg::Node::create());
    const osg::EditAudit audit;
    osg::edit(node.get(), osg::Node::ActiveFieldMask, [&] { node->setActive(false); });
    EXPECT_FALSE(node->isActive());
    EXPECT_EQ(audit.unbracketed(), Records());
    EXPECT_EQ(audit.brackets(), (Records{{node->getContainerId(), "Node", osg::Node::ActiveFieldMask}}));
}

TEST_F(EditScopeTest, AnExceptionClosesTheBracket)
{
    const osg::RefPtr<osg::NodePtr> node(osg::Node::create());
    const osg::EditAudit audit;
    EXPECT_THROW(osg::edit(node.get(), osg::Node::ActiveFieldMask, [] { throw std::runtime_error("no"); }),
                 std::runtime_error);
    EXPECT_EQ(audit.openBrackets(), 0u);
}

} // namespace
