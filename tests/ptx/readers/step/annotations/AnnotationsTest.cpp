// What annotations draw, form by form, in texts made by hand.

#include "ptx/readers/step/annotations/Annotations.h"

#include "tests/ptx/readers/step/annotations/DrawnText.h"

#include <gmock/gmock.h>

#include <cmath>

using namespace ptx::step::annotations;
using ptxtest::drawnOf;
using testing::DoubleNear;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace
{

/// Red curves (#901), green areas (#902), and what white becomes (#903).
const std::string Styles = "#901=PRESENTATION_STYLE_ASSIGNMENT((#911));\n"
                           "#911=CURVE_STYLE('',$,POSITIVE_LENGTH_MEASURE(0.1),#921);\n"
                           "#921=DRAUGHTING_PRE_DEFINED_COLOUR('red');\n"
                           "#902=PRESENTATION_STYLE_ASSIGNMENT((#911,#912));\n"
                           "#912=FILL_AREA_STYLE('',(#913));\n"
                           "#913=FILL_AREA_STYLE_COLOUR('',#922);\n"
                           "#922=COLOUR_RGB('',0.,0.5,0.);\n"
                           "#903=PRESENTATION_STYLE_ASSIGNMENT((#914));\n"
                           "#914=CURVE_STYLE('',$,POSITIVE_LENGTH_MEASURE(0.1),#923);\n"
                           "#923=COLOUR_RGB('',1.,1.,1.);\n";

const std::string ThreePoints = "#1=CARTESIAN_POINT('',(1.,2.,3.));\n"
                                "#2=CARTESIAN_POINT('',(4.,2.,3.));\n"
                                "#3=CARTESIAN_POINT('',(4.,6.,3.));\n";

constexpr osg::Color4f Red = {1, 0, 0, 1};
constexpr osg::Color4f Green = {0, 0.5F, 0, 1};
constexpr osg::Color4f Black = {0, 0, 0, 1};

testing::Matcher<Point> near(double x, double y, double z)
{
    return ElementsAre(DoubleNear(x, 1e-9), DoubleNear(y, 1e-9), DoubleNear(z, 1e-9));
}

/// An annotation of `curve` by itself.
Drawing drawnCurve(const std::string& curve)
{
    return drawnOf(Styles + ThreePoints + curve +
                   "#20=GEOMETRIC_CURVE_SET('note',(#10));\n#30=ANNOTATION_CURVE_OCCURRENCE('A',(#901),#20);\n");
}

} // namespace

TEST(Annotations, APolylineIsDrawnInTheCalloutThatHoldsIt)
{
    const Drawing drawing = drawnOf(Styles + ThreePoints +
                                    "#10=POLYLINE('',(#1,#2,#3));\n#20=GEOMETRIC_CURVE_SET('datum',(#10));\n"
                                    "#30=ANNOTATION_CURVE_OCCURRENCE('in it',(#901),#20);\n"
                                    "#40=DRAUGHTING_CALLOUT('Datum \\X\\C4 (2)',(#30));\n");
    ASSERT_EQ(drawing.callouts.size(), 1u);
    const Callout& callout = drawing.callouts[0];
    EXPECT_EQ(callout.name, "Datum Ä (2)");
    EXPECT_THAT(callout.kinds, ElementsAre("datum"));
    ASSERT_EQ(callout.strokes.size(), 1u);
    EXPECT_EQ(callout.strokes[0].color, Red);
    EXPECT_THAT(callout.strokes[0].points, ElementsAre(near(1, 2, 3), near(4, 2, 3), near(4, 6, 3)));
    EXPECT_THAT(callout.strokes[0].lines, ElementsAre(0, 1, 1, 2));
    EXPECT_THAT(drawing.unread, IsEmpty());
}

TEST(Annotations, AnAnnotationInNoCalloutIsOneByItself)
{
    const Drawing drawing = drawnCurve("#10=POLYLINE('',(#1,#2));\n");
    ASSERT_EQ(drawing.callouts.size(), 1u);
    EXPECT_EQ(drawing.callouts[0].name, "A");
}

TEST(Annotations, ACircleIsDrawnAroundItsAxis)
{
    const Drawing drawing = drawnCurve("#4=DIRECTION('',(1.,0.,0.));\n#5=DIRECTION('',(0.,1.,0.));\n"
                                       "#6=AXIS2_PLACEMENT_3D('',#1,#4,#5);\n#10=CIRCLE('',#6,2.);\n");
    ASSERT_EQ(drawing.callouts.size(), 1u);
    const std::vector<Point>& points = drawing.callouts[0].strokes[0].points;
    ASSERT_EQ(points.size(), 49u);
    EXPECT_THAT(points[0], near(1, 4, 3));
    EXPECT_THAT(points[12], near(1, 2, 5));
    EXPECT_THAT(points[48], near(1, 4, 3));
    EXPECT_EQ(drawing.counts.circles, 1u);
}

TEST(Annotations, APartOfACircleGoesTheWayThatItIsTold)
{
    const std::string circle = "#6=AXIS2_PLACEMENT_3D('',#1,$,$);\n#7=CIRCLE('',#6,2.);\n"
                               "#8=CARTESIAN_POINT('',(3.,2.,3.));\n#9=CARTESIAN_POINT('',(1.,4.,3.));\n"
                               "#10=TRIMMED_CURVE('',#7,(#8),(#9,PARAMETER_VALUE(9.)),";
    const Drawing quarter = drawnCurve(circle + ".T.,.CARTESIAN.);\n");
    const Drawing rest = drawnCurve(circle + ".F.,.CARTESIAN.);\n");
    ASSERT_EQ(quarter.callouts.size(), 1u);
    ASSERT_EQ(rest.callouts.size(), 1u);
    EXPECT_EQ(quarter.callouts[0].strokes[0].points.size(), 13u);
    EXPECT_THAT(quarter.callouts[0].strokes[0].points.back(), near(1, 4, 3));
    EXPECT_EQ(rest.callouts[0].strokes[0].points.size(), 37u);
    EXPECT_THAT(rest.callouts[0].strokes[0].points[12], near(1, 0, 3));
}

TEST(Annotations, ALineMayEndAtParameters)
{
    const Drawing drawing = drawnCurve("#4=DIRECTION('',(0.,0.,2.));\n#5=VECTOR('',#4,10.);\n#6=LINE('',#1,#5);\n"
                                       "#10=TRIMMED_CURVE('',#6,(PARAMETER_VALUE(0.5)),(PARAMETER_VALUE(-1.)),.T.,"
                                       ".PARAMETER.);\n");
    ASSERT_EQ(drawing.callouts.size(), 1u);
    EXPECT_THAT(drawing.callouts[0].strokes[0].points, ElementsAre(near(1, 2, 8), near(1, 2, -7)));
}

TEST(Annotations, ASplineGoesThroughItsEndsAndBetween)
{
    // A parabola: half way it is the middle of the middles.
    const Drawing drawing = drawnCurve("#10=B_SPLINE_CURVE_WITH_KNOTS('',2,(#1,#2,#3),.UNSPECIFIED.,.F.,.F.,(3,3),"
                                       "(0.,2.),.UNSPECIFIED.);\n");
    ASSERT_EQ(drawing.callouts.size(), 1u);
    const std::vector<Point>& points = drawing.callouts[0].strokes[0].points;
    ASSERT_EQ(points.size(), 9u);
    EXPECT_THAT(points[0], near(1, 2, 3));
    EXPECT_THAT(points[4], near(3.25, 3, 3));
    EXPECT_THAT(points[8], near(4, 6, 3));
}

TEST(Annotations, ASplineOfSeveralSpansPassesItsKnots)
{
    const Drawing drawing = drawnCurve("#4=CARTESIAN_POINT('',(8.,6.,3.));\n"
                                       "#10=B_SPLINE_CURVE_WITH_KNOTS('',2,(#1,#2,#3,#4),.UNSPECIFIED.,.F.,.F.,"
                                       "(3,1,3),(0.,1.,3.),.UNSPECIFIED.);\n");
    ASSERT_EQ(drawing.callouts.size(), 1u);
    const std::vector<Point>& points = drawing.callouts[0].strokes[0].points;
    ASSERT_EQ(points.size(), 17u);
    // At the knot 1 between 0 and 3 the curve divides the way from the second point to the third as 1 : 2.
    EXPECT_THAT(points[8], near(4, 2 + 4. / 3, 3));
    EXPECT_THAT(points[16], near(8, 6, 3));
}

TEST(Annotations, ASplineWithWeightsIsAnArcExactly)
{
    // A quarter around (1, 6, 3) with the radius 4 in the plane z = 3, beginning at (1, 2, 3).
    const Drawing drawing =
        drawnCurve("#4=CARTESIAN_POINT('',(5.,2.,3.));\n#5=CARTESIAN_POINT('',(5.,6.,3.));\n"
                   "#10=(BOUNDED_CURVE()B_SPLINE_CURVE(2,(#1,#4,#5),.UNSPECIFIED.,.F.,.F.)"
                   "B_SPLINE_CURVE_WITH_KNOTS((3,3),(0.,1.),.UNSPECIFIED.)CURVE()GEOMETRIC_REPRESENTATION_ITEM()"
                   "RATIONAL_B_SPLINE_CURVE((1.,0.7071067811865476,1.))REPRESENTATION_ITEM(''));\n");
    ASSERT_EQ(drawing.callouts.size(), 1u);
    for (const Point& point : drawing.callouts[0].strokes[0].points)
        EXPECT_NEAR(std::hypot(point[0] - 1, point[1] - 6), 4, 1e-9);
}

TEST(Annotations, SegmentsOfACompositeCurveAreJoined)
{
    const Drawing drawing = drawnCurve("#4=POLYLINE('',(#1,#2));\n#5=POLYLINE('',(#3,#2));\n"
                                       "#6=COMPOSITE_CURVE_SEGMENT(.CONTINUOUS.,.T.,#4);\n"
                                       "#7=COMPOSITE_CURVE_SEGMENT(.CONTINUOUS.,.F.,#5);\n"
                                       "#10=COMPOSITE_CURVE('',(#6,#7),.U.);\n");
    ASSERT_EQ(drawing.callouts.size(), 1u);
    EXPECT_THAT(drawing.callouts[0].strokes[0].points, ElementsAre(near(1, 2, 3), near(4, 2, 3), near(4, 6, 3)));
}

TEST(Annotations, TessellatedCurvesAndAreasHaveColoursOfTheirOwn)
{
    const Drawing drawing =
        drawnOf(Styles + "#1=COORDINATES_LIST('',4,((0.,0.,0.),(1.,0.,0.),(0.,1.,0.),(1.,1.,0.)));\n"
                         "#2=TESSELLATED_CURVE_SET('',#1,((1,2,4),(3,4)));\n"
                         "#3=COMPLEX_TRIANGULATED_SURFACE_SET('',#1,4,(),(),((1,2,3,4)),((4,3,2),(1,1,2)));\n"
                         "#4=TRIANGULATED_SURFACE_SET('',#1,3,$,(4,3,2),((1,2,3)));\n"
                         "#20=TESSELLATED_GEOMETRIC_SET('position',(#2,#3,#4));\n"
                         "#30=TESSELLATED_ANNOTATION_OCCURRENCE('A',(#902),#20);\n");
    ASSERT_EQ(drawing.callouts.size(), 1u);
    const std::vector<Strokes>& strokes = drawing.callouts[0].strokes;
    ASSERT_EQ(strokes.size(), 2u);
    EXPECT_EQ(strokes[0].color, Red);
    EXPECT_THAT(strokes[0].lines, ElementsAre(0, 1, 1, 2, 3, 4));
    EXPECT_EQ(strokes[1].color, Green);
    EXPECT_THAT(strokes[1].triangles, ElementsAre(0, 1, 2, 2, 1, 3, 3, 2, 1, 4, 5, 6));
    EXPECT_THAT(strokes[1].points[4], near(1, 1, 0));
    EXPECT_EQ(drawing.counts.joints, 1u);
}

TEST(Annotations, ASetThatIsMovedIsDrawnInItsPlane)
{
    const Drawing drawing = drawnOf(
        Styles + "#1=COORDINATES_LIST('',2,((1.,0.,0.),(0.,1.,0.)));\n#2=TESSELLATED_CURVE_SET('',#1,((1,2)));\n"
                 "#5=CARTESIAN_POINT('',(10.,20.,30.));\n#6=DIRECTION('',(1.,0.,0.));\n#7=DIRECTION('',(0.,1.,0.));\n"
                 "#8=AXIS2_PLACEMENT_3D('',#5,#6,#7);\n"
                 "#20=(GEOMETRIC_REPRESENTATION_ITEM()REPOSITIONED_TESSELLATED_ITEM(#8)REPRESENTATION_ITEM('note')"
                 "TESSELLATED_GEOMETRIC_SET((#2))TESSELLATED_ITEM());\n"
                 "#30=(ANNOTATION_OCCURRENCE()CHARACTERIZED_OBJECT('','')REPRESENTATION_ITEM('Dimension.1')"
                 "STYLED_ITEM((#903),#20)TESSELLATED_ANNOTATION_OCCURRENCE());\n");
    ASSERT_EQ(drawing.callouts.size(), 1u);
    EXPECT_EQ(drawing.callouts[0].name, "Dimension.1");
    EXPECT_THAT(drawing.callouts[0].kinds, ElementsAre("note"));
    EXPECT_THAT(drawing.callouts[0].strokes[0].points, ElementsAre(near(10, 21, 30), near(10, 20, 31)));
    EXPECT_EQ(drawing.callouts[0].strokes[0].color, Black) << "white cannot be seen on white";
}

TEST(Annotations, AnAreaIsFilledBetweenItsBounds)
{
    const std::string area = Styles + ThreePoints + "#10=POLYLINE('',(#1,#2,#3,#1));\n";
    const Drawing filled = drawnOf(area + "#20=ANNOTATION_FILL_AREA('',(#10));\n"
                                          "#30=ANNOTATION_FILL_AREA_OCCURRENCE('A',(#902),#20,#1);\n");
    ASSERT_EQ(filled.callouts.size(), 1u);
    EXPECT_EQ(filled.counts.triangles, 1u);
    EXPECT_EQ(filled.callouts[0].strokes[0].color, Green);
}

TEST(Annotations, HolesOfAnAreaStayFree)
{
    std::string text = Styles;
    const auto square = [&text](int number, double low, double high, bool isTurned) {
        const double corners[4][2] = {{low, low}, {high, low}, {high, high}, {low, high}};
        std::string list;
        for (int i = 0; i < 4; ++i) {
            const double* corner = corners[isTurned ? 3 - i : i];
            text += "#" + std::to_string(number + i + 1) + "=CARTESIAN_POINT('',(" + std::to_string(corner[0]) + "," +
                    std::to_string(corner[1]) + ",0.));\n";
            list += "#" + std::to_string(number + i + 1) + ",";
        }
        text += "#" + std::to_string(number) + "=POLYLINE('',(" + list + "#" + std::to_string(number + 1) + "));\n";
    };
    square(100, 1, 3, true);
    square(200, 0, 10, false);
    square(300, 5, 8, false);
    const Drawing drawing = drawnOf(text + "#20=ANNOTATION_FILL_AREA('',(#100,#200,#300));\n"
                                           "#30=ANNOTATION_FILL_AREA_OCCURRENCE('A',(#902),#20,#101);\n");
    ASSERT_EQ(drawing.callouts.size(), 1u);
    const Strokes& strokes = drawing.callouts[0].strokes.at(0);
    double area = 0;
    for (std::size_t i = 0; i < strokes.triangles.size(); i += 3) {
        const Point& a = strokes.points[strokes.triangles[i]];
        const Point& b = strokes.points[strokes.triangles[i + 1]];
        const Point& c = strokes.points[strokes.triangles[i + 2]];
        area += std::abs((b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0])) / 2;
    }
    EXPECT_NEAR(area, 100 - 4 - 9, 1e-4);
    EXPECT_TRUE(drawing.unread.empty());
}

TEST(Annotations, ALeaderHasItsArrowAndItsText)
{
    const Drawing drawing =
        drawnOf(Styles + ThreePoints +
                "#10=POLYLINE('',(#1,#2));\n"
                "#30=(ANNOTATION_CURVE_OCCURRENCE()ANNOTATION_OCCURRENCE()DRAUGHTING_ANNOTATION_OCCURRENCE()"
                "GEOMETRIC_REPRESENTATION_ITEM()LEADER_CURVE()REPRESENTATION_ITEM(' ')STYLED_ITEM((#901),#10));\n"
                "#11=PRE_DEFINED_TERMINATOR_SYMBOL('filled arrow');\n#12=AXIS2_PLACEMENT_3D('',#2,$,$);\n"
                "#13=SYMBOL_TARGET('',#12,1.5,1.5);\n#14=DEFINED_SYMBOL('',#11,#13);\n"
                "#31=(ANNOTATION_OCCURRENCE()ANNOTATION_SYMBOL_OCCURRENCE()LEADER_TERMINATOR()REPRESENTATION_ITEM(' ')"
                "STYLED_ITEM((#901),#14)TERMINATOR_SYMBOL(#30));\n"
                "#15=TEXT_LITERAL('','one',#12,'baseline left',.RIGHT.,#16);\n"
                "#17=TEXT_LITERAL('','two',#12,'baseline left',.RIGHT.,#16);\n#18=COMPOSITE_TEXT('',(#15,#17));\n"
                "#32=ANNOTATION_TEXT_OCCURRENCE('',(#901),#18);\n#40=LEADER_DIRECTED_CALLOUT('',(#32,#30,#31));\n");
    ASSERT_EQ(drawing.callouts.size(), 1u);
    EXPECT_THAT(drawing.callouts[0].texts, ElementsAre("one", "two"));
    const Strokes& strokes = drawing.callouts[0].strokes[0];
    EXPECT_THAT(strokes.triangles, ElementsAre(2, 3, 4));
    EXPECT_THAT(strokes.points[2], near(4, 2, 3));
    EXPECT_THAT(strokes.points[3], near(2.5, 1.75, 3));
    EXPECT_THAT(strokes.points[4], near(2.5, 2.25, 3));
}

TEST(Annotations, CurvesOfASetMayBeStyledDifferently)
{
    const Drawing drawing = drawnOf(Styles + ThreePoints +
                                    "#10=POLYLINE('',(#1,#2));\n#11=POLYLINE('',(#2,#3));\n"
                                    "#20=GEOMETRIC_CURVE_SET('',(#10,#11));\n#21=GEOMETRIC_CURVE_SET('',(#11));\n"
                                    "#30=ANNOTATION_CURVE_OCCURRENCE('A',(#901),#20);\n"
                                    "#31=OVER_RIDING_STYLED_ITEM('',(#903),#21,$);\n");
    ASSERT_EQ(drawing.callouts.size(), 1u);
    ASSERT_EQ(drawing.callouts[0].strokes.size(), 2u);
    EXPECT_EQ(drawing.callouts[0].strokes[1].color, Black);
    EXPECT_THAT(drawing.callouts[0].strokes[1].points, ElementsAre(near(4, 2, 3), near(4, 6, 3)));
}

TEST(Annotations, TheModelTellsUnitAndProduct)
{
    const std::string drawn = Styles + ThreePoints +
                              "#10=POLYLINE('',(#1,#2));\n#30=ANNOTATION_CURVE_OCCURRENCE('A',(#901),#10);\n"
                              "#40=DRAUGHTING_CALLOUT('B',(#30));\n#41=ANNOTATION_PLANE('',(),$,(#40));\n"
                              "#50=PRODUCT_DEFINITION('',$,$,$);\n#51=PRODUCT_DEFINITION_SHAPE('','',#50);\n"
                              "#52=SHAPE_DEFINITION_REPRESENTATION(#51,#53);\n#54=REPRESENTATION_MAP(#55,#53);\n"
                              "#56=MAPPED_ITEM('',#54,#55);\n";
    const Drawing mapped = drawnOf(drawn + "#60=DRAUGHTING_MODEL('',(#41,#56),#70);\n");
    EXPECT_EQ(mapped.callouts.at(0).product, 50u);
    EXPECT_EQ(mapped.callouts.at(0).context, 70u);
    const Drawing related =
        drawnOf(drawn + "#60=DRAUGHTING_MODEL('',(#30),#70);\n#61=(CHARACTERIZED_OBJECT(*,*)DRAUGHTING_MODEL()"
                        "REPRESENTATION('',(#56),#71));\n"
                        "#62=MECHANICAL_DESIGN_AND_DRAUGHTING_RELATIONSHIP('','',#61,#60);\n");
    EXPECT_EQ(related.callouts.at(0).product, 50u);
    EXPECT_EQ(related.callouts.at(0).context, 70u);
    const Drawing linked = drawnOf(drawn + "#60=DRAUGHTING_MODEL('',(#40),#70);\n#63=SHAPE_ASPECT('','',#51,.T.);\n"
                                           "#64=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#63,#60,#40);\n");
    EXPECT_EQ(linked.callouts.at(0).product, 50u);
}

TEST(Annotations, WhatIsNotDrawnIsCountedByForm)
{
    const Drawing drawing = drawnOf(Styles + ThreePoints +
                                    "#10=POLYLINE('',(#1,#2));\n#11=B_SPLINE_CURVE_WITH_KNOTS('',1);\n"
                                    "#20=GEOMETRIC_CURVE_SET('',(#10,#11,#11));\n"
                                    "#30=ANNOTATION_CURVE_OCCURRENCE('A',(#901),#20);\n"
                                    "#31=ANNOTATION_SUBFIGURE_OCCURRENCE('B',(#901),#32);\n#32=ANNOTATION_SYMBOL('');\n"
                                    "#33=ANNOTATION_PLACEHOLDER_OCCURRENCE('C',(#901),#20,.GPS_DATA.,1.);\n"
                                    "#43=DRAUGHTING_CALLOUT('C',(#33));\n");
    EXPECT_THAT(drawing.unread, ElementsAre(Pair("ANNOTATION_SYMBOL", 1), Pair("B_SPLINE_CURVE_WITH_KNOTS", 2)));
    EXPECT_EQ(drawing.counts.placeholders, 1u);
    EXPECT_EQ(drawing.counts.occurrences, 2u);
    EXPECT_EQ(drawing.callouts.size(), 1u);
}
