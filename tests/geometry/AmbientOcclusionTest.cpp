#include "geometry/AmbientOcclusion.h"
#include "files/scenefile/SceneFile.h"
#include "host/znOpenSGUtils/znNodeUtils.h"
#include "render/Snapshot.h"
#include "tests/standalone/znOpenSGUtils/TreeTest.h"

#include <QtMath>

using testing::Each;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{

class AmbientOcclusionTest : public TreeTest
{
protected:
    /// A square with the sides 2 in the plane z = 0 about (x, 0, 0), facing up, cut into 16 x 16 squares.
    static osg::Mesh plate(float x = 0)
    {
        constexpr std::uint32_t cuts = 17;
        std::vector<osg::Vec3f> positions;
        std::vector<std::uint32_t> triangles;
        for (std::uint32_t row = 0; row < cuts; ++row)
            for (std::uint32_t column = 0; column < cuts; ++column)
                positions.push_back({x - 1 + float(column) / 8, -1 + float(row) / 8, 0});
        for (std::uint32_t row = 0; row + 1 < cuts; ++row)
            for (std::uint32_t i = row * cuts; i + 1 < (row + 1) * cuts; ++i)
                triangles.insert(triangles.end(), {i, i + 1, i + cuts + 1, i, i + cuts + 1, i + cuts});
        osg::Mesh mesh;
        mesh.normals = std::vector<osg::Vec3f>(positions.size(), {0, 0, 1});
        mesh.positions = std::move(positions);
        mesh.triangles = std::move(triangles);
        return mesh;
    }
    /// The value at the middle of a plate.
    static float middle(const osg::Mesh& mesh) { return mesh.occlusion[8 * 17 + 8]; }

    /// As `plate`, standing up in the plane y = 1 and facing -Y.
    static osg::Matrix standing()
    {
        osg::Matrix matrix;
        matrix.values = {1, 0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 0, 0, 1, 1, 1};
        return matrix;
    }

    const osg::NodePtr root = addGroup(m_session.sceneRoot(), "root");
};

TEST_F(AmbientOcclusionTest, WhatNothingCoversSeesTheWholeSky)
{
    const osg::NodePtr node = add(root, geometry(plate()));
    znNodeUtils::addAmbientOcclusionData(root);
    EXPECT_EQ(meshOf(node).occlusion.size(), 17u * 17);
    EXPECT_THAT(meshOf(node).occlusion.span(), Each(1.0f));
    EXPECT_THAT(m_log, IsEmpty());
}

TEST_F(AmbientOcclusionTest, AVertexBetweenTwoSheetsSeesNothingAndThoseOutsideSeeAll)
{
    const osg::NodePtr floor = add(root, geometry(plate()));
    osg::Matrix lid = placed({1, -1, -1}, {0, 0, 0.002f});
    const osg::NodePtr ceiling = add(add(root, transform(lid)), geometry(plate()));
    const osg::NodePtr above = add(add(root, transform(placed({1, 1, 1}, {0, 0, 0.004f}))), geometry(plate()));
    znNodeUtils::addAmbientOcclusionData(root);
    EXPECT_LT(middle(meshOf(floor)), 0.02f);
    EXPECT_LT(middle(meshOf(ceiling)), 0.02f);
    EXPECT_EQ(middle(meshOf(above)), 1.0f);
}

TEST_F(AmbientOcclusionTest, AnInnerCornerSeesHalfTheSky)
{
    // Floor and wall of a cosine-weighted sky: the wall hides one half of it at the edge between the two.
    const osg::NodePtr floor = add(root, geometry(plate()));
    const osg::NodePtr wall = add(add(root, transform(standing())), geometry(plate()));
    geometry::OcclusionOptions options;
    options.rays = 1024;
    ASSERT_EQ(geometry::addAmbientOcclusion(root, options).error, QString());
    const osg::Mesh& mesh = meshOf(floor);
    const float atEdge = mesh.occlusion[16 * 17 + 8], far = mesh.occlusion[8];
    EXPECT_NEAR(atEdge, 0.5f, 0.05f);
    EXPECT_GT(far, 0.95f);
    EXPECT_NEAR(meshOf(wall).occlusion[8], 0.5f, 0.05f);
    for (std::size_t row = 1; row < 17; ++row)
        EXPECT_LE(mesh.occlusion[row * 17 + 8], mesh.occlusion[(row - 1) * 17 + 8] + 0.01f) << "row " << row;
}

TEST_F(AmbientOcclusionTest, InactiveGeometryDarkensNothingAndGetsNothing)
{
    const osg::NodePtr floor = add(root, geometry(plate()));
    const osg::NodePtr lid = add(root, transform(placed({1, 1, 1}, {0, 0, 0.01f})));
    const osg::NodePtr hidden = add(lid, geometry(plate()));
    lid->setActive(false);
    znNodeUtils::addAmbientOcclusionData(root);
    EXPECT_EQ(middle(meshOf(floor)), 1.0f);
    EXPECT_TRUE(meshOf(hidden).occlusion.empty());
}

TEST_F(AmbientOcclusionTest, SharedGeometryGetsTheMeanOfItsPlacesAndStaysShared)
{
    const osg::GeometryPtr shared = geometry(plate());
    const osg::NodePtr open = add(root, shared);
    const osg::NodePtr covered = add(add(root, transform(placed({1, 1, 1}, {40, 0, 0}))), shared);
    add(add(root, transform(placed({1, 1, 1}, {40, 0, 0.02f}))), geometry(plate()));
    znNodeUtils::addAmbientOcclusionData(root);
    EXPECT_EQ(open->getCore(), covered->getCore());
    EXPECT_NEAR(middle(meshOf(open)), 0.5f, 0.05f);
}

TEST_F(AmbientOcclusionTest, MeshesThatCoresShareStayShared)
{
    const auto mesh = std::make_shared<const osg::Mesh>(plate());
    const osg::GeometryPtr a = osg::GeometryBase::create(), b = osg::GeometryBase::create();
    osg::GeometryAccess::setMesh(*a, mesh);
    osg::GeometryAccess::setMesh(*b, mesh);
    add(root, a);
    add(root, b);
    znNodeUtils::addAmbientOcclusionData(root);
    EXPECT_EQ(osg::GeometryAccess::sharedMesh(*a), osg::GeometryAccess::sharedMesh(*b));
    EXPECT_THAT(osg::GeometryAccess::mesh(*a).occlusion.span(), SizeIs(17 * 17));
}

TEST_F(AmbientOcclusionTest, TheNumberOfThreadsChangesNothing)
{
    const osg::NodePtr floor = add(root, geometry(plate()));
    add(add(root, transform(standing())), geometry(plate()));
    geometry::OcclusionOptions options;
    options.threads = 1;
    geometry::addAmbientOcclusion(root, options);
    const osg::Buffer<float> one = meshOf(floor).occlusion;
    options.threads = 3;
    geometry::addAmbientOcclusion(root, options);
    EXPECT_EQ(meshOf(floor).occlusion, one);
}

TEST_F(AmbientOcclusionTest, DamagedMeshesAndEmptyTreesAreBorne)
{
    osg::Mesh damaged = plate();
    damaged.triangles = std::vector<std::uint32_t>{0, 1, 2000000, 5, 5, 5, 0, 1, 18, 7};
    std::vector<osg::Vec3f> positions(damaged.positions.begin(), damaged.positions.end());
    positions[1].x = std::numeric_limits<float>::quiet_NaN();
    damaged.positions = std::move(positions);
    const osg::NodePtr node = add(root, geometry(damaged));
    add(root, geometry(osg::Mesh()));
    znNodeUtils::addAmbientOcclusionData(root);
    znNodeUtils::addAmbientOcclusionData({});
    EXPECT_THAT(meshOf(node).occlusion.span(), Each(testing::AllOf(testing::Ge(0.0f), testing::Le(1.0f))));
}

TEST_F(AmbientOcclusionTest, APictureShowsWhatTheMeshTells)
{
    const osg::NodePtr node = add(root, geometry(plate()));
    const auto brightness = [&](float value) {
        osg::Mesh mesh = plate();
        mesh.occlusion = std::vector<float>(mesh.positions.size(), value);
        osg::GeometryAccess::setMesh(*osg::fcCast<osg::Geometry>(node->getCore()),
                                     std::make_shared<const osg::Mesh>(mesh));
        render::SnapshotOptions options;
        options.width = options.height = 32;
        options.view = render::View::Top;
        const render::SnapshotResult picture = render::renderSnapshot(root, options);
        EXPECT_FALSE(picture.error) << picture.error.message.toStdString();
        return qGray(picture.image.pixel(16, 16));
    };
    const int open = brightness(1), half = brightness(0.5f), closed = brightness(0);
    EXPECT_GT(open, half + 15);
    EXPECT_GT(half, closed + 15);
}

TEST_F(AmbientOcclusionTest, ASceneFileKeepsIt)
{
    osg::Mesh mesh = triangle();
    mesh.occlusion = std::vector<float>{0.25f, 0.5f, 0.875f};
    add(root, geometry(mesh));
    const QString file = path(QStringLiteral("scene.osb"));
    ASSERT_TRUE(osg::scenefile::writeSceneFile(root, file));
    const osg::RefPtr<osg::NodePtr> read(osg::scenefile::readSceneFile(file).value());
    ASSERT_TRUE(read);
    EXPECT_THAT(meshOf(read->getChild(0)).occlusion.span(), testing::ElementsAre(0.25f, 0.5f, 0.875f));
}

} // namespace
