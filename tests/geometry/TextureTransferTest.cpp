#include "geometry/TextureTransfer.h"

#include <gmock/gmock.h>

#include <cmath>
#include <functional>
#include <numbers>

using testing::IsEmpty;
using testing::SizeIs;

namespace
{

using Place = std::function<osg::Vec3f(float u, float v)>;

/// `across` times `up` quads of a surface over 0 to 1, with its texture coordinates; the last column of vertices is
/// one of its own.
osg::Mesh sheet(const Place& place, int across, int up)
{
    std::vector<osg::Vec3f> positions;
    std::vector<osg::Vec2f> texCoords;
    std::vector<std::uint32_t> triangles;
    for (int row = 0; row <= up; ++row)
        for (int column = 0; column <= across; ++column) {
            const float u = static_cast<float>(column) / static_cast<float>(across);
            const float v = static_cast<float>(row) / static_cast<float>(up);
            positions.push_back(place(u, v));
            texCoords.push_back({u, v});
        }
    const auto at = [across](int column, int row) { return static_cast<std::uint32_t>(row * (across + 1) + column); };
    for (int row = 0; row < up; ++row)
        for (int column = 0; column < across; ++column)
            for (const std::uint32_t corner : {at(column, row), at(column + 1, row), at(column + 1, row + 1),
                                               at(column, row), at(column + 1, row + 1), at(column, row + 1)})
                triangles.push_back(corner);
    osg::Mesh mesh;
    mesh.positions = std::move(positions);
    mesh.texCoords = std::move(texCoords);
    mesh.triangles = std::move(triangles);
    return mesh;
}

osg::Vec3f onPlate(float u, float v)
{
    return {100 * u, 50 * v, 7};
}

osg::Vec3f onCylinder(float u, float v)
{
    const float angle = 2 * std::numbers::pi_v<float> * u;
    return {10 * std::cos(angle), 10 * std::sin(angle), 40 * v};
}

/// Without texture coordinates, as it comes from an exact surface.
osg::Mesh bare(osg::Mesh mesh)
{
    mesh.texCoords = {};
    mesh.normals = std::vector<osg::Vec3f>(mesh.positions.size(), osg::Vec3f{0, 0, 1});
    return mesh;
}

/// With one vertex at each place.
osg::Mesh welded(osg::Mesh mesh)
{
    std::vector<std::uint32_t> triangles(mesh.triangles.begin(), mesh.triangles.end());
    for (std::uint32_t& corner : triangles)
        for (std::uint32_t other = 0; other < corner; ++other) {
            const osg::Vec3f &p = mesh.positions[corner], &q = mesh.positions[other];
            if (std::abs(p.x - q.x) + std::abs(p.y - q.y) + std::abs(p.z - q.z) < 1e-3F) {
                corner = other;
                break;
            }
        }
    mesh.triangles = std::move(triangles);
    return mesh;
}

osg::Mesh transferred(const osg::Mesh& old, osg::Mesh made)
{
    geometry::transferTexCoords(old, made);
    return made;
}

/// The largest extent of one triangle in the texture.
float largestStep(const osg::Mesh& mesh)
{
    float step = 0;
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
        const osg::Vec2f& a = mesh.texCoords[mesh.triangles[i]];
        const osg::Vec2f& b = mesh.texCoords[mesh.triangles[i % 3 == 2 ? i - 2 : i + 1]];
        step = std::max({step, std::abs(a.x - b.x), std::abs(a.y - b.y)});
    }
    return step;
}

} // namespace

TEST(TextureTransfer, FinerAndCoarserMeshesOfAPlateLieAlikeInTheTexture)
{
    for (const auto& [before, after] : {std::pair(3, 7), std::pair(40, 2)}) {
        const osg::Mesh mesh = transferred(sheet(onPlate, before, before), bare(sheet(onPlate, after, after)));
        ASSERT_EQ(mesh.texCoords.size(), mesh.positions.size());
        EXPECT_THAT(mesh.positions.span(), SizeIs((after + 1) * (after + 1))) << "nothing is doubled";
        for (std::size_t i = 0; i < mesh.positions.size(); ++i) {
            EXPECT_NEAR(mesh.texCoords[i].x, mesh.positions[i].x / 100, 1e-5F);
            EXPECT_NEAR(mesh.texCoords[i].y, mesh.positions[i].y / 50, 1e-5F);
        }
    }
}

TEST(TextureTransfer, NoTriangleSpansTheSeam)
{
    const osg::Mesh made = welded(bare(sheet(onCylinder, 24, 4)));
    const osg::Mesh mesh = transferred(sheet(onCylinder, 60, 3), made);
    EXPECT_LT(largestStep(mesh), 0.26F);
    // Each of the five vertices on the seam has one more beside it now, with its normal.
    EXPECT_EQ(mesh.positions.size(), made.positions.size() + 5);
    EXPECT_EQ(mesh.normals.size(), mesh.positions.size());
    EXPECT_EQ(mesh.texCoords.size(), mesh.positions.size());
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
        EXPECT_EQ(mesh.positions[mesh.triangles[i]], made.positions[made.triangles[i]]);
    }
}

TEST(TextureTransfer, BothSetsComeAlongAndSeamsOfEitherSplit)
{
    osg::Mesh old = sheet(onCylinder, 60, 3);
    std::vector<osg::Vec2f> upwards; // without a seam
    for (const osg::Vec3f& place : old.positions)
        upwards.push_back({place.z / 40, 3});
    old.texCoords1 = upwards;
    const osg::Mesh made = welded(bare(sheet(onCylinder, 24, 4)));
    const osg::Mesh both = transferred(old, made);
    ASSERT_EQ(both.texCoords1.size(), both.positions.size());
    for (const std::uint32_t i : both.triangles) {
        EXPECT_NEAR(both.texCoords1[i].x, both.positions[i].z / 40, 1e-5F);
        EXPECT_NEAR(both.texCoords1[i].y, 3, 1e-5F);
    }
    osg::Mesh first = old;
    first.texCoords1 = {};
    EXPECT_EQ(both.texCoords, transferred(first, made).texCoords);
    osg::Mesh second = old;
    std::swap(second.texCoords, second.texCoords1);
    second.texCoords = {};
    const osg::Mesh alone = transferred(second, made);
    EXPECT_TRUE(alone.texCoords.empty());
    EXPECT_EQ(alone.texCoords1, both.texCoords) << "its seam splits as that of the first set does";
}

TEST(TextureTransfer, SidesOfAThinPlateKeepTheirOwnPictures)
{
    osg::Mesh old = sheet(onPlate, 2, 2);
    osg::Mesh below = sheet([](float u, float v) { return osg::Vec3f{100 * u, 50 * v, 6.5F}; }, 2, 2);
    std::vector<osg::Vec3f> positions(old.positions.begin(), old.positions.end());
    std::vector<osg::Vec2f> texCoords(old.texCoords.begin(), old.texCoords.end());
    std::vector<std::uint32_t> triangles(old.triangles.begin(), old.triangles.end());
    for (std::size_t i = 0; i < below.positions.size(); ++i) {
        positions.push_back(below.positions[i]);
        texCoords.push_back({below.texCoords[i].x + 2, below.texCoords[i].y});
    }
    for (const std::uint32_t corner : below.triangles)
        triangles.push_back(corner + 9);
    old.positions = std::move(positions);
    old.texCoords = std::move(texCoords);
    old.triangles = std::move(triangles);
    osg::Mesh made = bare(old);
    const osg::Mesh mesh = transferred(old, std::move(made));
    for (std::size_t i = 0; i < mesh.positions.size(); ++i) {
        EXPECT_NEAR(mesh.texCoords[i].x, mesh.positions[i].x / 100 + (mesh.positions[i].z < 6.8F ? 2 : 0), 1e-5F);
    }
}

TEST(TextureTransfer, WithoutTexturesOrTrianglesNothingChanges)
{
    const osg::Mesh made = bare(sheet(onPlate, 3, 3));
    EXPECT_EQ(transferred(bare(sheet(onPlate, 2, 2)), made), made);
    osg::Mesh lines = sheet(onPlate, 2, 2);
    lines.triangles = {};
    EXPECT_EQ(transferred(lines, made), made);
    osg::Mesh none = bare(sheet(onPlate, 2, 2));
    none.triangles = {};
    EXPECT_THAT(transferred(sheet(onPlate, 2, 2), none).texCoords.span(), IsEmpty());
}

TEST(TextureTransfer, PlacesThatAreNoNumbersAreNotFound)
{
    osg::Mesh old = sheet(onPlate, 2, 2);
    std::vector<osg::Vec3f> positions(old.positions.begin(), old.positions.end());
    positions[0].x = std::nanf("");
    old.positions = std::move(positions);
    const osg::Mesh mesh = transferred(old, bare(sheet(onPlate, 2, 2)));
    for (const osg::Vec2f& value : mesh.texCoords) {
        EXPECT_TRUE(std::isfinite(value.x) && std::isfinite(value.y));
    }
    EXPECT_NEAR(mesh.texCoords[8].x, 1, 1e-5F);
}
