#include "geometry/NormalRepair.h"

#include "tests/standalone/znOpenSGUtils/TreeTest.h"

using testing::ElementsAre;

namespace
{

using geometry::WrongNormals;

class NormalRepairTest : public TreeTest
{
protected:
    /// The triangle faces up; these are the normals of its corners.
    static osg::Mesh lit(const osg::Vec3f& a, const osg::Vec3f& b, const osg::Vec3f& c)
    {
        osg::Mesh mesh = triangle();
        mesh.normals = std::vector<osg::Vec3f>{a, b, c};
        mesh.colors = std::vector<osg::Color4f>{{1, 0, 0, 1}, {0, 1, 0, 1}, {0, 0, 1, 1}};
        return mesh;
    }
    static WrongNormals counted(const osg::Mesh& mesh) { return geometry::wrongNormals(mesh); }

    static constexpr osg::Vec3f up{0, 0, 1}, down{0, 0, -1};
    static constexpr osg::Vec3f near59{0.857f, 0, 0.515f}; ///< degrees off the plane
    static constexpr osg::Vec3f near61{0.875f, 0, 0.485f};
};

TEST_F(NormalRepairTest, MoreThanSixtyDegreesAreOff)
{
    EXPECT_EQ(counted(lit(up, up, up)), (WrongNormals{0, 0}));
    EXPECT_EQ(counted(lit(near59, up, near59)), (WrongNormals{0, 0}));
    EXPECT_EQ(counted(lit(up, up, near61)), (WrongNormals{1, 0}));
    EXPECT_EQ(counted(lit(down, down, near61)), (WrongNormals{1, 0}));
    EXPECT_EQ(counted(lit(down, {0.9f, 0, -0.1f}, down)), (WrongNormals{1, 1}));
    EXPECT_EQ(counted(lit({0, 0, 9}, {0, 0, 0.001f}, up)), (WrongNormals{0, 0})) << "lengths do not matter";
    EXPECT_EQ(counted(lit({0, 0, 0}, up, up)), (WrongNormals{1, 0}));
}

TEST_F(NormalRepairTest, MeshesWithoutNormalsAndFlatTrianglesAreRight)
{
    osg::Mesh mesh = lit(down, down, down);
    mesh.positions = std::vector<osg::Vec3f>{{1, 2, 3}, {2, 2, 3}, {5, 2, 3}};
    EXPECT_EQ(counted(mesh), (WrongNormals{0, 0}));
    mesh = triangle();
    mesh.normals = {};
    EXPECT_EQ(counted(mesh), (WrongNormals{0, 0}));
    mesh = lit(down, down, down);
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 7};
    EXPECT_EQ(counted(mesh), (WrongNormals{0, 0}));
}

TEST_F(NormalRepairTest, AWrongCornerGetsAVertexOfItsOwn)
{
    osg::Mesh before = lit(up, near61, near59);
    before.texCoords = std::vector<osg::Vec2f>{{0, 0}, {0.25f, 0}, {0, 1}};
    before.texCoords1 = std::vector<osg::Vec2f>{{0, 0}, {0.75f, 0}, {0, 1}};
    before.occlusion = std::vector<float>{1, 0.5f, 0};
    const osg::Mesh mesh = geometry::withRightNormals(before);
    EXPECT_THAT(mesh.triangles.span(), ElementsAre(0, 3, 2));
    EXPECT_EQ(listed(mesh.positions), (Rows{{1, 2, 3}, {5, 2, 3}, {1, 8, 3}, {5, 2, 3}}));
    EXPECT_EQ(mesh.normals[3], up);
    EXPECT_EQ(mesh.normals[2], near59);
    ASSERT_EQ(mesh.colors.size(), 4u);
    EXPECT_EQ(mesh.colors[3].green, 1);
    ASSERT_EQ(mesh.texCoords.size(), 4u);
    EXPECT_EQ(mesh.texCoords[3], mesh.texCoords[1]);
    ASSERT_EQ(mesh.texCoords1.size(), 4u);
    EXPECT_EQ(mesh.texCoords1[3], (osg::Vec2f{0.75f, 0}));
    EXPECT_THAT(mesh.occlusion.span(), ElementsAre(1, 0.5f, 0, 0.5f));
    EXPECT_TRUE(mesh.brep.empty());
    EXPECT_EQ(mesh.faces, before.faces);
    EXPECT_EQ(counted(mesh), (WrongNormals{0, 0}));
}

TEST_F(NormalRepairTest, ATriangleWhoseNormalsAgreeOnItsBackIsTurned)
{
    const osg::Mesh mesh = geometry::withRightNormals(lit(down, down, {0.1f, 0, -0.9f}));
    EXPECT_THAT(mesh.triangles.span(), ElementsAre(0, 2, 1));
    EXPECT_EQ(mesh.positions.size(), 3u);
    EXPECT_EQ(mesh.normals[0], down);
    EXPECT_EQ(counted(mesh), (WrongNormals{0, 0}));
    const osg::Mesh torn = geometry::withRightNormals(lit({0.8f, 0, -0.6f}, {-0.8f, 0, -0.6f}, down));
    EXPECT_THAT(torn.triangles.span(), ElementsAre(3, 4, 5)) << "they do not agree";
}

TEST_F(NormalRepairTest, GeometriesOfATreeAreMendedOnceAndTheRestIsLeft)
{
    const osg::GeometryPtr wrong = geometry(lit(up, up, down)), right = geometry();
    add(root, wrong);
    add(root, wrong);
    const osg::NodePtr sound = add(root, right);
    const auto mesh = osg::GeometryAccess::sharedMesh(*right);
    EXPECT_EQ(geometry::wrongNormals(root), (WrongNormals{1, 0}));
    EXPECT_EQ(geometry::repairNormals(root), (WrongNormals{1, 0}));
    EXPECT_EQ(geometry::repairNormals(root), (WrongNormals{0, 0}));
    EXPECT_EQ(osg::GeometryAccess::sharedMesh(*right), mesh);
    EXPECT_EQ(meshOf(sound).brep.size(), 7u);
}

} // namespace
