#include "host/znOpenSGUtils/znOptimize.h"
#include "tests/geometry/MeshMeasures.h"
#include "tests/standalone/znOpenSGUtils/TreeTest.h"

#include <numeric>

using testing::ElementsAre;

namespace
{

using Kind = osg::Primitive::Kind;

class TriangulateTest : public TreeTest
{
protected:
    /// Corners in the height 3, all of them one primitive.
    static osg::Mesh flat(const std::vector<std::pair<float, float>>& outline, Kind kind)
    {
        osg::Mesh mesh;
        std::vector<osg::Vec3f> positions;
        for (const auto& [x, y] : outline)
            positions.push_back({x, y, 3});
        std::vector<std::uint32_t> corners(outline.size());
        std::iota(corners.begin(), corners.end(), 0u);
        mesh.primitives = std::vector<osg::Primitive>{{kind, 0, static_cast<std::uint32_t>(corners.size())}};
        mesh.corners = std::move(corners);
        mesh.positions = std::move(positions);
        return mesh;
    }

    const osg::Mesh& triangulated(osg::Mesh mesh, bool dropFlat = false)
    {
        m_node = add(root, geometry(std::move(mesh)));
        znOptimize::triangulate(root, dropFlat);
        return meshOf(m_node);
    }

    /// Each triangle looks up, and no two overlap.
    static void expectUpward(const osg::Mesh& mesh)
    {
        for (std::size_t i = 0; i < mesh.triangles.size(); i += 3) {
            osg::Mesh one = mesh;
            one.triangles = std::vector<std::uint32_t>(&mesh.triangles[i], &mesh.triangles[i] + 3);
            EXPECT_GT(measuresOf(one).volume, 0) << "triangle " << i / 3;
            for (std::size_t j = 0; j < i; j += 3)
                EXPECT_FALSE(overlapFromAbove(mesh, i / 3, j / 3)) << "triangles " << i / 3 << " and " << j / 3;
        }
    }

    const osg::NodePtr root = addGroup(m_session.sceneRoot(), "root");
    osg::NodePtr m_node;
};

TEST_F(TriangulateTest, AConcaveOutlineIsCoveredOnceAndFacesUpward)
{
    // An L of 10 x 8 without its 7 x 6 corner: 80 - 42 = 38.
    const osg::Mesh& mesh = triangulated(flat({{0, 0}, {10, 0}, {10, 2}, {3, 2}, {3, 8}, {0, 8}}, Kind::Polygon));
    EXPECT_EQ(mesh.triangles.size(), 12u);
    EXPECT_DOUBLE_EQ(measuresOf(mesh).area, 38);
    EXPECT_DOUBLE_EQ(measuresOf(mesh).volume, 38); // a third of base times height 3
    expectUpward(mesh);
    EXPECT_TRUE(mesh.primitives.empty());
    EXPECT_TRUE(mesh.corners.empty());
}

TEST(MeshMeasures, TrianglesThatShareAnEdgeOrACornerDoNotOverlap)
{
    osg::Mesh mesh;
    mesh.positions =
        std::vector<osg::Vec3f>{{0, 0, 1}, {4, 0, 1}, {4, 3, 1}, {0, 3, 2}, {9, 5, 1}, {1, 1, 7}, {3, 1, 7}};
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 2, 0, 2, 3, 2, 1, 4, 5, 6, 2, 5, 2, 3};
    EXPECT_FALSE(overlapFromAbove(mesh, 0, 1));
    EXPECT_FALSE(overlapFromAbove(mesh, 1, 2));
    EXPECT_FALSE(overlapFromAbove(mesh, 0, 2));
    EXPECT_TRUE(overlapFromAbove(mesh, 0, 3));
    EXPECT_TRUE(overlapFromAbove(mesh, 4, 1));
    EXPECT_TRUE(overlapFromAbove(mesh, 2, 2));
}

TEST_F(TriangulateTest, AStarWithFivePointsIsCoveredOnce)
{
    const osg::Mesh& mesh =
        triangulated(flat({{10, 0}, {2, 2}, {0, 10}, {-2, 2}, {-10, 0}, {-2, -2}, {0, -10}, {2, -2}}, Kind::Polygon));
    EXPECT_EQ(mesh.triangles.size(), 18u);
    EXPECT_DOUBLE_EQ(measuresOf(mesh).area, 80); // 8 triangles (0,0), (10,0), (2,2)
    expectUpward(mesh);
}

TEST_F(TriangulateTest, TrianglesOfAStripAllFaceTheSameSide)
{
    const osg::Mesh& mesh = triangulated(flat({{0, 0}, {2, 0}, {0, 5}, {2, 5}, {0, 9}}, Kind::Strip));
    EXPECT_THAT(mesh.triangles.span(), ElementsAre(0, 1, 2, 2, 1, 3, 2, 3, 4));
    EXPECT_DOUBLE_EQ(measuresOf(mesh).area, 5 + 5 + 4);
    expectUpward(mesh);
}

TEST_F(TriangulateTest, TrianglesOfAFanShareTheFirstCorner)
{
    const osg::Mesh& mesh = triangulated(flat({{0, 0}, {4, 0}, {4, 3}, {0, 3}}, Kind::Fan));
    EXPECT_THAT(mesh.triangles.span(), ElementsAre(0, 1, 2, 0, 2, 3));
    expectUpward(mesh);
}

TEST_F(TriangulateTest, NewTrianglesComeBehindTheOldOnesAsOneMoreFace)
{
    osg::Mesh mesh = triangle();
    mesh.corners = std::vector<std::uint32_t>{2, 1, 0};
    mesh.primitives = std::vector<osg::Primitive>{{Kind::Polygon, 0, 3}};
    const osg::Mesh& result = triangulated(mesh);
    EXPECT_EQ(result.triangles.size(), 6u);
    EXPECT_THAT(result.faces.span(), ElementsAre(osg::FaceRange{0, 1}, osg::FaceRange{1, 1}));
}

TEST_F(TriangulateTest, WhatNamesNoVertexIsLeftOutAndTold)
{
    osg::Mesh mesh = flat({{0, 0}, {4, 0}, {4, 3}}, Kind::Polygon);
    mesh.corners = std::vector<std::uint32_t>{0, 1, 2, 0, 1, 3};
    mesh.primitives = std::vector<osg::Primitive>{
        {Kind::Polygon, 0, 3}, {Kind::Strip, 3, 3}, {Kind::Fan, 4, 3}, {Kind::Polygon, 0xffffffff, 2}};
    const osg::Mesh& result = triangulated(mesh);
    EXPECT_EQ(result.triangles.size(), 3u);
    EXPECT_THAT(m_log, ElementsAre("Geometry without a name: 3 polygons or strips name vertices that are not there and "
                                   "were left out"));
}

TEST_F(TriangulateTest, TrianglesWithoutAreaGoOnRequestOnly)
{
    osg::Mesh mesh;
    mesh.positions = std::vector<osg::Vec3f>{{0, 0, 0}, {4, 0, 0}, {0, 4, 0}, {2, 0, 0}};
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 3, 0, 1, 2, 1, 1, 2};
    mesh.faces = std::vector<osg::FaceRange>{{0, 1}, {1, 1}, {2, 1}};
    EXPECT_EQ(triangulated(mesh, false).triangles.size(), 9u);
    const osg::Mesh& dropped = triangulated(mesh, true);
    EXPECT_THAT(dropped.triangles.span(), ElementsAre(0, 1, 2));
    EXPECT_THAT(dropped.faces.span(), ElementsAre(osg::FaceRange{0, 0}, osg::FaceRange{0, 1}, osg::FaceRange{1, 0}));
}

TEST_F(TriangulateTest, SharedGeometryStaysSharedAndTrianglesAreNotTouched)
{
    const osg::GeometryPtr shared = geometry(flat({{0, 0}, {4, 0}, {4, 3}}, Kind::Polygon));
    const osg::NodePtr a = add(root, shared), b = add(root, shared);
    const osg::GeometryPtr done = geometry();
    add(root, done);
    const auto before = osg::GeometryAccess::sharedMesh(*done);
    znOptimize::triangulate(root, false);
    EXPECT_EQ(a->getCore(), b->getCore());
    EXPECT_EQ(meshOf(a).triangles.size(), 3u);
    EXPECT_EQ(osg::GeometryAccess::sharedMesh(*done), before);
    znOptimize::triangulate({}, true);
}

TEST_F(TriangulateTest, APolygonThatWasMirroredStillFacesOutward)
{
    const osg::NodePtr mirrored = add(root, transform(placed({-1, 1, 1}, {0, 0, 0})));
    const osg::NodePtr node = add(mirrored, geometry(flat({{0, 0}, {4, 0}, {4, 3}, {0, 3}}, Kind::Fan)));
    znOptimize::flushTransformationsKeepFaceNormals(root);
    znOptimize::triangulate(root, false);
    EXPECT_DOUBLE_EQ(measuresOf(meshOf(node)).area, 12);
    expectUpward(meshOf(node));
}

} // namespace
