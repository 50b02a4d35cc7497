#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/znKernel/znScenegraph.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "host/znOpenSGUtils/znNodeUtils.h"
#include "tests/standalone/znOpenSGUtils/TreeTest.h"

namespace
{

class NodeChangesTest : public TreeTest
{
};

TEST_F(NodeChangesTest, VertexColoursGoAndTheRestStaysShared)
{
    osg::Mesh mesh = triangle();
    mesh.colors = std::vector<osg::Color4f>(3, {0.5f, 0.25f, 0.125f, 1});
    const osg::NodePtr colored = add(addGroup(root, "group"), geometry(mesh));
    const osg::NodePtr plain = add(root, geometry());
    const auto untouched = osg::GeometryAccess::sharedMesh(*osg::fcCast<osg::Geometry>(plain->getCore()));
    znNodeUtils::removeVertexColors(root);
    znNodeUtils::removeVertexColors({});
    EXPECT_TRUE(meshOf(colored).colors.empty());
    EXPECT_EQ(meshOf(colored).positions.data(), mesh.positions.data());
    EXPECT_EQ(osg::GeometryAccess::sharedMesh(*osg::fcCast<osg::Geometry>(plain->getCore())), untouched);
}

TEST_F(NodeChangesTest, ADestroyedNodeIsGone)
{
    const osg::NodePtr node = addGroup(root, "node");
    const unsigned id = node->getContainerId();
    znNodeUtils::destroy(node);
    znNodeUtils::destroy({});
    EXPECT_EQ(root->getNChildren(), 0u);
    EXPECT_FALSE(osg::FieldContainerFactory::the()->getContainer(id));
}

TEST_F(NodeChangesTest, ADestroyedNodeLivesOnInTheHandsOfOthers)
{
    const osg::RefPtr<osg::NodePtr> held(addGroup(root, "node"));
    znNodeUtils::destroy(held);
    EXPECT_EQ(root->getNChildren(), 0u);
    EXPECT_EQ(nameOf(held), "node");
}

TEST_F(NodeChangesTest, TheEnvironmentSwitchIsDestroyedAndMadeAnew)
{
    EXPECT_FALSE(znScenegraph::environmentGeometrySwitch());
    const osg::NodePtr empty = znScenegraph::createEnvironmentGeometrySwitch({});
    EXPECT_EQ(empty->getNChildren(), 0u);
    const unsigned id = empty->getContainerId();
    znNodeUtils::destroy(znScenegraph::environmentGeometrySwitch());
    EXPECT_FALSE(znScenegraph::environmentGeometrySwitch());
    EXPECT_FALSE(osg::FieldContainerFactory::the()->getContainer(id));

    add(add(root, transform(placed({1, 1, 1}, {100, 0, 0}))), geometry());
    const osg::NodePtr made = znScenegraph::createEnvironmentGeometrySwitch({});
    EXPECT_EQ(znScenegraph::environmentGeometrySwitch(), made);
    EXPECT_FALSE(made->isActive());
    EXPECT_FALSE(made->getParent());
    ASSERT_EQ(made->getNChildren(), 1u);
    // The box is (101, 2, 3) to (105, 8, 3): a square of twice its longer side around its middle (103, 5).
    EXPECT_EQ(listed(meshOf(made->getChild(0)).positions),
              (Rows{{97, -1, 3}, {109, -1, 3}, {109, 11, 3}, {97, 11, 3}}));
}

TEST_F(NodeChangesTest, TheEnvironmentSwitchCarriesWhatItIsGiven)
{
    const osg::NodePtr dome = osg::makeNodeFor(geometry());
    const osg::NodePtr made = znScenegraph::createEnvironmentGeometrySwitch(dome);
    ASSERT_EQ(made->getNChildren(), 1u);
    EXPECT_EQ(made->getChild(0), dome);
}

TEST_F(NodeChangesTest, NodesGetContentsOfTheirOwn)
{
    const osg::GeometryPtr shared = geometry();
    const osg::NodePtr a = add(root, shared, "a");
    const osg::NodePtr b = add(a, shared, "b");
    const osg::NodePtr alone = add(root, geometry(), "alone");
    const osg::NodeCorePtr own = alone->getCore();
    const znNodePtr result = znScenegraph::unshareNode(root, znScenegraph::DuplicateCores, true, true);
    EXPECT_EQ(result.get(), root);
    EXPECT_NE(a->getCore(), b->getCore());
    EXPECT_EQ(alone->getCore(), own);
    EXPECT_EQ(meshOf(a).positions.data(), meshOf(b).positions.data());
}

TEST_F(NodeChangesTest, UnsharingStopsAtTheNodeUnlessAskedFurther)
{
    const osg::GeometryPtr shared = geometry();
    const osg::NodePtr a = add(root, shared);
    const osg::NodePtr b = add(a, shared);
    const osg::NodePtr c = add(root, shared);
    (void)znScenegraph::unshareNode(a, znScenegraph::DuplicateCores, false, true);
    EXPECT_NE(a->getCore(), c->getCore());
    EXPECT_EQ(b->getCore(), c->getCore());
}

TEST_F(NodeChangesTest, MaterialsAreCopiedOnRequest)
{
    const osg::GeometryPtr shared = geometry();
    const osg::SimpleMaterialPtr material = osg::SimpleMaterialBase::create();
    material->setDiffuse({0.5f, 0.25f, 0.125f});
    shared->setMaterial(material);
    const osg::NodePtr a = add(root, shared);
    const osg::NodePtr b = add(root, shared);
    (void)znScenegraph::unshareNode(a, znScenegraph::DuplicateCores, true, true);
    const auto materialOf = [](const osg::NodePtr& node) {
        return osg::fcCast<osg::Geometry>(node->getCore())->getMaterial();
    };
    EXPECT_EQ(materialOf(a), materialOf(b));
    const osg::NodePtr c = add(root, b->getCore());
    (void)znScenegraph::unshareNode(c, znScenegraph::DuplicateCores, true, false);
    EXPECT_NE(materialOf(c), materialOf(b));
    EXPECT_EQ(osg::fcCast<osg::SimpleMaterial>(materialOf(c))->getDiffuse(), (osg::Color3f{0.5f, 0.25f, 0.125f}));
}

TEST_F(NodeChangesTest, APlainTransformBecomesOneThatToolsMove)
{
    const osg::NodePtr node = add(root, transform(turned({1, 2, 3})), "placed");
    osg::setName(node->getCore(), "core");
    EXPECT_TRUE(znNodeUtils::convertTransformToTransform3D(node));
    EXPECT_EQ(node->getCore()->getType().getId(), osg::Transform3D::_type.getId());
    EXPECT_EQ(matrixOf(node), turned({1, 2, 3}));
    EXPECT_STREQ(osg::getName(node->getCore()), "core");
    EXPECT_EQ(nameOf(node), "placed");
    EXPECT_FALSE(znNodeUtils::convertTransformToTransform3D(node));
}

TEST_F(NodeChangesTest, NodesThatSharedATransformShareTheNewOne)
{
    const osg::TransformPtr shared = transform(turned({1, 2, 3}));
    const osg::NodePtr nodes[] = {add(root, shared), add(root, shared), add(root, shared)};
    const osg::NodePtr other = add(root, transform(turned({1, 2, 3})));
    for (const osg::NodePtr& node : nodes)
        EXPECT_TRUE(znNodeUtils::convertTransformToTransform3D(node));
    EXPECT_TRUE(znNodeUtils::convertTransformToTransform3D(other));
    EXPECT_EQ(nodes[0]->getCore(), nodes[1]->getCore());
    EXPECT_EQ(nodes[0]->getCore(), nodes[2]->getCore());
    EXPECT_NE(nodes[0]->getCore(), other->getCore());
}

TEST_F(NodeChangesTest, ReferencesGroupsGeometriesAndNullAreNoPlainTransforms)
{
    const osg::NodePtr reference = add(root, osg::ExtReferenceBase::create());
    const osg::NodePtr part = add(root, geometry());
    for (const osg::NodePtr& node : {reference, part, root, osg::NodePtr()})
        EXPECT_FALSE(znNodeUtils::convertTransformToTransform3D(node));
    EXPECT_EQ(reference->getCore()->getType().getId(), osg::ExtReference::_type.getId());
}

} // namespace
