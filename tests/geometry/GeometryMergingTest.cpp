#include "host/znOpenSGUtils/znOptimize.h"
#include "scene/BrepPack.h"
#include "scene/Tags.h"
#include "tests/geometry/MeshMeasures.h"
#include "tests/standalone/znOpenSGUtils/TreeTest.h"

using testing::ElementsAre;

namespace
{

class MergeTest : public TreeTest
{
protected:
    /// The corners (7, 2, 3), (9, 2, 3), (9, 5, 3) and (7, 5, 3), facing up, two faces.
    static osg::Mesh square()
    {
        osg::Mesh mesh;
        mesh.positions = std::vector<osg::Vec3f>{{7, 2, 3}, {9, 2, 3}, {9, 5, 3}, {7, 5, 3}};
        mesh.normals = std::vector<osg::Vec3f>(4, {0, 0, 1});
        mesh.triangles = std::vector<std::uint32_t>{0, 1, 2, 0, 2, 3};
        mesh.lines = std::vector<std::uint32_t>{3, 0};
        mesh.points = std::vector<std::uint32_t>{2};
        mesh.faces = std::vector<osg::FaceRange>{{0, 1}, {1, 1}};
        mesh.brep = std::vector<std::byte>(5);
        return mesh;
    }

    void TearDown() override
    {
        m_red = osg::SimpleMaterialPtr();
        m_blue = osg::SimpleMaterialPtr();
        TreeTest::TearDown();
    }

    osg::NodePtr addPart(const osg::NodePtr& parent, const osg::GeometryPtr& core, const char* name = nullptr)
    {
        if (!core->getMaterial())
            core->setMaterial(m_red);
        return add(parent, core, name);
    }

    const osg::NodePtr root = addGroup(m_session.sceneRoot(), "root");
    osg::RefPtr<osg::SimpleMaterialPtr> m_red{osg::SimpleMaterial::create()};
    osg::RefPtr<osg::SimpleMaterialPtr> m_blue{osg::SimpleMaterial::create()};
};

TEST_F(MergeTest, GeometriesOfOneMaterialBecomeOneWithAllFacesInOrder)
{
    addPart(root, geometry(), "first");
    addPart(root, geometry(square()), "second");
    znOptimize::mergeGeometry(root);
    ASSERT_THAT(childNames(root), ElementsAre("first"));
    const osg::Mesh& mesh = meshOf(root->getChild(0));
    EXPECT_THAT(listed(mesh.positions),
                ElementsAre(ElementsAre(1, 2, 3), ElementsAre(5, 2, 3), ElementsAre(1, 8, 3), ElementsAre(7, 2, 3),
                            ElementsAre(9, 2, 3), ElementsAre(9, 5, 3), ElementsAre(7, 5, 3)));
    EXPECT_EQ(mesh.normals.size(), 7u);
    EXPECT_THAT(mesh.triangles.span(), ElementsAre(0, 1, 2, 3, 4, 5, 3, 5, 6));
    EXPECT_THAT(mesh.lines.span(), ElementsAre(6, 3));
    EXPECT_THAT(mesh.points.span(), ElementsAre(5));
    EXPECT_THAT(mesh.faces.span(), ElementsAre(osg::FaceRange{0, 1}, osg::FaceRange{1, 1}, osg::FaceRange{2, 1}));
    EXPECT_DOUBLE_EQ(measuresOf(mesh).area, 12 + 6);
    EXPECT_EQ(osg::fcCast<osg::Geometry>(root->getChild(0)->getCore())->getMaterial(), m_red.get());
    const auto breps = osg::unpackBreps(mesh.brep);
    ASSERT_TRUE(breps);
    ASSERT_EQ(breps->size(), 2u);
    EXPECT_EQ((*breps)[0].size(), 7u);
    EXPECT_EQ((*breps)[1].size(), 5u);
}

TEST_F(MergeTest, TheMergedGeometryGetsTheNameOfTheFirstInOneCopy)
{
    const osg::GeometryPtr first = geometry();
    osg::setName(first, "seat");
    addPart(root, first, "first");
    addPart(root, geometry(square()), "second");
    const auto nextId = [] { return osg::RefPtr<osg::GroupPtr>(osg::Group::create())->getContainerId(); };
    const unsigned before = nextId();
    znOptimize::mergeGeometry(root);
    const unsigned after = nextId();
    EXPECT_STREQ(osg::getName(root->getChild(0)->getCore()), "seat");
    // A geometry and its name.
    EXPECT_EQ(after - before, 1u + 2u);
}

TEST_F(MergeTest, OtherMaterialsParentsAndMakesStayApart)
{
    addPart(root, geometry(), "red");
    const osg::GeometryPtr blue = geometry();
    blue->setMaterial(m_blue);
    addPart(root, blue, "blue");
    addPart(addGroup(root, "group"), geometry(), "inner");
    osg::Mesh bare = triangle();
    bare.normals = {};
    addPart(root, geometry(bare), "bare");
    osg::Mesh plain = triangle();
    plain.brep = {};
    addPart(root, geometry(plain), "without surface");
    znOptimize::mergeGeometry(root);
    EXPECT_THAT(childNames(root), ElementsAre("red", "blue", "group", "bare", "without surface"));
}

TEST_F(MergeTest, WhatSaysMoreThanANameStays)
{
    addPart(root, geometry(), "a");
    osg::setTags(addPart(root, geometry(), "tagged"), {"layer"});
    addPart(root, geometry(), "hidden")->setActive(false);
    addGroup(addPart(root, geometry(), "with children"), "child");
    addPart(root, geometry(), "b");
    znOptimize::mergeGeometry(root);
    EXPECT_THAT(childNames(root), ElementsAre("a", "tagged", "hidden", "with children"));
    EXPECT_EQ(meshOf(root->getChild(0)).triangles.size(), 6u);
}

TEST_F(MergeTest, APartInManyPlacesIsMergedOnceForAll)
{
    const osg::GeometryPtr first = geometry(), second = geometry(square());
    std::vector<osg::NodePtr> places;
    for (const char* name : {"here", "there", "elsewhere"}) {
        places.push_back(addGroup(root, name));
        addPart(places.back(), first);
        addPart(places.back(), second);
    }
    znOptimize::mergeGeometry(root);
    for (const osg::NodePtr& place : places) {
        ASSERT_EQ(place->getNChildren(), 1u);
        EXPECT_EQ(place->getChild(0)->getCore(), places[0]->getChild(0)->getCore());
    }
    EXPECT_EQ(meshOf(places[0]->getChild(0)).triangles.size(), 9u);
}

TEST_F(MergeTest, GeometryThatHasOtherCompanionsElsewhereStaysShared)
{
    const osg::GeometryPtr shared = geometry();
    addPart(root, shared, "a");
    addPart(root, geometry(square()), "b");
    addPart(root, geometry(square()), "c");
    const osg::NodePtr other = addPart(addGroup(root, "group"), shared, "d");
    znOptimize::mergeGeometry(root);
    EXPECT_THAT(childNames(root), ElementsAre("a", "b", "group"));
    EXPECT_EQ(root->getChild(0)->getCore(), other->getCore());
    EXPECT_EQ(meshOf(root->getChild(1)).triangles.size(), 12u);
}

TEST_F(MergeTest, GeometryThatIsTwiceUnderOneParentStaysShared)
{
    const osg::GeometryPtr shared = geometry();
    addPart(root, shared, "a");
    addPart(root, shared, "b");
    znOptimize::mergeGeometry(root);
    EXPECT_THAT(childNames(root), ElementsAre("a", "b"));
}

TEST_F(MergeTest, TrianglesWithoutFacesBecomeOneFace)
{
    osg::Mesh bare = square();
    bare.faces = {};
    addPart(root, geometry());
    addPart(root, geometry(bare));
    znOptimize::mergeGeometry(root);
    EXPECT_THAT(meshOf(root->getChild(0)).faces.span(), ElementsAre(osg::FaceRange{0, 1}, osg::FaceRange{1, 2}));
}

TEST_F(MergeTest, DamagedMeshesStayApart)
{
    osg::Mesh beyond = triangle();
    beyond.triangles = std::vector<std::uint32_t>{0, 1, 3};
    osg::Mesh uneven = triangle();
    uneven.normals = std::vector<osg::Vec3f>(2);
    addPart(root, geometry(beyond), "beyond");
    addPart(root, geometry(uneven), "uneven");
    addPart(root, geometry(), "sound");
    znOptimize::mergeGeometry(root);
    EXPECT_THAT(childNames(root), ElementsAre("beyond", "uneven", "sound"));
}

TEST_F(MergeTest, ASecondRunChangesNothing)
{
    addPart(root, geometry());
    addPart(root, geometry(square()));
    znOptimize::mergeGeometry(root);
    const auto core = root->getChild(0)->getCore();
    znOptimize::mergeGeometry(root);
    znOptimize::mergeGeometry({});
    EXPECT_EQ(root->getChild(0)->getCore(), core);
    EXPECT_EQ(root->getNChildren(), 1u);
}

TEST_F(MergeTest, ExactSurfacesGoAndMeshesStay)
{
    const osg::NodePtr node = addPart(addGroup(root, "group"), geometry(square()));
    znOptimize::removeNURBS(root);
    osg::Mesh expected = square();
    expected.brep = {};
    EXPECT_EQ(meshOf(node), expected);
    const auto before = osg::GeometryAccess::sharedMesh(*osg::fcCast<osg::Geometry>(node->getCore()));
    znOptimize::removeNURBS(root);
    znOptimize::removeNURBS({});
    EXPECT_EQ(osg::GeometryAccess::sharedMesh(*osg::fcCast<osg::Geometry>(node->getCore())), before);
}

} // namespace
