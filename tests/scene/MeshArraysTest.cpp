#include "scene/MeshArrays.h"

#include <gtest/gtest.h>

namespace
{

osg::MeshArrays twoVertices()
{
    osg::MeshArrays arrays;
    arrays.positions = {{1, 2, 3}, {4, 5, 6}};
    arrays.normals = {{0, 0, 1}, {0, 1, 0}};
    arrays.texCoords = {{0.25f, 0.5f}, {0.75f, 1}};
    arrays.colors = {{1, 0, 0, 1}, {0, 1, 0, 0.5f}};
    arrays.triangles = {0, 1, 1};
    arrays.lines = {1, 0};
    arrays.points = {1};
    arrays.faces = {{0, 1}};
    return arrays;
}

template <class T>
std::vector<T> listed(const osg::Buffer<T>& buffer)
{
    return {buffer.begin(), buffer.end()};
}

TEST(MeshArrays, EachArrayBecomesThatOfTheMesh)
{
    const osg::MeshArrays expected = twoVertices();
    const osg::Mesh mesh = osg::meshOf(twoVertices());
    EXPECT_EQ(listed(mesh.positions), expected.positions);
    EXPECT_EQ(listed(mesh.normals), expected.normals);
    EXPECT_EQ(listed(mesh.texCoords), expected.texCoords);
    EXPECT_EQ(listed(mesh.colors), expected.colors);
    EXPECT_EQ(listed(mesh.triangles), expected.triangles);
    EXPECT_EQ(listed(mesh.lines), expected.lines);
    EXPECT_EQ(listed(mesh.points), expected.points);
    EXPECT_EQ(listed(mesh.faces), expected.faces);
}

TEST(MeshArrays, WhatSomeVerticesLackNoneHas)
{
    osg::MeshArrays arrays = twoVertices();
    arrays.normals.pop_back();
    arrays.texCoords.pop_back();
    arrays.colors.pop_back();
    const osg::Mesh mesh = osg::meshOf(std::move(arrays));
    EXPECT_EQ(mesh.positions.size(), 2u);
    EXPECT_TRUE(mesh.normals.empty());
    EXPECT_TRUE(mesh.texCoords.empty());
    EXPECT_TRUE(mesh.colors.empty());
}

TEST(MeshArrays, NothingIsCopied)
{
    osg::MeshArrays arrays = twoVertices();
    const osg::Vec3f* place = arrays.positions.data();
    EXPECT_EQ(osg::meshOf(std::move(arrays)).positions.data(), place);
}

} // namespace
