#include "ptx/model/Bounds.h"

#include <gtest/gtest.h>

using namespace ptx::model;

namespace
{

Body bodyOf(const std::vector<osg::Vec3f>& positions)
{
    auto mesh = std::make_shared<osg::Mesh>();
    mesh->positions = positions;
    return {{{NoAppearance, mesh}}};
}

Occurrence moved(std::size_t product, float x)
{
    Occurrence occurrence;
    occurrence.product = product;
    occurrence.placement[12] = x;
    return occurrence;
}

} // namespace

TEST(Bounds, AreAroundAllOccurrencesAtTheirPlaces)
{
    Model model;
    model.bodies.push_back(bodyOf({{1, 2, 3}, {4, 5, 6}}));
    model.products.resize(3);
    model.products[0].children = {moved(1, 10), moved(2, 0)};
    model.products[1].children = {moved(2, 100), moved(2, -1000)};
    model.products[2].body = 0;
    model.roots = {moved(0, 1)};
    const Bounds bounds = boundsOf(model).whole;
    EXPECT_EQ(bounds.low, (osg::Vec3f{-988, 2, 3}));
    EXPECT_EQ(bounds.high, (osg::Vec3f{115, 5, 6}));
    EXPECT_FALSE(bounds.isEmpty);
}

TEST(Bounds, OfAProductAreInItsOwnSpace)
{
    Model model;
    model.bodies.push_back(bodyOf({{1, 2, 3}, {4, 5, 6}}));
    model.products.resize(4);
    model.products[0].children = {moved(1, 10)};
    model.products[1].children = {moved(2, 100), moved(2, -1000)};
    model.products[2].body = 0;
    model.roots = {moved(0, 1)};
    const std::vector<Bounds> bounds = boundsOf(model).products;
    ASSERT_EQ(bounds.size(), 4u);
    EXPECT_EQ(bounds[1].low, (osg::Vec3f{-999, 2, 3}));
    EXPECT_EQ(bounds[2].high, (osg::Vec3f{4, 5, 6}));
    EXPECT_TRUE(bounds[3].isEmpty);
}

TEST(Bounds, TurnTheAxesOfAPlacement)
{
    Model model;
    model.bodies.push_back(bodyOf({{0, 0, 0}, {1, 2, 3}}));
    model.products.resize(1);
    model.products[0].body = 0;
    model.roots.emplace_back();
    model.roots[0].placement.values = {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    const Bounds bounds = boundsOf(model).whole;
    EXPECT_EQ(bounds.low, (osg::Vec3f{-2, 0, 0}));
    EXPECT_EQ(bounds.high, (osg::Vec3f{0, 1, 3}));
}

TEST(Bounds, AreEmptyWithoutGeometryAndEndForProductsThatContainThemselves)
{
    Model model;
    model.products.resize(2);
    model.products[0].children = {moved(1, 0)};
    model.products[1].children = {moved(0, 0)};
    model.roots = {moved(0, 0)};
    EXPECT_TRUE(boundsOf(model).whole.isEmpty);
    EXPECT_TRUE(boundsOf({}).whole.isEmpty);
}
