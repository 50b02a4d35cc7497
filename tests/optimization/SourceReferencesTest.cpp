#include "optimization/SourceReferences.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "host/znOpenSGExt/FileInfo.h"
#include "scene/EditAudit.h"
#include "tests/scene/SceneGraphTest.h"

using namespace optimization;

namespace
{

using osg::NodePtr;
using Holder = osg::RefPtr<NodePtr>;

class SourceReferencesTest : public SceneGraphTest
{
protected:
    static NodePtr named(const std::string& name, const osg::NodeCorePtr& core = osg::Group::create())
    {
        const NodePtr node = osg::Node::create();
        node->setCore(core);
        osg::setName(node, name);
        return node;
    }

    static osg::ExtReferencePtr reference(const std::string& path, const osg::Matrix& matrix = {})
    {
        const osg::ExtReferencePtr core = osg::ExtReferenceBase::create();
        const osg::FileReferencePtr file = osg::FileReferenceBase::create();
        file->setPath(path);
        core->setSourceFile(file);
        core->setMatrix(matrix);
        return core;
    }

    static void attachFileInfo(const NodePtr& node)
    {
        const osg::FileInfoPtr info = osg::FileInfoBase::create();
        info->setFileName("/data/part.stp");
        node->addAttachment(info);
    }

    static bool hasFileInfo(const NodePtr& node)
    {
        return static_cast<bool>(node->findAttachment(osg::FileInfoBase::_type.getGroupId()));
    }

    static std::string childNames(const NodePtr& node)
    {
        std::string result;
        for (unsigned i = 0; i < node->getNChildren(); ++i)
            result += osg::getName(node->getChild(i));
        return result;
    }

    static bool isReference(const NodePtr& node)
    {
        return static_cast<bool>(osg::fcCast<osg::ExtReference>(node->getCore()));
    }
};

osg::Matrix placement()
{
    osg::Matrix matrix;
    matrix[0] = 2;
    matrix[4] = 0.25f;
    matrix[12] = 10;
    matrix[13] = -20;
    return matrix;
}

TEST_F(SourceReferencesTest, AnIdentityReferenceGivesItsPlaceToItsChildren)
{
    const Holder root(named("root"));
    for (const char* name : {"a", "b"})
        root->addChild(named(name));
    root->addChild(named("R", reference("part.stp")));
    for (const char* name : {"K", "L", "M"})
        root->getChild(2)->addChild(named(name));
    root->addChild(named("z"));
    removeSourceReferences(root);
    EXPECT_EQ(childNames(root), "abKLMz");
}

TEST_F(SourceReferencesTest, AnIdentityReferenceWithoutChildrenDisappears)
{
    const Holder root(named("root"));
    root->addChild(named("R", reference("part.stp")));
    root->addChild(named("z"));
    removeSourceReferences(root);
    EXPECT_EQ(childNames(root), "z");
}

TEST_F(SourceReferencesTest, NestedIdentityReferencesAllDissolve)
{
    const Holder root(named("root"));
    root->addChild(named("A", reference("a.stp")));
    root->getChild(0)->addChild(named("x"));
    root->getChild(0)->addChild(named("B", reference("b.stp")));
    root->getChild(0)->getChild(1)->addChild(named("y"));
    root->addChild(named("z"));
    removeSourceReferences(root);
    EXPECT_EQ(childNames(root), "xyz");
}

TEST_F(SourceReferencesTest, AMovedReferenceStaysAsATransformWithTheSameMatrix)
{
    const Holder root(named("root"));
    root->addChild(named("R", reference("part.stp", placement())));
    const NodePtr node = root->getChild(0);
    node->addChild(named("K"));
    attachFileInfo(node);
    removeSourceReferences(root);
    ASSERT_TRUE(root->getChild(0) == node);
    EXPECT_FALSE(isReference(node));
    const auto transform = osg::fcCast<osg::Transform3D>(node->getCore());
    ASSERT_TRUE(transform);
    EXPECT_EQ(transform->getMatrix(), placement());
    EXPECT_EQ(childNames(node), "K");
    EXPECT_FALSE(hasFileInfo(node));
}

TEST_F(SourceReferencesTest, ARootIsExchangedEvenWithoutATransform)
{
    const Holder root(named("root", reference("car.stp")));
    root->addChild(named("K"));
    attachFileInfo(root);
    removeSourceReferences(root);
    EXPECT_FALSE(isReference(root));
    EXPECT_TRUE(osg::fcCast<osg::Transform3D>(root->getCore())->isIdentity());
    EXPECT_FALSE(hasFileInfo(root));
    EXPECT_EQ(childNames(root), "K");
}

TEST_F(SourceReferencesTest, AReferenceWithoutASourceFileIsLeftAlone)
{
    const Holder root(named("root"));
    root->addChild(named("R", osg::ExtReferenceBase::create()));
    attachFileInfo(root->getChild(0));
    removeSourceReferences(root);
    removeInvalidMechanorReferences(root);
    EXPECT_TRUE(isReference(root->getChild(0)));
    EXPECT_TRUE(hasFileInfo(root->getChild(0)));
}

TEST_F(SourceReferencesTest, EveryEditIsWithinTheBracketOfItsField)
{
    const Holder root(named("root"));
    root->addChild(named("A", reference("a.stp")));
    root->getChild(0)->addChild(named("x"));
    root->addChild(named("B", reference("b.stp", placement())));
    attachFileInfo(root->getChild(1));
    const osg::EditAudit audit;
    removeSourceReferences(root);
    for (const osg::EditAudit::Record& record : audit.unbracketed())
        EXPECT_EQ(record.type, "Transform3D"); // the new core takes the matrix over before anybody knows it
    EXPECT_TRUE(audit.idleBrackets().empty());
    EXPECT_EQ(audit.openBrackets(), 0u);
    ASSERT_EQ(audit.brackets().size(), 3u);
    EXPECT_EQ(audit.brackets()[0].mask, osg::Node::CoreFieldMask);
    EXPECT_EQ(audit.brackets()[1].mask, osg::AttachmentContainer::AttachmentsFieldMask);
    EXPECT_EQ(audit.brackets()[2].mask, osg::Node::ChildrenFieldMask);
}

TEST_F(SourceReferencesTest, AnInvalidReferenceLosesItsMatrixAndKeepsEverythingElse)
{
    const Holder root(named("root"));
    root->addChild(named("R", reference("**lost.mcp", placement())));
    const NodePtr node = root->getChild(0);
    node->addChild(named("K"));
    attachFileInfo(node);
    removeInvalidMechanorReferences(root);
    ASSERT_TRUE(root->getChild(0) == node);
    EXPECT_FALSE(isReference(node));
    EXPECT_TRUE(osg::fcCast<osg::Transform3D>(node->getCore())->isIdentity());
    EXPECT_TRUE(hasFileInfo(node));
    EXPECT_EQ(childNames(node), "K");
}

TEST_F(SourceReferencesTest, OnlyTwoStarsAtTheBeginningMakeAReferenceInvalid)
{
    const Holder root(named("root"));
    for (const char* path : {"*lost.mcp", "dir/**lost.mcp", "", " **lost.mcp"})
        root->addChild(named("R", reference(path)));
    root->addChild(named("R", reference("**")));
    removeInvalidMechanorReferences(root);
    for (unsigned i = 0; i < 4; ++i)
        EXPECT_TRUE(isReference(root->getChild(i))) << i;
    EXPECT_FALSE(isReference(root->getChild(4)));
}

TEST_F(SourceReferencesTest, NullNodesAndNodesWithoutACoreArePassedOver)
{
    const Holder root(osg::Node::create());
    root->addChild(osg::Node::create());
    removeSourceReferences(root);
    removeSourceReferences(NodePtr());
    removeInvalidMechanorReferences(root);
    removeInvalidMechanorReferences(NodePtr());
    EXPECT_EQ(root->getNChildren(), 1u);
}

} // namespace
