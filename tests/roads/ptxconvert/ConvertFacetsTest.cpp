// Tessellated parts of small files.

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/Transform3D.h"
#include "scene/Mesh.h"
#include "tests/roads/ptxconvert/ConvertRun.h"
#include "tests/roads/ptxconvert/DraughtingText.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

using namespace ptxtest;
using testing::ElementsAre;
using testing::FloatEq;
using testing::FloatNear;
using testing::HasSubstr;
using testing::Not;

namespace
{

/// Gives `product` a pyramid of 3 units over a square, in faces of which the first is red.
void addPyramid(StepText& step, const StepProduct& product)
{
    const int points = step.add("COORDINATES_LIST('',5,((0.,0.,0.),(2.,0.,0.),(2.,2.,0.),(0.,2.,0.),(1.,1.,3.)))");
    const int bottom =
        step.add("TRIANGULATED_FACE(''," + ref(points) + ",4,((0.,0.,-1.)),$,(4,3,2,1),((1,2,3),(1,3,4)))");
    const int sides = step.add("COMPLEX_TRIANGULATED_FACE(''," + ref(points) + ",5,(),$,(),(),((5,1,2,3,4,1)))");
    const int solid = step.add("TESSELLATED_SOLID('',(" + ref(bottom) + "," + ref(sides) + "),$)");
    const int shape = step.add("TESSELLATED_SHAPE_REPRESENTATION('',(" + ref(solid) + ")," + ref(step.context()) + ")");
    step.add("SHAPE_REPRESENTATION_RELATIONSHIP('',''," + ref(shape) + "," + ref(product.representation) + ")");
    const int red = step.add("FILL_AREA_STYLE_COLOUR(''," + ref(step.add("COLOUR_RGB('',1.,0.,0.)")) + ")");
    const int area =
        step.add("SURFACE_STYLE_FILL_AREA(" + ref(step.add("FILL_AREA_STYLE('',(" + ref(red) + "))")) + ")");
    const int side = step.add("SURFACE_SIDE_STYLE('',(" + ref(area) + "))");
    const int usage = step.add("SURFACE_STYLE_USAGE(.BOTH.," + ref(side) + ")");
    const int style = step.add("PRESENTATION_STYLE_ASSIGNMENT((" + ref(usage) + "))");
    step.add("STYLED_ITEM('',(" + ref(style) + ")," + ref(bottom) + ")");
}

const osg::Mesh& meshAt(const osg::NodePtr& part, unsigned number)
{
    return osg::GeometryAccess::mesh(*osg::fcCast<osg::Geometry>(part->getChild(number)->getCore()));
}

std::size_t trianglesBelow(const osg::NodePtr& node)
{
    std::size_t count = 0;
    for (unsigned i = 0; i < node->getNChildren(); ++i)
        if (osg::fcCast<osg::Geometry>(node->getChild(i)->getCore()))
            count += meshAt(node, i).triangles.size() / 3;
    return count;
}

} // namespace

TEST(ConvertFacets, APartOfTrianglesComesWithItsColoursInItsUnit)
{
    StepText step(LengthUnit::Inch);
    addPyramid(step, step.product("pyramid"));
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    const osg::NodePtr part = nodeNamed(run.scene(), "pyramid");
    ASSERT_TRUE(part);
    ASSERT_EQ(part->getNChildren(), 2u);
    EXPECT_EQ(meshAt(part, 0).triangles.size(), 12u);
    EXPECT_EQ(meshAt(part, 1).triangles.size(), 6u);
    const osg::GeometryPtr bottom = osg::fcCast<osg::Geometry>(part->getChild(1)->getCore());
    EXPECT_EQ(lookOf(bottom).diffuse, (osg::Color3f{1, 0, 0}));
    EXPECT_THAT(meshAt(part, 1).normals[0].z, FloatEq(-1));
    float highest = 0;
    for (const osg::Vec3f& position : meshAt(part, 0).positions)
        highest = std::max(highest, position.z);
    EXPECT_FLOAT_EQ(highest, 76.2F);
    EXPECT_THAT(run.log(), HasSubstr("1 products are tessellated in the file: 2 faces, 6 triangles"));
}

TEST(ConvertFacets, SidesWithoutNormalsMeetAtEdges)
{
    StepText step;
    addPyramid(step, step.product("pyramid"));
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    const osg::Mesh& sides = meshAt(nodeNamed(run.scene(), "pyramid"), 0);
    EXPECT_EQ(sides.positions.size(), 12u);
    for (std::size_t corner = 0; corner < sides.triangles.size(); ++corner) {
        const osg::Vec3f& normal = sides.normals[sides.triangles[corner]];
        EXPECT_NEAR(std::max(std::abs(normal.x), std::abs(normal.y)), 3 / std::sqrt(10.), 1e-5);
        EXPECT_NEAR(normal.z, 1 / std::sqrt(10.), 1e-5);
    }
}

TEST(ConvertFacets, TheyStandInAssembliesBesideExactParts)
{
    StepText step;
    const StepProduct top = step.product("top");
    StepProduct box = step.product("box");
    step.box(box, {0, 0, 0}, {1, 1, 1});
    const StepProduct pyramid = step.product("pyramid");
    addPyramid(step, pyramid);
    step.place(top, box, "exact", {10, 0, 0});
    step.place(top, pyramid, "left", {20, 0, 0});
    step.place(top, pyramid, "right", {30, 0, 0});
    ConvertRun run;
    ASSERT_EQ(run.convertText("top.stp", step.text()), 0) << run.log();
    EXPECT_EQ(trianglesBelow(nodeNamed(run.scene(), "exact")), 12u);
    for (const char* name : {"left", "right"}) {
        ASSERT_TRUE(nodeNamed(run.scene(), name)) << name;
        EXPECT_EQ(trianglesBelow(nodeNamed(run.scene(), name)), 6u) << name;
    }
    const osg::NodePtr root = run.scene();
    EXPECT_EQ(&meshAt(nodeNamed(root, "left"), 0), &meshAt(nodeNamed(root, "right"), 0));
    EXPECT_EQ(osg::fcCast<osg::Transform3D>(nodeNamed(run.scene(), "right")->getCore())->getMatrix()[12], 30);
}

TEST(ConvertFacets, TheExactShapeCountsWhereThereAreBoth)
{
    StepText step;
    StepProduct box = step.product("box");
    step.box(box, {0, 0, 0}, {1, 1, 1});
    addPyramid(step, box);
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    EXPECT_EQ(trianglesBelow(nodeNamed(run.scene(), "box")), 12u);
    EXPECT_THAT(run.log(), HasSubstr("1 products have exact shapes, and their tessellation in the file is left out"));
    EXPECT_THAT(run.log(), Not(HasSubstr("are tessellated in the file")));
}

TEST(ConvertFacets, AProductThatIsTessellatedAloneMayHaveNoOtherRepresentation)
{
    StepText step;
    const StepProduct product = step.product("direct");
    const int points = step.add("COORDINATES_LIST('',3,((0.,0.,0.),(2.,0.,0.),(2.,2.,0.)))");
    const int face = step.add("TRIANGULATED_FACE(''," + ref(points) + ",3,(),$,(),((1,2,3)))");
    const int shape = step.add("TESSELLATED_SHAPE_REPRESENTATION('',(" + ref(face) + ")," + ref(step.context()) + ")");
    std::string text = step.text();
    const std::string before = "SHAPE_DEFINITION_REPRESENTATION(" + ref(product.shapeDefinition) + ",";
    const std::size_t at = text.find(before);
    ASSERT_NE(at, std::string::npos);
    text.replace(at + before.size(), text.find(')', at) - at - before.size(), ref(shape));
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", text), 0) << run.log();
    ASSERT_TRUE(nodeNamed(run.scene(), "direct"));
    EXPECT_EQ(trianglesBelow(nodeNamed(run.scene(), "direct")), 1u);
}

TEST(ConvertFacets, AnnotationsAloneAreSomething)
{
    StepText step;
    const StepProduct product = step.product("noted");
    const int points = step.add("COORDINATES_LIST('',2,((1.,2.,3.),(4.,2.,3.)))");
    const int curves = step.add("TESSELLATED_CURVE_SET(''," + ref(points) + ",((1,2)))");
    const int set = step.add("TESSELLATED_GEOMETRIC_SET('note',(" + ref(curves) + "))");
    step.add("TESSELLATED_ANNOTATION_OCCURRENCE('Note',()," + ref(set) + ")");
    ConvertRun run;
    ASSERT_EQ(run.convertText("part.stp", step.text()), 0) << run.log();
    const osg::NodePtr note = nodeNamed(run.scene(), "Note");
    ASSERT_TRUE(note);
    EXPECT_EQ(meshAt(note, 0).lines.size(), 2u);
    EXPECT_EQ(product.solid, 0);
    ConvertRun without;
    EXPECT_EQ(without.convertText("part.stp", step.text(), {"--set", "convert.pmi=0"}), 25);
}

TEST(ConvertFacets, PartFilesOfTrianglesComeIn)
{
    StepText part;
    addPyramid(part, part.product("pyramid"));
    StepText step;
    const StepProduct top = step.product("top");
    const StepProduct child = step.product("child");
    step.keepIn(child, "part.stp");
    step.place(top, child, "use", {5, 0, 0});
    ConvertRun run;
    run.folder().write("part.stp", part.text());
    ASSERT_EQ(run.convertText("top.stp", step.text()), 0) << run.log();
    const osg::NodePtr inlined = nodeNamed(run.scene(), "pyramid");
    ASSERT_TRUE(inlined);
    EXPECT_EQ(trianglesBelow(inlined), 6u);
}
