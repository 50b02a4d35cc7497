#include "ptx/model/MeshBuilder.h"

#include <gtest/gtest.h>

using namespace ptx::model;

TEST(MeshBuilder, KeepsFacesAsRanges)
{
    MeshBuilder builder;
    for (float x : {0.f, 1.f, 2.f, 3.f})
        builder.addVertex({x, 5, 6}, {0, 0, 1});
    builder.addTriangle(0, 1, 2);
    builder.addTriangle(1, 2, 3);
    builder.endFace();
    builder.endFace();
    builder.addTriangle(0, 2, 3);
    builder.endFace();
    const auto mesh = builder.take();
    ASSERT_EQ(mesh->faces.size(), 2u);
    EXPECT_EQ(mesh->faces[0], (osg::FaceRange{0, 2}));
    EXPECT_EQ(mesh->faces[1], (osg::FaceRange{2, 1}));
    EXPECT_EQ(mesh->positions[3], (osg::Vec3f{3, 5, 6}));
    EXPECT_EQ(mesh->normals.size(), 4u);
    EXPECT_TRUE(builder.isEmpty());
}

TEST(MeshBuilder, LeavesNormalsOutWhenSomeVertexHasNone)
{
    MeshBuilder builder;
    builder.addVertex({1, 2, 3}, {0, 0, 1});
    builder.addVertex({4, 5, 6});
    builder.addLine(0, 1);
    const auto mesh = builder.take();
    EXPECT_EQ(mesh->positions.size(), 2u);
    EXPECT_TRUE(mesh->normals.empty());
    EXPECT_EQ(mesh->lines.size(), 2u);
}

TEST(MeshBuilder, KeepsPointsAndWhatEveryVertexHas)
{
    MeshBuilder builder;
    EXPECT_TRUE(builder.isEmpty());
    builder.addVertex({1, 2, 3});
    builder.addColor({0.5f, 0, 1, 0.25f});
    builder.addTexCoord({3, 4});
    builder.addVertex({4, 5, 6});
    builder.addColor({0, 1, 0, 1});
    builder.addPoint(1);
    EXPECT_FALSE(builder.isEmpty());
    const auto mesh = builder.take();
    ASSERT_EQ(mesh->points.size(), 1u);
    EXPECT_EQ(mesh->points[0], 1u);
    ASSERT_EQ(mesh->colors.size(), 2u);
    EXPECT_EQ(mesh->colors[0], (osg::Color4f{0.5f, 0, 1, 0.25f}));
    EXPECT_TRUE(mesh->texCoords.empty());
}
