#include "geometry/MeshJoining.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace
{

/// A triangle whose values all begin with `first` and tell each vertex from the others.
std::shared_ptr<const osg::Mesh> triangleFrom(float first)
{
    osg::Mesh mesh;
    mesh.positions = std::vector<osg::Vec3f>{{first, 0, 0}, {first, 1, 0}, {first, 0, 1}};
    mesh.normals = std::vector<osg::Vec3f>{{first, 1, 1}, {first, 2, 1}, {first, 3, 1}};
    mesh.texCoords = std::vector<osg::Vec2f>{{first, 0.25f}, {first, 0.5f}, {first, 0.75f}};
    mesh.texCoords1 = std::vector<osg::Vec2f>{{0.25f, first}, {0.5f, first}, {0.75f, first}};
    mesh.colors = std::vector<osg::Color4f>{{first, 0.1f, 0.2f, 1}, {first, 0.3f, 0.4f, 1}, {first, 0.5f, 0.6f, 1}};
    mesh.occlusion = std::vector<float>{first, first + 0.25f, first + 0.5f};
    mesh.triangles = std::vector<std::uint32_t>{0, 1, 2};
    return std::make_shared<const osg::Mesh>(std::move(mesh));
}

osg::Mesh joinedPair()
{
    return *geometry::joined(std::vector<std::shared_ptr<const osg::Mesh>>{triangleFrom(3), triangleFrom(7)});
}

} // namespace

TEST(MeshJoining, TextureCoordinatesComeAlong)
{
    EXPECT_THAT(joinedPair().texCoords.span(),
                ElementsAre(osg::Vec2f{3, 0.25f}, osg::Vec2f{3, 0.5f}, osg::Vec2f{3, 0.75f}, osg::Vec2f{7, 0.25f},
                            osg::Vec2f{7, 0.5f}, osg::Vec2f{7, 0.75f}));
    EXPECT_THAT(joinedPair().texCoords1.span(),
                ElementsAre(osg::Vec2f{0.25f, 3}, osg::Vec2f{0.5f, 3}, osg::Vec2f{0.75f, 3}, osg::Vec2f{0.25f, 7},
                            osg::Vec2f{0.5f, 7}, osg::Vec2f{0.75f, 7}));
}

TEST(MeshJoining, ColorsComeAlong)
{
    const osg::Mesh mesh = joinedPair();
    ASSERT_EQ(mesh.colors.size(), 6u);
    EXPECT_EQ(mesh.colors[2], triangleFrom(3)->colors[2]);
    EXPECT_EQ(mesh.colors[3], triangleFrom(7)->colors[0]);
    EXPECT_EQ(mesh.colors[5], triangleFrom(7)->colors[2]);
}

TEST(MeshJoining, OcclusionComesAlong)
{
    EXPECT_THAT(joinedPair().occlusion.span(), ElementsAre(3, 3.25f, 3.5f, 7, 7.25f, 7.5f));
}

TEST(MeshJoining, PositionsAndNormalsComeAlongInOneOrder)
{
    const osg::Mesh mesh = joinedPair();
    EXPECT_THAT(mesh.triangles.span(), ElementsAre(0, 1, 2, 3, 4, 5));
    ASSERT_EQ(mesh.positions.size(), 6u);
    ASSERT_EQ(mesh.normals.size(), 6u);
    EXPECT_EQ(mesh.positions[4], (osg::Vec3f{7, 1, 0}));
    EXPECT_EQ(mesh.normals[4], (osg::Vec3f{7, 2, 1}));
}

TEST(MeshJoining, WhatAMeshHasTellsItsMake)
{
    EXPECT_EQ(geometry::makeOf(*triangleFrom(1)), (geometry::MeshMake{true, true, true, true, true, false}));
    EXPECT_EQ(geometry::makeOf(osg::Mesh()), geometry::MeshMake());
}
