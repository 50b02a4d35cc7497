#include "scene/FeatureEdges.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace
{

constexpr double thirtyDegrees = 0.5236;

/// A box with 24 vertices, as CAD kernels mesh it: each face has its own.
osg::Mesh box(const osg::Vec3f& size)
{
    const int corners[6][4] = {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4}, {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}};
    std::vector<osg::Vec3f> positions;
    std::vector<std::uint32_t> triangles;
    std::vector<osg::FaceRange> faces;
    for (const auto& face : corners) {
        const auto first = static_cast<std::uint32_t>(positions.size());
        for (const int corner : face)
            positions.push_back({corner & 1 ? size.x : 0, corner & 2 ? size.y : 0, corner & 4 ? size.z : 0});
        faces.push_back({static_cast<std::uint32_t>(triangles.size() / 3), 2});
        triangles.insert(triangles.end(), {first, first + 1, first + 2, first, first + 2, first + 3});
    }
    osg::Mesh mesh;
    mesh.positions = positions;
    mesh.triangles = triangles;
    mesh.faces = faces;
    return mesh;
}

/// The side of a cylinder in `parts` strips, and its lid above; both have their own vertices.
osg::Mesh cylinder(unsigned parts)
{
    std::vector<osg::Vec3f> positions;
    std::vector<std::uint32_t> triangles;
    for (unsigned i = 0; i <= parts; ++i) {
        const double angle = 2 * M_PI * (i % parts) / parts;
        for (const float z : {0.0f, 1.0f, 1.0f})
            positions.push_back({static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle)), z});
    }
    for (unsigned i = 0; i < parts; ++i)
        triangles.insert(triangles.end(), {3 * i, 3 * i + 3, 3 * i + 4, 3 * i, 3 * i + 4, 3 * i + 1});
    for (unsigned i = 1; i + 1 < parts; ++i)
        triangles.insert(triangles.end(), {2, 3 * i + 2, 3 * i + 5});
    osg::Mesh mesh;
    mesh.positions = positions;
    mesh.triangles = triangles;
    mesh.faces = std::vector<osg::FaceRange>{{0, 2 * parts}, {2 * parts, parts - 2}};
    return mesh;
}

double lengthOf(const osg::Mesh& mesh, const osg::FeatureEdges& edges)
{
    double sum = 0;
    for (std::size_t i = 0; i < edges.segments.size(); i += 2) {
        const osg::Vec3f &a = mesh.positions[edges.segments[i]], &b = mesh.positions[edges.segments[i + 1]];
        sum += std::hypot(a.x - b.x, a.y - b.y, a.z - b.z);
    }
    return sum;
}

TEST(FeatureEdges, ABoxHasTwelve)
{
    const osg::Mesh mesh = box({1, 2, 4});
    const osg::FeatureEdges edges = osg::featureEdges(mesh, thirtyDegrees);
    EXPECT_EQ(edges.edges.size(), 12u);
    EXPECT_EQ(edges.segments.size(), 24u);
    EXPECT_DOUBLE_EQ(lengthOf(mesh, edges), 4 * (1 + 2 + 4));
    for (const osg::FeatureEdge& edge : edges.edges) {
        EXPECT_EQ(edge.count, 1u);
        EXPECT_LT(edge.face, edge.other);
        EXPECT_LT(edge.other, 6u);
    }
    EXPECT_EQ(edges.edges[5].first, 5u);
}

TEST(FeatureEdges, WithoutFacesAnglesTell)
{
    osg::Mesh mesh = box({1, 2, 4});
    mesh.faces = {};
    const osg::FeatureEdges edges = osg::featureEdges(mesh, thirtyDegrees);
    EXPECT_EQ(edges.segments.size(), 24u);
    EXPECT_DOUBLE_EQ(lengthOf(mesh, edges), 28);
    for (const osg::FeatureEdge& edge : edges.edges)
        EXPECT_EQ(edge.face, osg::FeatureEdge::noFace);
    EXPECT_TRUE(osg::featureEdges(mesh, 1.6).segments.empty()) << "right angles are no more than 91.7 degrees";
}

TEST(FeatureEdges, TheSeamOfACylinderIsNone)
{
    const osg::Mesh mesh = cylinder(24);
    const osg::FeatureEdges edges = osg::featureEdges(mesh, thirtyDegrees);
    ASSERT_EQ(edges.edges.size(), 2u);
    EXPECT_EQ(edges.edges[0], (osg::FeatureEdge{0, 24, 0, 1})) << "around the lid";
    EXPECT_EQ(edges.edges[1], (osg::FeatureEdge{24, 24, 0, osg::FeatureEdge::noFace})) << "the rim below";
    EXPECT_NEAR(lengthOf(mesh, edges), 2 * 24 * 2 * std::sin(M_PI / 24), 1e-5);
}

TEST(FeatureEdges, WhatDoesNotHangTogetherIsSeveral)
{
    // Two sheets, each half of the one face and half of the other.
    osg::Mesh mesh;
    std::vector<osg::Vec3f> positions;
    std::vector<std::uint32_t> triangles;
    for (const float y : {0.0f, 2.0f}) {
        const auto first = static_cast<std::uint32_t>(positions.size());
        positions.insert(positions.end(), {{0, -1, y}, {1, -1, y}, {1, 0, y}, {0, 0, y}, {1, 1, y}, {0, 1, y}});
        triangles.insert(triangles.end(), {first, first + 1, first + 2, first, first + 2, first + 3});
    }
    for (const float y : {0.0f, 2.0f}) {
        const auto first = static_cast<std::uint32_t>(y == 0 ? 0 : 6);
        triangles.insert(triangles.end(), {first + 3, first + 2, first + 4, first + 3, first + 4, first + 5});
    }
    mesh.positions = positions;
    mesh.triangles = triangles;
    mesh.faces = std::vector<osg::FaceRange>{{0, 4}, {4, 4}};
    std::size_t between = 0;
    for (const osg::FeatureEdge& edge : osg::featureEdges(mesh, thirtyDegrees).edges)
        between += edge.face == 0 && edge.other == 1 ? 1 : 0;
    EXPECT_EQ(between, 2u);
}

TEST(FeatureEdges, TrianglesOfEitherWindingAreCompared)
{
    osg::Mesh mesh;
    mesh.positions = std::vector<osg::Vec3f>{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}};
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 2, 1, 3, 2};
    EXPECT_EQ(osg::featureEdges(mesh, thirtyDegrees).segments.size(), 8u) << "the rim";
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 2, 1, 2, 3};
    EXPECT_EQ(osg::featureEdges(mesh, thirtyDegrees).segments.size(), 8u) << "turned round";
    mesh.positions = std::vector<osg::Vec3f>{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0.2f, 0.2f, 0.001f}};
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 2, 1, 3, 2};
    EXPECT_EQ(osg::featureEdges(mesh, thirtyDegrees).segments.size(), 10u) << "folded back";
}

TEST(FeatureEdges, MoreThanTwoTrianglesMeetInAnEdge)
{
    osg::Mesh mesh;
    mesh.positions = std::vector<osg::Vec3f>{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, -1, 0}, {0, -1, 0.1f}};
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 2, 1, 0, 3, 1, 0, 4};
    mesh.faces = std::vector<osg::FaceRange>{{0, 3}};
    EXPECT_EQ(osg::featureEdges(mesh, thirtyDegrees).segments.size(), 14u);
}

TEST(FeatureEdges, WhatIsNoTriangleIsPassedOver)
{
    const float infinite = std::numeric_limits<float>::infinity();
    osg::Mesh mesh;
    mesh.positions = std::vector<osg::Vec3f>{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {infinite, 0, 0}};
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 2, 0, 1, 3, 0, 1, 9};
    EXPECT_TRUE(osg::featureEdges(mesh, thirtyDegrees).segments.empty());
    EXPECT_TRUE(osg::featureEdges(osg::Mesh(), thirtyDegrees).edges.empty());
}

TEST(FeatureEdges, PlusAndMinusZeroAreOnePlace)
{
    osg::Mesh mesh;
    mesh.positions = std::vector<osg::Vec3f>{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {-0.0f, 0, 0}, {1, -0.0f, 0}, {0, -1, 0}};
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 2, 4, 3, 5};
    EXPECT_EQ(osg::featureEdges(mesh, thirtyDegrees).segments.size(), 8u);
}

} // namespace
