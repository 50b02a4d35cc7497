#include "ptx/model/EdgeSplitter.h"

#include "ptx/model/MeshBuilder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <tuple>

using namespace ptx::model;

namespace
{

using Place = std::tuple<float, float, float>;

Place placeOf(const osg::Vec3f& p)
{
    return {p.x, p.y, p.z};
}

/// Two faces with vertices of their own that meet at an edge of length 10 between (0,0,0) and (10,0,0).
std::shared_ptr<const osg::Mesh> tent()
{
    MeshBuilder builder;
    for (const float side : {1.f, -1.f}) {
        const osg::Vec3f normal = {0, side * 0.6f, 0.8f};
        const auto a = builder.addVertex({0, 0, 0}, normal);
        const auto b = builder.addVertex({10, 0, 0}, normal);
        const auto c = builder.addVertex({3, side * 4, -3}, normal);
        builder.addTriangle(a, side > 0 ? b : c, side > 0 ? c : b);
        builder.endFace();
    }
    return builder.take();
}

double length(const osg::Vec3f& a, const osg::Vec3f& b)
{
    return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z);
}

double area(const osg::Mesh& mesh)
{
    double sum = 0;
    for (std::size_t i = 0; i < mesh.triangles.size(); i += 3) {
        const double a = length(mesh.positions[mesh.triangles[i]], mesh.positions[mesh.triangles[i + 1]]);
        const double b = length(mesh.positions[mesh.triangles[i + 1]], mesh.positions[mesh.triangles[i + 2]]);
        const double c = length(mesh.positions[mesh.triangles[i + 2]], mesh.positions[mesh.triangles[i]]);
        const double s = (a + b + c) / 2;
        sum += std::sqrt(std::max(0.0, s * (s - a) * (s - b) * (s - c)));
    }
    return sum;
}

} // namespace

TEST(EdgeSplitter, TextureCoordinatesAreHalvedWithTheirEdges)
{
    MeshBuilder builder;
    for (const osg::Vec2f& place : {osg::Vec2f{0, 0}, osg::Vec2f{8, 0}, osg::Vec2f{0, 8}}) {
        builder.addVertex({place.x, place.y, 3}, {0, 0, 1});
        builder.addTexCoord({1 + place.x / 4, place.y / 2});
    }
    builder.addTriangle(0, 1, 2);
    builder.endFace();
    const auto mesh = splitEdges(*builder.take(), 1.5f);
    ASSERT_GT(mesh->positions.size(), 20u);
    ASSERT_EQ(mesh->texCoords.size(), mesh->positions.size());
    for (std::size_t i = 0; i < mesh->positions.size(); ++i)
        EXPECT_EQ(mesh->texCoords[i], (osg::Vec2f{1 + mesh->positions[i].x / 4, mesh->positions[i].y / 2}));
}

TEST(EdgeSplitter, NoEdgeStaysLongerThanAsked)
{
    const auto mesh = splitEdges(*tent(), 1.5f);
    for (std::size_t i = 0; i < mesh->triangles.size(); i += 3)
        for (std::size_t k = 0; k < 3; ++k)
            EXPECT_LE(
                length(mesh->positions[mesh->triangles[i + k]], mesh->positions[mesh->triangles[i + (k + 1) % 3]]),
                1.5);
    EXPECT_NEAR(area(*mesh), area(*tent()), 1e-4);
    EXPECT_EQ(mesh->normals.size(), mesh->positions.size());
}

TEST(EdgeSplitter, FacesThatMetStillMeetAtEveryVertex)
{
    const auto mesh = splitEdges(*tent(), 0.7f);
    std::map<std::pair<Place, Place>, int> uses;
    for (std::size_t i = 0; i < mesh->triangles.size(); i += 3)
        for (std::size_t k = 0; k < 3; ++k) {
            const osg::Vec3f& a = mesh->positions[mesh->triangles[i + k]];
            const osg::Vec3f& b = mesh->positions[mesh->triangles[i + (k + 1) % 3]];
            ++uses[std::minmax(placeOf(a), placeOf(b))];
        }
    int open = 0;
    for (const auto& [edge, count] : uses) {
        const bool isRidge = std::get<1>(edge.first) == 0 && std::get<1>(edge.second) == 0 &&
                             std::get<2>(edge.first) == 0 && std::get<2>(edge.second) == 0;
        if (isRidge) {
            EXPECT_EQ(count, 2);
        }
        open += count == 1 ? 1 : 0;
        EXPECT_LE(count, 2);
    }
    EXPECT_GT(open, 0) << "the rim of the tent";
}

TEST(EdgeSplitter, RangesFollowTheirFaces)
{
    const auto mesh = splitEdges(*tent(), 3);
    ASSERT_EQ(mesh->faces.size(), 2u);
    EXPECT_EQ(mesh->faces[0].first, 0u);
    EXPECT_EQ(mesh->faces[1].first, mesh->faces[0].count);
    EXPECT_EQ(mesh->faces[1].first + mesh->faces[1].count, mesh->triangles.size() / 3);
    EXPECT_GT(mesh->faces[0].count, 1u);
}

TEST(EdgeSplitter, ShortEdgesStayAsTheyAre)
{
    EXPECT_EQ(*splitEdges(*tent(), 100), *tent());
}

TEST(EdgeSplitter, EndsWhereFloatsEnd)
{
    MeshBuilder builder;
    const float next = std::nextafter(1000.f, 2000.f);
    builder.addVertex({1000, 0, 0}, {0, 0, 1});
    builder.addVertex({next, 0, 0}, {0, 0, 1});
    builder.addVertex({1000, 0, 0}, {0, 0, 1});
    builder.addTriangle(0, 1, 2);
    builder.endFace();
    EXPECT_EQ(splitEdges(*builder.take(), 1e-9f)->triangles.size(), 3u);
}

TEST(EdgeSplitter, EstimateGrowsWithTheSquareOfTheFineness)
{
    EXPECT_NEAR(splitEstimate(*tent(), 1), 200, 1e-6);
    EXPECT_NEAR(splitEstimate(*tent(), 0.1f), 20000, 1);
    EXPECT_EQ(splitEstimate(*tent(), 1000), 2);
}
