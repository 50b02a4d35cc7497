#include "ptx/readers/stl/StlMesh.h"

#include <gtest/gtest.h>

using namespace ptx::stl;

TEST(StlMesh, SharesCornersOfTheSamePlaceAndNormal)
{
    const Facet lower{{}, {{{0, 0, 5}, {1, 0, 5}, {1, 1, 5}}}};
    const Facet upper{{}, {{{0, 0, 5}, {1, 1, 5}, {0, 1, 5}}}};
    const Facet other{{}, {{{0, 0, 5}, {0, 0, 6}, {1, 0, 5}}}};
    const auto mesh = meshOf({"", {lower, upper, other}}, 2);
    EXPECT_EQ(mesh->positions.size(), 4u + 3u);
    EXPECT_EQ(mesh->triangles.size(), 9u);
    EXPECT_EQ(mesh->positions[1], (osg::Vec3f{2, 0, 10}));
    EXPECT_EQ(mesh->normals[0], (osg::Vec3f{0, 0, 1}));
}

TEST(StlMesh, TriangleWithoutAreaKeepsItsPlace)
{
    const Facet flat{{0, 1, 0}, {{{7, 0, 0}, {7, 0, 0}, {8, 0, 0}}}};
    const auto mesh = meshOf({"", {flat}}, 1);
    EXPECT_EQ(mesh->triangles.size(), 3u);
    EXPECT_EQ(mesh->normals[0], (osg::Vec3f{0, 1, 0}));
}
