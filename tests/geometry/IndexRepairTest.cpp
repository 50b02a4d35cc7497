#include "host/znOpenSGUtils/znNodeUtils.h"
#include "tests/standalone/znOpenSGUtils/TreeTest.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

class IndexRepairTest : public TreeTest
{
protected:
    static osg::Mesh fourVertices()
    {
        osg::Mesh mesh;
        mesh.positions = std::vector<osg::Vec3f>{{1, 0, 0}, {5, 0, 0}, {1, 6, 0}, {5, 6, 2}};
        return mesh;
    }

    const osg::Mesh& verified(osg::Mesh mesh)
    {
        const osg::GeometryPtr core = geometry(std::move(mesh));
        osg::setName(core, "plate");
        const osg::NodePtr node = add(root, core);
        znNodeUtils::verifyIndexMap(root);
        return meshOf(node);
    }

    const osg::NodePtr root = addGroup(m_session.sceneRoot(), "root");
};

TEST_F(IndexRepairTest, ASoundMeshIsNotTouched)
{
    const osg::GeometryPtr core = geometry();
    add(root, core);
    const auto before = osg::GeometryAccess::sharedMesh(*core);
    znNodeUtils::verifyIndexMap(root);
    EXPECT_EQ(osg::GeometryAccess::sharedMesh(*core), before);
    EXPECT_THAT(m_log, IsEmpty());
}

TEST_F(IndexRepairTest, TrianglesWithoutVerticesGoAndTheFacesFollow)
{
    osg::Mesh mesh = fourVertices();
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 2, 1, 4, 2, 3, 2, 1, 0xffffffff, 0, 1, 0, 2, 3};
    mesh.faces = std::vector<osg::FaceRange>{{0, 2}, {2, 1}, {3, 1}, {4, 1}};
    const osg::Mesh& result = verified(mesh);
    EXPECT_THAT(result.triangles.span(), ElementsAre(0, 1, 2, 3, 2, 1, 0, 2, 3));
    EXPECT_THAT(result.faces.span(),
                ElementsAre(osg::FaceRange{0, 1}, osg::FaceRange{1, 1}, osg::FaceRange{2, 0}, osg::FaceRange{2, 1}));
    EXPECT_THAT(m_log, ElementsAre("Geometry plate: 2 triangles without vertices were removed"));
}

TEST_F(IndexRepairTest, LinesAndPointsWithoutVerticesGo)
{
    osg::Mesh mesh = fourVertices();
    mesh.lines = std::vector<std::uint32_t>{0, 1, 1, 9, 2, 3, 2};
    mesh.points = std::vector<std::uint32_t>{4, 3, 2};
    const osg::Mesh& result = verified(mesh);
    EXPECT_THAT(result.lines.span(), ElementsAre(0, 1, 2, 3));
    EXPECT_THAT(result.points.span(), ElementsAre(3, 2));
    EXPECT_THAT(m_log, ElementsAre("Geometry plate: 2 lines without vertices were removed; 1 points without vertices "
                                   "were removed"));
}

TEST_F(IndexRepairTest, TheRestOfATriangleGoes)
{
    osg::Mesh mesh = fourVertices();
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 2, 3, 2};
    EXPECT_THAT(verified(mesh).triangles.span(), ElementsAre(0, 1, 2));
    EXPECT_THAT(m_log, ElementsAre("Geometry plate: 1 triangles without vertices were removed"));
}

TEST_F(IndexRepairTest, ValuesThatAreTooManyAreCutOffAndTooFewAreDropped)
{
    osg::Mesh mesh = fourVertices();
    mesh.normals = std::vector<osg::Vec3f>{{0, 0, 1}, {0, 1, 0}, {1, 0, 0}, {0, 0, -1}, {0, -1, 0}};
    mesh.texCoords = std::vector<osg::Vec2f>(3);
    mesh.texCoords1 = std::vector<osg::Vec2f>(5);
    mesh.colors = std::vector<osg::Color4f>(4);
    mesh.occlusion = std::vector<float>{0.25f};
    const osg::Mesh& result = verified(mesh);
    EXPECT_THAT(listed(result.normals),
                ElementsAre(ElementsAre(0, 0, 1), ElementsAre(0, 1, 0), ElementsAre(1, 0, 0), ElementsAre(0, 0, -1)));
    EXPECT_TRUE(result.texCoords.empty());
    EXPECT_EQ(result.texCoords1.size(), 4u);
    EXPECT_EQ(result.colors.size(), 4u);
    EXPECT_TRUE(result.occlusion.empty());
    EXPECT_THAT(m_log, ElementsAre("Geometry plate: normals without vertices were removed; there were too few texture "
                                   "coordinates, and they were removed; texture coordinates without vertices were "
                                   "removed; there were too few occlusion values, and they "
                                   "were removed"));
}

TEST_F(IndexRepairTest, FacesThatDoNotCoverTheTrianglesAreDropped)
{
    osg::Mesh mesh = fourVertices();
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 2, 3, 2, 1};
    mesh.faces = std::vector<osg::FaceRange>{{0, 1}, {1, 0xffffffff}};
    EXPECT_TRUE(verified(mesh).faces.empty());
    EXPECT_THAT(m_log, ElementsAre("Geometry plate: the faces did not cover the triangles and were removed"));
}

TEST_F(IndexRepairTest, ASecondRunFindsNothing)
{
    osg::Mesh mesh = fourVertices();
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 7, 3, 2, 1};
    verified(mesh);
    m_log.clear();
    znNodeUtils::verifyIndexMap(root);
    znNodeUtils::verifyIndexMap({});
    EXPECT_THAT(m_log, IsEmpty());
}

} // namespace
