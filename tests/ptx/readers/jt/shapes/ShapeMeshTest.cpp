#include "ptx/readers/jt/shapes/ShapeMesh.h"

#include <gmock/gmock.h>

#include <limits>

using namespace ptx::jt::graph;
using namespace ptx::jt::shapes;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

Placement movedBy(double x, double y, double z)
{
    Placement placement = NoMove;
    placement[12] = x;
    placement[13] = y;
    placement[14] = z;
    return placement;
}

template <class T>
std::vector<T> listed(const osg::Buffer<T>& buffer)
{
    return {buffer.begin(), buffer.end()};
}

/// A triangle, a line and a point over four positions and three records with everything.
Shape everything()
{
    Shape shape;
    shape.positions = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    shape.normals = {{0, 0, 1}, {0, 1, 0}, {1, 0, 0}};
    shape.colours = {{1, 0, 0, 0.5f}, {0, 1, 0, 1}, {0, 0, 1, 1}};
    shape.textureCoordinates = {{0.25f, 0}, {1, 0.5f}, {0, 2}};
    shape.triangles = {{{{{0, 0}, {1, 1}, {2, 2}}}, 3}};
    shape.lines = {{{{1, 1}, {2, 2}}}};
    shape.points = {{2, 2}};
    return shape;
}

} // namespace

TEST(JtShapeMesh, AttributesOfRecordsComeOverWithTheirVertices)
{
    ptx::model::MeshBuilder builder;
    EXPECT_EQ(addShape(builder, everything(), movedBy(1, 2, 3), 10), 1u);
    const auto mesh = builder.take();
    EXPECT_THAT(listed(mesh->positions),
                ElementsAre(osg::Vec3f{20, 20, 30}, osg::Vec3f{10, 30, 30}, osg::Vec3f{10, 20, 30}));
    EXPECT_THAT(listed(mesh->colors),
                ElementsAre(osg::Color4f{0, 1, 0, 1}, osg::Color4f{0, 0, 1, 1}, osg::Color4f{1, 0, 0, 0.5f}));
    EXPECT_THAT(listed(mesh->texCoords), ElementsAre(osg::Vec2f{1, 0.5f}, osg::Vec2f{0, 2}, osg::Vec2f{0.25f, 0}));
    EXPECT_THAT(listed(mesh->normals), ElementsAre(osg::Vec3f{0, 1, 0}, osg::Vec3f{1, 0, 0}, osg::Vec3f{0, 0, 1}));
    EXPECT_THAT(listed(mesh->lines), ElementsAre(0u, 1u));
    EXPECT_THAT(listed(mesh->points), ElementsAre(1u));
    EXPECT_THAT(listed(mesh->triangles), ElementsAre(2u, 0u, 1u));
}

TEST(JtShapeMesh, LinesAndPointsThatAreNotFiniteAreLeftOut)
{
    Shape shape = everything();
    shape.positions[2][1] = std::numeric_limits<float>::quiet_NaN();
    ptx::model::MeshBuilder builder;
    EXPECT_EQ(addShape(builder, shape, NoMove, 1), 0u);
    EXPECT_TRUE(builder.isEmpty());
}

TEST(JtShapeMesh, ColoursWithoutNormalsKeepTheirVerticesApart)
{
    Shape shape = everything();
    shape.normals.clear();
    shape.points = {{0, 0}, {0, 1}, {0, 0}};
    shape.triangles.clear();
    shape.lines.clear();
    ptx::model::MeshBuilder builder;
    addShape(builder, shape, NoMove, 1);
    const auto mesh = builder.take();
    EXPECT_THAT(listed(mesh->points), ElementsAre(0u, 1u, 0u));
    EXPECT_THAT(listed(mesh->colors), ElementsAre(osg::Color4f{1, 0, 0, 0.5f}, osg::Color4f{0, 1, 0, 1}));
    EXPECT_THAT(listed(mesh->normals), IsEmpty());
}

TEST(JtShapeMesh, RecordsWithoutAnyAttributeCountAsNone)
{
    Shape shape = everything();
    shape.normals.clear();
    shape.colours.clear();
    shape.textureCoordinates.clear();
    shape.points = {{0, 0}, {0, 1}};
    ptx::model::MeshBuilder builder;
    EXPECT_EQ(addShape(builder, shape, NoMove, 1), 1u);
    const auto mesh = builder.take();
    EXPECT_EQ(mesh->positions.size(), 3u);
    EXPECT_THAT(listed(mesh->points), ElementsAre(2u, 2u));
}
