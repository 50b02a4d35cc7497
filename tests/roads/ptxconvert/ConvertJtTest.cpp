#include "scene/Mesh.h"
#include "tests/roads/ptxconvert/ConvertRun.h"
#include "tests/support/jt/FileWriter.h"
#include "tests/support/jt/JtBytes.h"

#include <gmock/gmock.h>

using namespace jttest;
using namespace ptxtest;
using testing::HasSubstr;
using testing::Not;

namespace
{

/// A plain shape of version 8 without normals: with colours, six numbers a vertex.
JtBytes plainShape(bool hasColours, const Values& starts, const std::vector<float>& floats)
{
    JtBytes bytes(8);
    bytes.u16(1).i32(0).i32(0).u16(1).u16(1).u8(0).u8(0).u8(hasColours ? 1 : 0).i32(0);
    const auto size = static_cast<std::int64_t>(4 * floats.size());
    return bytes.array(starts, Predictor::Stride1).i32(size).i32(-size).floats(floats);
}

JtBytes triangle(float z)
{
    return plainShape(false, {0, 3}, {0, 0, z, 1, 0, z, 0, 1, z});
}

JtBytes colouredTriangle()
{
    return plainShape(true, {0, 3}, {1, 0, 0, 0, 0, 2, 0, 1, 0, 1, 0, 2, 0, 0, 1, 0, 1, 2});
}

constexpr std::array<float, 4> Orange = {0.75f, 0.5f, 0.25f, 1};
constexpr std::array<float, 4> ClearBlue = {0.125f, 0.25f, 0.875f, 0.5f};
constexpr Id OrangeId = 1000;
constexpr Id ClearBlueId = 1001;
constexpr Id OtherId = 1002;

/// A shape with its element, and the material that it has.
struct ShapeBytes {
    const char* type;
    JtBytes object;
    Ids materials;
};

/// A file in inches with one part called "hand made" that has these shapes.
FileWriter fileOf(const std::vector<ShapeBytes>& shapes, const Ids& materialsOfPart = {})
{
    FileWriter file(8);
    Ids ids;
    for (std::size_t i = 0; i < shapes.size(); ++i)
        ids.push_back(10 + static_cast<Id>(i));
    file.partition(0, {1}, "x.jt");
    file.part(1, ids, {materialsOfPart});
    file.property(1, "JT_PROP_NAME", "hand made.part;0;0:");
    file.property(1, "JT_PROP_MEASUREMENT_UNITS", "Inches");
    for (std::size_t i = 0; i < shapes.size(); ++i)
        file.mesh(ids[i], shapes[i].type, shapes[i].object.data(), {shapes[i].materials});
    file.material(OrangeId, Orange);
    file.material(ClearBlueId, ClearBlue);
    return file;
}

class ConvertJt : public testing::Test
{
protected:
    /// The geometries that come of a file.
    std::vector<osg::GeometryPtr> convert(const FileWriter& file)
    {
        EXPECT_EQ(m_run.convertText("hand made.jt", file.file()), 0) << m_run.log();
        m_scene = m_run.scene();
        return m_scene ? geometries(m_scene) : std::vector<osg::GeometryPtr>();
    }

    /// How the one geometry of a file looks.
    Look lookOfOne(const FileWriter& file)
    {
        const std::vector<osg::GeometryPtr> all = convert(file);
        EXPECT_EQ(all.size(), 1u);
        return all.empty() ? Look() : lookOf(all.front());
    }

    ConvertRun m_run;
    osg::NodePtr m_scene;
};

} // namespace

TEST_F(ConvertJt, LinesAndPointsBecomeGeometriesBesideTheTriangles)
{
    const std::vector<osg::GeometryPtr> all = convert(
        fileOf({{StripSet, triangle(0), {OrangeId}},
                {PolylineSet, plainShape(false, {0, 3, 5}, {0, 0, 1, 1, 0, 1, 1, 1, 1, 5, 5, 1, 6, 5, 1}), {OrangeId}},
                {PointSet, plainShape(false, {0, 2}, {9, 9, 9, 8, 8, 8}), {ClearBlueId}}}));
    EXPECT_THAT(m_run.log(), Not(HasSubstr("Warning"))) << m_run.log();
    EXPECT_TRUE(nodeNamed(m_scene, "hand made"));
    ASSERT_EQ(all.size(), 3u);
    std::size_t triangles = 0;
    for (const osg::GeometryPtr& geometry : all) {
        const osg::Mesh& mesh = osg::GeometryAccess::mesh(*geometry);
        triangles += mesh.triangles.size();
        if (!mesh.lines.empty()) {
            EXPECT_EQ(mesh.lines.size(), 6u);
            EXPECT_EQ(mesh.positions[mesh.lines[5]], (osg::Vec3f{6 * 25.4f, 5 * 25.4f, 25.4f}));
            EXPECT_EQ(lookOf(geometry), (Look{{0.75f, 0.5f, 0.25f}, 0}));
        }
        if (!mesh.points.empty()) {
            ASSERT_EQ(mesh.points.size(), 2u);
            EXPECT_EQ(mesh.positions[mesh.points[1]], (osg::Vec3f{8 * 25.4f, 8 * 25.4f, 8 * 25.4f}));
            EXPECT_EQ(lookOf(geometry), (Look{{0.125f, 0.25f, 0.875f}, 0.5f}));
        }
    }
    EXPECT_EQ(triangles, 3u);
}

TEST_F(ConvertJt, FileOfPointsAloneIsNotEmpty)
{
    const auto all = convert(fileOf({{PointSet, plainShape(false, {0, 1}, {3, 2, 1}), {}}}));
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(osg::GeometryAccess::mesh(*all.front()).points.size(), 1u);
}

TEST_F(ConvertJt, ColoursOfVerticesComeOverBesideThatOfTheMaterial)
{
    const auto all =
        convert(fileOf({{StripSet, colouredTriangle(), {ClearBlueId}}, {StripSet, triangle(5), {ClearBlueId}}}));
    ASSERT_EQ(all.size(), 2u);
    for (const osg::GeometryPtr& geometry : all) {
        const osg::Mesh& mesh = osg::GeometryAccess::mesh(*geometry);
        EXPECT_EQ(lookOf(geometry), (Look{{0.125f, 0.25f, 0.875f}, 0.5f}));
        if (mesh.positions[0].z == 5 * 25.4f) {
            EXPECT_TRUE(mesh.colors.empty());
            continue;
        }
        ASSERT_EQ(mesh.colors.size(), 3u);
        EXPECT_EQ(mesh.colors[1], (osg::Color4f{0, 1, 0, 1}));
    }
}

TEST_F(ConvertJt, MaterialMayStandInForColoursOfVertices)
{
    FileWriter file = fileOf({{StripSet, colouredTriangle(), {OtherId}}});
    file.material(OtherId, Orange, 8, 0, 0x0020);
    EXPECT_EQ(lookOfOne(file), (Look{{0.75f, 0.5f, 0.25f}, 0}));
    EXPECT_TRUE(osg::GeometryAccess::mesh(*geometries(m_scene).front()).colors.empty());
}

TEST_F(ConvertJt, MaterialOfTheShapeWinsOverThatOfThePart)
{
    EXPECT_EQ(lookOfOne(fileOf({{StripSet, triangle(0), {ClearBlueId}}}, {OrangeId})),
              (Look{{0.125f, 0.25f, 0.875f}, 0.5f}));
}

TEST_F(ConvertJt, FinalMaterialOfThePartWinsOverThatOfTheShape)
{
    FileWriter file = fileOf({{StripSet, triangle(0), {ClearBlueId}}}, {OtherId});
    file.material(OtherId, Orange, 0x01 | 8);
    EXPECT_EQ(lookOfOne(file), (Look{{0.75f, 0.5f, 0.25f}, 0}));
}

TEST_F(ConvertJt, FinalMaterialOfAnInstanceWinsOverThoseBelowIt)
{
    FileWriter file(8);
    file.partition(0, {5, 6}, "x.jt");
    file.instance(5, 1, {{OtherId}});
    file.instance(6, 1);
    file.part(1, {10}, {{OrangeId}});
    file.mesh(10, StripSet, triangle(0).data(), {{ClearBlueId}});
    file.material(OtherId, {0.875f, 0.125f, 0.375f, 1}, 0x01 | 8);
    file.material(OrangeId, Orange);
    file.material(ClearBlueId, ClearBlue);
    file.property(1, "JT_PROP_MEASUREMENT_UNITS", "Millimeters");
    std::vector<Look> looks;
    for (const osg::GeometryPtr& geometry : convert(file))
        looks.push_back(lookOf(geometry));
    EXPECT_THAT(looks,
                testing::UnorderedElementsAre(Look{{0.875f, 0.125f, 0.375f}, 0}, Look{{0.125f, 0.25f, 0.875f}, 0.5f}));
}

TEST_F(ConvertJt, PackedColoursAreToldInTheLog)
{
    JtBytes bytes(8);
    bytes.u16(1).i32(0).i32(0).u16(1).u16(1).u8(0).u8(0).u8(1).u8(4).u8(0).u8(0).u8(0);
    bytes.array({0, 3}, Predictor::Stride1);
    for (int axis = 0; axis < 3; ++axis)
        bytes.f32(0).f32(15).u8(4);
    bytes.i32(3).array({0, 1, 0}).array({0, 0, 1}).array({2, 2, 2});
    bytes.u8(1).u8(2).u8(1).u8(1).u8(1).u8(6).u8(3).u8(0).array({7, 8, 9}).array({0, 1, 2});
    EXPECT_EQ(convert(fileOf({{StripSet, bytes, {}}})).size(), 1u);
    EXPECT_THAT(m_run.log(),
                HasSubstr("Warning: shape 10 lacks colours of its vertices, which are packed into single words"));
}
