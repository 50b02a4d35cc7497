#include "importer/MeshTreeOptimization.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "importer/SceneText.h"
#include "scene/GeometryWalk.h"
#include "scene/SceneEdits.h"
#include "standalone/startup/StandaloneSession.h"
#include "standalone/znVariants/SessionVariants.h"
#include "tests/support/BookmarkScene.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace
{

class MeshTreeOptimizationTest : public testing::Test
{
protected:
    void SetUp() override { osg::addChild(session.sceneRoot(), root); }

    osg::NodePtr addBox(const osg::NodePtr& parent, const char* name, const char* material, float red = 0.25f)
    {
        const osg::NodePtr part = bookmarkscene::part(name, bookmarkscene::box({0, 0, 0}, {1, 2, 3}),
                                                      bookmarkscene::paint(material, {red, 0.5f, 0.75f}));
        osg::addChild(parent, part);
        return part;
    }
    osg::NodePtr addPlace(float x)
    {
        const osg::TransformPtr core = osg::TransformBase::create();
        osg::Matrix matrix;
        matrix.values[12] = x;
        core->setMatrix(matrix);
        const osg::NodePtr node = osg::makeNodeFor(core);
        osg::addChild(root, node);
        return node;
    }
    void set(const char* name, const char* value = "on")
    {
        ASSERT_FALSE(session.settings().set(QString::fromUtf8(name), QString::fromUtf8(value)));
    }
    std::vector<std::string> optimize()
    {
        std::vector<std::string> steps;
        importer::optimizeMeshTree(session, root, [&](const char* step) { steps.emplace_back(step ? step : "end"); });
        return steps;
    }
    static osg::MaterialPtr materialOf(const osg::NodePtr& node) { return osg::geometryOf(node)->getMaterial(); }

    zn::StandaloneSession session;
    osg::NodePtr root = osg::makeNodeFor(osg::Group::create());
};

TEST_F(MeshTreeOptimizationTest, EqualMaterialsBecomeOneAndNothingElseChanges)
{
    const osg::NodePtr first = addBox(addPlace(5), "a", ""), second = addBox(root, "b", ""),
                       red = addBox(root, "c", "", 1), named = addBox(root, "d", "steel");
    EXPECT_THAT(optimize(),
                ElementsAre("optimizeMaterials", "flushTransformations", "mergeGeometries", "unshareNodes", "end"));
    EXPECT_TRUE(materialOf(first) == materialOf(second));
    EXPECT_FALSE(materialOf(first) == materialOf(red));
    EXPECT_FALSE(materialOf(first) == materialOf(named));
    EXPECT_EQ(zn::countScene(root).nodes, 6u);
    EXPECT_EQ(osg::fcCast<osg::Transform>(root->getChild(0)->getCore())->getMatrix().values[12], 5);
}

TEST_F(MeshTreeOptimizationTest, MaterialsStayApartWhereTheyAreNotToBeMerged)
{
    const osg::NodePtr first = addBox(root, "a", ""), second = addBox(root, "b", "");
    set("optimize.mergeMaterials", "off");
    optimize();
    EXPECT_FALSE(materialOf(first) == materialOf(second));
}

TEST_F(MeshTreeOptimizationTest, TheMaterialOfAVariantStays)
{
    const osg::NodePtr first = addBox(root, "a", "paint"), second = addBox(root, "b", "paint");
    const osg::MaterialPtr chosen = materialOf(second);
    zn::variants::sessionVariants(session).materialVariant(chosen);
    optimize();
    EXPECT_TRUE(materialOf(first) == chosen);
    EXPECT_TRUE(materialOf(second) == chosen);
}

TEST_F(MeshTreeOptimizationTest, TransformsGoIntoTheVerticesOnRequest)
{
    const osg::NodePtr box = addBox(addPlace(5), "a", "");
    set("optimize.flushTransformations");
    optimize();
    EXPECT_TRUE(osg::fcCast<osg::Transform>(root->getChild(0)->getCore())->getMatrix().isIdentity());
    EXPECT_EQ(osg::GeometryAccess::mesh(*osg::geometryOf(box)).positions[7], (osg::Vec3f{6, 2, 3}));
}

TEST_F(MeshTreeOptimizationTest, GeometriesAreMergedOnRequest)
{
    addBox(addPlace(5), "a", "");
    addBox(root, "b", "");
    set("optimize.mergeGeometries");
    optimize();
    EXPECT_EQ(zn::countScene(root).nodes, 2u);
    EXPECT_EQ(zn::countScene(root).triangles, 24u);
}

TEST_F(MeshTreeOptimizationTest, StripsAreMergedAsTriangles)
{
    addBox(root, "a", "");
    auto strip = std::make_shared<osg::Mesh>(osg::GeometryAccess::mesh(*osg::geometryOf(addBox(root, "b", ""))));
    strip->triangles = {};
    strip->primitives = std::vector<osg::Primitive>{{osg::Primitive::Kind::Strip, 0, 4}};
    strip->corners = std::vector<std::uint32_t>{0, 1, 2, 3};
    osg::exchangeMesh(osg::geometryOf(root->getChild(1)), strip);
    set("optimize.mergeGeometries");
    optimize();
    EXPECT_EQ(zn::countScene(root).nodes, 2u);
    EXPECT_EQ(zn::countScene(root).triangles, 14u);
}

TEST_F(MeshTreeOptimizationTest, NumbersOfTheWriterAreNoNames)
{
    const osg::NodePtr top = addPlace(0), left = addPlace(5), right = addPlace(9);
    osg::addChild(top, left);
    osg::addChild(top, right);
    osg::setName(top, "o1");
    osg::setName(left, "o2");
    osg::setName(right, "o5");
    addBox(left, "o3", "");
    addBox(right, "o6", "");
    set("optimize.mergeGeometries");
    optimize();
    EXPECT_EQ(zn::countScene(root).nodes, 2u);
}

TEST_F(MeshTreeOptimizationTest, NodesThatVariantsAndSelectionKnowStay)
{
    const osg::NodePtr varied = addBox(root, "a", ""), selected = addBox(root, "b", "");
    addBox(root, "c", "");
    addBox(root, "d", "");
    zn::variants::sessionVariants(session).nodeVariant(varied);
    session.select(selected);
    set("optimize.mergeGeometries");
    optimize();
    EXPECT_EQ(zn::describeScene(root), "- [Group]\n  a [Geometry], 12 triangles, material\n  b [Geometry], 12 "
                                       "triangles, material\n  c [Geometry], 24 triangles, material\n");
}

TEST_F(MeshTreeOptimizationTest, NodesGetContentsOfTheirOwnOnRequest)
{
    const osg::NodePtr box = addBox(root, "a", "");
    osg::addChild(root, osg::makeNodeFor(box->getCore()));
    optimize();
    EXPECT_TRUE(root->getChild(0)->getCore() == root->getChild(1)->getCore());
    set("optimize.unshareNodes");
    optimize();
    EXPECT_FALSE(root->getChild(0)->getCore() == root->getChild(1)->getCore());
    EXPECT_TRUE(materialOf(root->getChild(0)) == materialOf(root->getChild(1)));
}

} // namespace
