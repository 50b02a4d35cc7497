// What the optimisation makes of trees with each of its settings on and off.

#include "host/OSGSystem/Edit.h"
#include "host/znKernel/znScenegraph.h"
#include "scene/NodeProperties.h"
#include "tests/optimization/TreeOptimizationTest.h"

namespace
{

using testing::ElementsAre;
using testing::IsEmpty;

class OptimizationEffectsTest : public TreeOptimizationTest
{
protected:
    using Rows = std::vector<std::vector<float>>;

    const osg::Mesh& runAndGet(const osg::NodePtr& node)
    {
        EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
        return meshOf(node);
    }
};

// The triangle has the corners (1, 2, 3), (5, 2, 3) and (1, 8, 3), faces up, and has the area 12.

double areaOf(const osg::Mesh& mesh)
{
    const osg::Vec3f a = mesh.positions[mesh.triangles[0]];
    const osg::Vec3f b = mesh.positions[mesh.triangles[1]];
    const osg::Vec3f c = mesh.positions[mesh.triangles[2]];
    const osg::Vec3f u{b.x - a.x, b.y - a.y, b.z - a.z};
    const osg::Vec3f v{c.x - a.x, c.y - a.y, c.z - a.z};
    return std::hypot(u.y * v.z - u.z * v.y, u.z * v.x - u.x * v.z, u.x * v.y - u.y * v.x) / 2;
}

TEST_F(OptimizationEffectsTest, AFlushedScaleStretchesTheFaceAndLeavesItsNormalUpright)
{
    const osg::NodePtr above = add(tree.get(), transform(placed({2, 3, 5}, {100, 0, 0})));
    const osg::Mesh& mesh = runAndGet(add(above, geometry()));
    EXPECT_EQ(listed(mesh.positions), (Rows{{2, 6, 15}, {10, 6, 15}, {2, 24, 15}}));
    EXPECT_EQ(listed(mesh.normals), (Rows{{0, 0, 1}, {0, 0, 1}, {0, 0, 1}}));
    EXPECT_THAT(mesh.triangles.span(), ElementsAre(0, 1, 2));
    EXPECT_DOUBLE_EQ(areaOf(mesh), 72);
    EXPECT_EQ(matrixOf(above), placed({1, 1, 1}, {100, 0, 0}));
}

TEST_F(OptimizationEffectsTest, AFlushedMirrorTurnsTheFaceWithItsNormal)
{
    set("optimize.flushTransformations", "on");
    const osg::NodePtr above = add(tree.get(), transform(placed({1, 1, -2}, {0, 0, 9})));
    const osg::Mesh& mesh = runAndGet(add(above, geometry()));
    EXPECT_EQ(listed(mesh.positions), (Rows{{1, 2, 3}, {5, 2, 3}, {1, 8, 3}}));
    EXPECT_EQ(listed(mesh.normals), (Rows{{0, 0, -1}, {0, 0, -1}, {0, 0, -1}}));
    EXPECT_THAT(mesh.triangles.span(), ElementsAre(0, 2, 1));
    EXPECT_DOUBLE_EQ(areaOf(mesh), 12);
    EXPECT_TRUE(matrixOf(above).isIdentity());
}

TEST_F(OptimizationEffectsTest, AFlushedTurnTakesPositionsAndNormalsAlong)
{
    set("optimize.flushTransformations", "on");
    // X becomes Y, Y becomes Z, Z becomes X.
    osg::Matrix matrix;
    matrix.values = {0, 1, 0, 0, 0, 0, 1, 0, 1, 0, 0, 0, 10, 20, 30, 1};
    const osg::NodePtr above = add(tree.get(), transform(matrix));
    const osg::Mesh& mesh = runAndGet(add(above, geometry()));
    EXPECT_EQ(listed(mesh.positions), (Rows{{13, 21, 32}, {13, 25, 32}, {13, 21, 38}}));
    EXPECT_EQ(listed(mesh.normals), (Rows{{1, 0, 0}, {1, 0, 0}, {1, 0, 0}}));
    EXPECT_THAT(mesh.triangles.span(), ElementsAre(0, 1, 2));
    EXPECT_DOUBLE_EQ(areaOf(mesh), 12);
}

TEST_F(OptimizationEffectsTest, SharedGeometryIsFlushedOnceForEachScale)
{
    const osg::GeometryPtr shared = geometry();
    std::vector<osg::NodePtr> parts;
    for (const float scale : {2.f, 2.f, 1.f})
        parts.push_back(add(add(tree.get(), transform(placed({scale, scale, scale}, {7, 0, 0}))), shared));
    EXPECT_EQ(listed(runAndGet(parts[0]).positions), (Rows{{2, 4, 6}, {10, 4, 6}, {2, 16, 6}}));
    EXPECT_EQ(parts[1]->getCore(), parts[0]->getCore());
    EXPECT_EQ(listed(meshOf(parts[2]).positions), (Rows{{1, 2, 3}, {5, 2, 3}, {1, 8, 3}}));
}

TEST_F(OptimizationEffectsTest, VertexColorsAlwaysGo)
{
    osg::Mesh mesh = triangle();
    mesh.colors = std::vector<osg::Color4f>(3, {1, 0.5f, 0.25f, 1});
    EXPECT_THAT(runAndGet(add(tree.get(), geometry(mesh))).colors.span(), IsEmpty());
}

TEST_F(OptimizationEffectsTest, SharedContentIsUnsharedOnRequestOnly)
{
    const auto place = [this] {
        tree = makeTree();
        return add(tree.get(), tree->getChild(0)->getCore());
    };
    const osg::NodePtr shared = place();
    runAndGet(shared);
    EXPECT_FALSE(wasCalled("znScenegraph::unshareNode"));
    EXPECT_EQ(shared->getCore(), tree->getChild(0)->getCore());
    set("optimize.unshareNodes", "on");
    const osg::NodePtr single = place();
    runAndGet(single);
    EXPECT_NE(single->getCore(), tree->getChild(0)->getCore());
    EXPECT_EQ(listed(meshOf(single).positions), (Rows{{1, 2, 3}, {5, 2, 3}, {1, 8, 3}}));
}

TEST_F(OptimizationEffectsTest, GeometryIsMergedOnRequestOnly)
{
    const auto build = [this] {
        tree = makeTree();
        osg::Mesh mesh = triangle();
        mesh.positions = std::vector<osg::Vec3f>{{1, 2, 4}, {5, 2, 4}, {1, 8, 4}};
        mesh.brep = {};
        const osg::GeometryPtr plain = osg::fcCast<osg::Geometry>(tree->getChild(0)->getCore());
        osg::Mesh own = triangle();
        own.brep = {};
        osg::GeometryAccess::setMesh(*plain, std::make_shared<const osg::Mesh>(own));
        add(tree.get(), geometry(mesh));
    };
    build();
    EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
    EXPECT_EQ(tree->getNChildren(), 2u);
    build();
    set("optimize.mergeGeometries", "on");
    EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
    ASSERT_EQ(tree->getNChildren(), 1u);
    EXPECT_EQ(meshOf(tree->getChild(0)).triangles.size(), 6u);
}

TEST_F(OptimizationEffectsTest, StitchingIsPassedOnAsItIs)
{
    set("optimize.mergeGeometries", "on");
    runAndGet(tree->getChild(0));
    EXPECT_THAT(callsOf("znRetessellation::setupTessellation"),
                ElementsAre("znRetessellation::setupTessellation(0.1, 15, 0, false, 0.01)"));
}

TEST_F(OptimizationEffectsTest, WithoutTheSolidKernelNoOcclusionIsAdded)
{
    EXPECT_THAT(runAndGet(tree->getChild(0)).occlusion.span(), IsEmpty());
    EXPECT_FALSE(wasCalled("znNodeUtils::addAmbientOcclusionData"));
    set("optimize.solidKernel", "on");
    tree = makeTree();
    EXPECT_EQ(runAndGet(tree->getChild(0)).occlusion.size(), 3u);
}

TEST_F(OptimizationEffectsTest, TheTreeComesToTheGroundOnRequest)
{
    set("scene.putOnGround", "on");
    EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
    EXPECT_THAT(
        callsOf("znFileIO::applyGeometryImportTransformations"),
        ElementsAre("znFileIO::applyGeometryImportTransformations(" + treeText() + ", 'a.stp', false, false, true)"));
    EXPECT_EQ(matrixOf(tree.get()), placed({1, 1, 1}, {0, 0, -3}));
}

TEST_F(OptimizationEffectsTest, ATreeStaysWhereItIsUnasked)
{
    tree = osg::makeNodeFor(transform(placed({1, 1, 1}, {11, 0, 0})));
    osg::setName(tree.get(), "Tree");
    add(tree.get(), geometry());
    EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
    EXPECT_THAT(
        callsOf("znFileIO::applyGeometryImportTransformations"),
        ElementsAre("znFileIO::applyGeometryImportTransformations(" + treeText() + ", 'a.stp', false, false, false)"));
    EXPECT_EQ(matrixOf(tree.get()), placed({1, 1, 1}, {11, 0, 0}));
}

TEST_F(OptimizationEffectsTest, AssetsComeOnMaterialsOfTheirNamesOnRequestOnly)
{
    write(QStringLiteral("steel.gltf"),
          R"({"asset":{"version":"2.0"},"materials":[{"name":"steel","extras":{"uuid":"u1"}}]})");
    m_session.settings().set(QStringLiteral("assets.folder"), path(QString()));
    const auto materialAfterRun = [this] {
        tree = makeTree();
        const osg::SimpleMaterialPtr own = osg::SimpleMaterialBase::create();
        osg::setName(own, "steel");
        const osg::GeometryPtr core = osg::fcCast<osg::Geometry>(tree->getChild(0)->getCore());
        core->setMaterial(own);
        EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
        return std::string(core->getMaterial()->getType().getName());
    };
    EXPECT_EQ(materialAfterRun(), "SimpleMaterial");
    EXPECT_FALSE(wasCalled("znController::call"));
    set("scene.applyMaterialAssets", "on");
    EXPECT_EQ(materialAfterRun(), "UBRDFMaterial");
}

TEST_F(OptimizationEffectsTest, TheEnvironmentOfASceneWithContentStays)
{
    const osg::RefPtr<osg::NodePtr> former(znScenegraph::createEnvironmentGeometrySwitch({}));
    const osg::NodePtr locked = add(scene(), geometry(), "locked");
    osg::setLocked(locked, true);
    EXPECT_EQ(run("a.stp", locked), znCADFileTypes::JobSucceeded);
    EXPECT_EQ(tree->getParent(), scene());
    EXPECT_EQ(znScenegraph::environmentGeometrySwitch(), former.get());
    EXPECT_FALSE(wasCalled("znScenegraph::createEnvironmentGeometrySwitch"));
    EXPECT_FALSE(wasCalled("znOSGWidget::showAllMains"));
}

} // namespace
