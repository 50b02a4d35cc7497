#include "ptx/readers/step/facets/Parts.h"

#include "ptx/readers/step/p21/Scan.h"

#include <gmock/gmock.h>

using namespace ptx::step;
using namespace ptx::step::facets;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace
{

/// A product #3 with the tessellated shape #10 of `items`, a square as the list of points #20, and `more`.
Parts partsOf(const std::string& items, const std::string& more)
{
    const std::string text = "ISO-10303-21;\nHEADER;FILE_NAME('a');ENDSEC;\nDATA;\n"
                             "#3=PRODUCT_DEFINITION('','',$,$);\n"
                             "#4=PRODUCT_DEFINITION_SHAPE('','',#3);\n"
                             "#5=SHAPE_DEFINITION_REPRESENTATION(#4,#6);\n"
                             "#6=SHAPE_REPRESENTATION('',(),#7);\n"
                             "#8=SHAPE_REPRESENTATION_RELATIONSHIP('','',#6,#10);\n"
                             "#10=TESSELLATED_SHAPE_REPRESENTATION(''," +
                             items +
                             ",#7);\n"
                             "#20=COORDINATES_LIST('',4,((0.,0.,0.),(1.,0.,0.),(0.,1.,0.),(1.,1.,0.)));\n" +
                             more + "\nENDSEC;\nEND-ISO-10303-21;\n";
    const p21::Records records = p21::scan(text, 1);
    return readParts(records, p21::EntityIndex(records));
}

/// The only face of the only part of a shape with one item.
Face faceOf(const std::string& item, const std::string& more = "")
{
    const Parts parts = partsOf("(#30)", "#30=" + item + ";" + more);
    EXPECT_EQ(parts.parts.size(), 1u);
    if (parts.parts.size() != 1 || parts.parts[0].faces.size() != 1)
        return {};
    return parts.parts[0].faces[0];
}

std::vector<Point> corners(const FaceMesh& mesh)
{
    std::vector<Point> points;
    for (const std::uint32_t corner : mesh.triangles)
        points.push_back(mesh.points.at(corner));
    return points;
}

constexpr Point A = {0, 0, 0}, B = {1, 0, 0}, C = {0, 1, 0}, D = {1, 1, 0};
constexpr Point Up = {0, 0, 1};

} // namespace

TEST(Parts, AFaceNamesPointsByWayOfItsIndex)
{
    const Face face = faceOf("TRIANGULATED_FACE('',#20,3,((0.,0.,1.)),$,(2,4,1),((1,2,3)))");
    EXPECT_THAT(corners(face.mesh), ElementsAre(B, D, A));
    EXPECT_THAT(face.mesh.normals, ElementsAre(Up, Up, Up));
    EXPECT_FALSE(face.color);
}

TEST(Parts, WithoutAnIndexItNamesPoints)
{
    EXPECT_THAT(corners(faceOf("TRIANGULATED_FACE('',#20,4,(),$,(),((1,2,3)))").mesh), ElementsAre(A, B, C));
    EXPECT_THAT(corners(faceOf("TRIANGULATED_FACE('',#20,4,$,$,$,((1,2,3)))").mesh), ElementsAre(A, B, C));
    EXPECT_THAT(faceOf("TRIANGULATED_FACE('',#20,4,$,$,$,((1,2,3)))").mesh.normals, IsEmpty());
}

TEST(Parts, StripsAlternateAndFansTurnAroundTheirFirst)
{
    const Face strip = faceOf("COMPLEX_TRIANGULATED_FACE('',#20,4,(),$,(),((1,2,3,4)),())");
    EXPECT_THAT(corners(strip.mesh), ElementsAre(A, B, C, C, B, D));
    const Face fan = faceOf("COMPLEX_TRIANGULATED_FACE('',#20,4,(),$,(),(),((1,2,4,3)))");
    EXPECT_THAT(corners(fan.mesh), ElementsAre(A, B, D, A, D, C));
    const Face both = faceOf("COMPLEX_TRIANGULATED_FACE('',#20,4,$,$,$,((1,2,3)),((4,3,2)))");
    EXPECT_THAT(corners(both.mesh), ElementsAre(A, B, C, D, C, B));
}

TEST(Parts, JointsOfStripsAreLeftOut)
{
    const Parts parts = partsOf("(#30)", "#30=COMPLEX_TRIANGULATED_FACE('',#20,4,(),$,(),((1,2,3,3,4,4,2)),$);");
    ASSERT_EQ(parts.parts.size(), 1u);
    EXPECT_EQ(parts.counts.joints, 4u);
    EXPECT_THAT(corners(parts.parts[0].faces[0].mesh), ElementsAre(A, B, C));
}

TEST(Parts, SetsOfSurfacesHaveNoExactSurface)
{
    EXPECT_THAT(corners(faceOf("TRIANGULATED_SURFACE_SET('',#20,3,(),(4,3,2),((1,2,3)))").mesh), ElementsAre(D, C, B));
    EXPECT_THAT(corners(faceOf("COMPLEX_TRIANGULATED_SURFACE_SET('',#20,3,(),(4,3,2),((1,2,3)),())").mesh),
                ElementsAre(D, C, B));
}

TEST(Parts, NormalsGoWithTheEntriesOfTheIndex)
{
    const Face face = faceOf("TRIANGULATED_FACE('',#20,4,((0.,0.,1.),(1.,0.,0.),(0.,1.,0.),(0.,0.,-1.)),$,(1,2,3,1),"
                             "((1,2,3),(4,2,3)))");
    ASSERT_EQ(face.mesh.points.size(), 4u);
    EXPECT_THAT(face.mesh.normals, ElementsAre(Up, Point{1, 0, 0}, Point{0, 1, 0}, Point{0, 0, -1}));
    EXPECT_THAT(corners(face.mesh), ElementsAre(A, B, C, A, B, C));
}

TEST(Parts, RubbishIsNoNormal)
{
    const Face face =
        faceOf("TRIANGULATED_FACE('',#20,4,((8.8E30,1.7E20,7.3E26),(0.,0.,1.),(0.,0.,1.1),(0.,0.,1.0005)),$,(),"
               "((1,2,3),(3,2,4)))");
    EXPECT_THAT(face.mesh.normals, ElementsAre(Point{}, Up, Point{}, Point{0, 0, 1.0005}));
    EXPECT_THAT(faceOf("TRIANGULATED_FACE('',#20,4,((0.,0.,1.),(0.,0.,1.)),$,(),((1,2,3)))").mesh.normals, IsEmpty());
}

TEST(Parts, SolidsAndShellsHoldFaces)
{
    const std::string faces = "#31=TRIANGULATED_FACE('',#20,4,(),$,(),((1,2,3)));"
                              "#32=TRIANGULATED_FACE('',#20,4,(),$,(),((3,2,4)));";
    for (const char* type : {"TESSELLATED_SOLID", "TESSELLATED_SHELL"}) {
        const Parts parts = partsOf("(#30)", "#30=" + std::string(type) + "('a',(#31,#32),$);" + faces);
        ASSERT_EQ(parts.parts.size(), 1u) << type;
        EXPECT_EQ(parts.parts[0].faces.size(), 2u);
        EXPECT_EQ(parts.parts[0].product, 3u);
        EXPECT_EQ(parts.parts[0].context, 7u);
    }
}

TEST(Parts, ABodyMayStandElsewhere)
{
    const Face face = faceOf(
        "(GEOMETRIC_REPRESENTATION_ITEM() REPOSITIONED_TESSELLATED_ITEM(#40) REPRESENTATION_ITEM('') "
        "TESSELLATED_ITEM() TESSELLATED_SHELL((#31),$))",
        "#31=TRIANGULATED_FACE('',#20,4,((0.,0.,1.)),$,(),((1,2,3)));"
        "#40=AXIS2_PLACEMENT_3D('',#41,#42,#43);#41=CARTESIAN_POINT('',(10.,0.,0.));#42=DIRECTION('',(1.,0.,0.));"
        "#43=DIRECTION('',(0.,1.,0.));");
    EXPECT_THAT(corners(face.mesh), ElementsAre(Point{10, 0, 0}, Point{10, 1, 0}, Point{10, 0, 1}));
    EXPECT_THAT(face.mesh.normals, ElementsAre(Point{1, 0, 0}, Point{1, 0, 0}, Point{1, 0, 0}));
}

TEST(Parts, FacesHaveTheirColourOrThatOfTheirBody)
{
    const std::string style = "#51=PRESENTATION_STYLE_ASSIGNMENT((#52));#52=SURFACE_STYLE_USAGE(.BOTH.,#53);"
                              "#53=SURFACE_SIDE_STYLE('',(#54,#57));#54=SURFACE_STYLE_FILL_AREA(#55);"
                              "#55=FILL_AREA_STYLE('',(#56));#56=FILL_AREA_STYLE_COLOUR('',#58);"
                              "#57=SURFACE_STYLE_RENDERING_WITH_PROPERTIES(.NORMAL.,#58,(#59));"
                              "#58=COLOUR_RGB('',1.,1.,1.);#59=SURFACE_STYLE_TRANSPARENT(0.25);"
                              "#61=PRESENTATION_STYLE_ASSIGNMENT((#62));#62=FILL_AREA_STYLE('',(#63));"
                              "#63=FILL_AREA_STYLE_COLOUR('',#64);#64=DRAUGHTING_PRE_DEFINED_COLOUR('red');";
    const Parts parts = partsOf("(#30)", "#30=TESSELLATED_SOLID('a',(#31,#32),$);"
                                         "#31=TRIANGULATED_FACE('',#20,4,(),$,(),((1,2,3)));"
                                         "#32=TRIANGULATED_FACE('',#20,4,(),$,(),((3,2,4)));"
                                         "#50=STYLED_ITEM('',(#51),#30);#60=STYLED_ITEM('',(#61),#32);" +
                                             style);
    ASSERT_EQ(parts.parts.size(), 1u);
    ASSERT_EQ(parts.parts[0].faces.size(), 2u);
    EXPECT_EQ(parts.parts[0].faces[0].color, (osg::Color4f{1, 1, 1, 0.75F}));
    EXPECT_EQ(parts.parts[0].faces[1].color, (osg::Color4f{1, 0, 0, 1}));
}

TEST(Parts, OnlyShapesOfProductsCount)
{
    const std::string face = "#31=TRIANGULATED_FACE('',#20,4,(),$,(),((1,2,3)));";
    EXPECT_THAT(partsOf("()", face + "#70=TESSELLATED_SHAPE_REPRESENTATION('',(#31),#7);").parts, IsEmpty());
    EXPECT_THAT(partsOf("()", face + "#70=CONSTRUCTIVE_GEOMETRY_REPRESENTATION('',(#31),#7);").parts, IsEmpty());
    const Parts direct = partsOf("()", face + "#70=TESSELLATED_SHAPE_REPRESENTATION('',(#31),#7);"
                                              "#71=SHAPE_DEFINITION_REPRESENTATION(#4,#70);");
    EXPECT_EQ(direct.parts.size(), 1u);
    const Parts ofAspect = partsOf("()", face + "#70=TESSELLATED_SHAPE_REPRESENTATION('',(#31),#7);"
                                                "#71=SHAPE_DEFINITION_REPRESENTATION(#72,#70);"
                                                "#72=PROPERTY_DEFINITION('','',#3);");
    EXPECT_THAT(ofAspect.parts, IsEmpty());
    EXPECT_EQ(ofAspect.ofNoProduct, 1u);
}

TEST(Parts, WhatIsNotReadIsCounted)
{
    const Parts parts =
        partsOf("(#30,#31,#32,#99,#21)", "#30=CUBIC_BEZIER_TRIANGULATED_FACE('',#20,4,(),$,(),());"
                                         "#31=TRIANGULATED_FACE('',#20,4,(),$,(),((1,2,9),(1,2,3)));"
                                         "#32=TESSELLATED_WIRE('',());#21=AXIS2_PLACEMENT_3D('',$,$,$);");
    EXPECT_THAT(parts.unread, ElementsAre(Pair("CUBIC_BEZIER_TRIANGULATED_FACE", 1u), Pair("TESSELLATED_WIRE", 1u),
                                          Pair("an entity that is not there", 1u)));
    EXPECT_EQ(parts.counts.outOfRange, 1u);
}

TEST(Parts, BodiesThatHoldThemselvesEnd)
{
    const Parts parts = partsOf("(#30,#31)", "#30=TESSELLATED_SOLID('',(#30,#32),$);"
                                             "#31=TESSELLATED_GEOMETRIC_SET('',(#31,#31));"
                                             "#32=TRIANGULATED_FACE('',#20,4,(),$,(),((1,2,3)));");
    ASSERT_EQ(parts.parts.size(), 1u);
    EXPECT_EQ(parts.parts[0].faces.size(), 17u);
}

TEST(Parts, AHostileTextIsCut)
{
    std::string triangles = "(1,2,3)";
    for (int i = 0; i < 12; ++i)
        triangles += "," + triangles;
    std::string faces = "#31";
    for (int i = 0; i < 14; ++i)
        faces += "," + faces;
    const Parts parts = partsOf("(#30)", "#30=TESSELLATED_SHELL('',(" + faces +
                                             "),$);#31=TRIANGULATED_FACE('',#20,4,(),$,(),(" + triangles + "));");
    EXPECT_TRUE(parts.isCut);
}
