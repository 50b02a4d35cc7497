#include "importer/SceneText.h"

#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/Mesh.h"
#include "tests/scene/SceneGraphTest.h"

#include <clocale>

namespace
{

using SceneTextTest = SceneGraphTest;
using osg::NodePtr;

NodePtr named(const char* name, const osg::NodeCorePtr& core)
{
    const NodePtr node = osg::Node::create();
    node->setCore(core);
    osg::setName(node, name);
    return node;
}

osg::GeometryPtr triangleOf(const char* materialName)
{
    osg::Mesh mesh;
    mesh.positions = std::vector<osg::Vec3f>{{0, 0, 0}, {10, 0, 0}, {0, 10, 0}};
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 2};
    mesh.lines = std::vector<std::uint32_t>{0, 1, 1, 2};
    const osg::GeometryPtr geometry = osg::GeometryBase::create();
    osg::GeometryAccess::setMesh(*geometry, std::make_shared<const osg::Mesh>(std::move(mesh)));
    const osg::SimpleMaterialPtr material = osg::SimpleMaterialBase::create();
    osg::setName(material, materialName);
    geometry->setMaterial(material);
    return geometry;
}

osg::RefPtr<NodePtr> sampleScene()
{
    const osg::RefPtr<NodePtr> root(named("scene", osg::Group::create()));
    const osg::TransformPtr moved = osg::TransformBase::create();
    osg::Matrix matrix;
    matrix[12] = 1.5f;
    matrix[14] = -2;
    moved->setMatrix(matrix);
    root->addChild(named("arm", moved));
    const osg::GeometryPtr geometry = triangleOf("Lack rot");
    root->getChild(0)->addChild(named("left", geometry));
    root->getChild(0)->addChild(named("right", geometry));
    root->getChild(0)->getChild(1)->setActive(false);
    const osg::ExtReferencePtr reference = osg::ExtReferenceBase::create();
    const osg::FileReferencePtr file = osg::FileReferenceBase::create();
    file->setPath("parts/wheel.stp");
    reference->setSourceFile(file);
    matrix[0] = 0;
    matrix[1] = 1;
    matrix[4] = -1;
    matrix[5] = 0;
    reference->setMatrix(matrix);
    root->addChild(named("wheel", reference));
    root->addChild(osg::Node::create());
    return root;
}

const char* const sampleText = "scene [Group]\n"
                               "  arm [Transform], at 1.5 0 -2\n"
                               "    left [Geometry @1], 1 triangle, 2 lines, material 'Lack rot'\n"
                               "    right (inactive) [Geometry @1], 1 triangle, 2 lines, material 'Lack rot'\n"
                               "  wheel [ExtReference], at 1.5 0 -2, axes 0 1 0, -1 0 0, 0 0 1, file "
                               "'parts/wheel.stp', state 0\n"
                               "  - [no core]\n";

TEST_F(SceneTextTest, EachNodeIsALineWithWhatIsSpecialAboutIt)
{
    EXPECT_EQ(zn::describeScene(sampleScene()), sampleText);
}

TEST_F(SceneTextTest, TheTextKeepsItsPointsUnderALocaleWithDecimalCommas)
{
    if (!std::setlocale(LC_NUMERIC, "de_DE.UTF-8"))
        GTEST_SKIP() << "the machine has no locale with decimal commas";
    const std::string text = zn::describeScene(sampleScene());
    std::setlocale(LC_NUMERIC, "C");
    EXPECT_EQ(text, sampleText);
}

TEST_F(SceneTextTest, ANullNodeHasNoText)
{
    EXPECT_EQ(zn::describeScene(NodePtr()), "");
}

TEST_F(SceneTextTest, DeepLevelsAreTold)
{
    const osg::RefPtr<NodePtr> root(named("top", osg::Group::create()));
    NodePtr last = root;
    for (int i = 0; i < 62; ++i) {
        last->addChild(named("n", osg::Group::create()));
        last = last->getChild(0);
    }
    const std::string text = zn::describeScene(root);
    EXPECT_NE(text.find("\n" + std::string(120, ' ') + "n [Group]\n"), std::string::npos);
    EXPECT_NE(text.find("\n" + std::string(120, ' ') + "<62> n [Group]\n"), std::string::npos);
}

TEST_F(SceneTextTest, CountsTellSharedContentOnceAndAsPlaced)
{
    const auto scene = sampleScene();
    const zn::SceneCounts counts = zn::countScene(scene);
    EXPECT_EQ(counts.nodes, 6u);
    EXPECT_EQ(counts.geometries, 1u);
    EXPECT_EQ(counts.placedGeometries, 2u);
    EXPECT_EQ(counts.triangles, 1u);
    EXPECT_EQ(counts.placedTriangles, 2u);
    EXPECT_EQ(counts.materials, 1u);
    EXPECT_EQ(counts.references, 1u);
    EXPECT_EQ(zn::countScene(NodePtr()).nodes, 0u);
}

} // namespace
