// Annotations of files that mean no good.

#include "tests/ptx/readers/step/annotations/DrawnText.h"

#include <gmock/gmock.h>

using namespace ptx::step::annotations;
using ptxtest::drawnOf;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace
{

std::string ref(std::size_t number)
{
    return "#" + std::to_string(number);
}

std::string tessellated(const std::string& items)
{
    return "#1=COORDINATES_LIST('',3,((0.,0.,0.),(1.,0.,0.),(0.,1.,0.)));\n" + items +
           "#20=TESSELLATED_GEOMETRIC_SET('',(#2));\n#30=TESSELLATED_ANNOTATION_OCCURRENCE('A',(),#20);\n";
}

} // namespace

TEST(AnnotationsHostile, NumbersOfPointsThatThereAreNotAreLeftOut)
{
    const Drawing curves = drawnOf(tessellated("#2=TESSELLATED_CURVE_SET('',#1,((1,2,4,2,3),(0,-1,99999999999999999999"
                                               "),(1,$,'a',2)));\n"));
    EXPECT_EQ(curves.counts.polylines, 2u);
    EXPECT_EQ(curves.counts.points, 4u);
    EXPECT_EQ(curves.counts.outOfRange, 6u);
    const Drawing areas = drawnOf(tessellated(
        "#2=COMPLEX_TRIANGULATED_SURFACE_SET('',#1,3,(),(1,2,9,3),((1,2,3),(1,2,4)),((1,2,5),(0,1,2)));\n"));
    EXPECT_EQ(areas.counts.triangles, 1u);
    EXPECT_EQ(areas.counts.outOfRange, 3u);
}

TEST(AnnotationsHostile, WhatIsLeftOpenOrOfAnotherKindDrawsNothing)
{
    for (const char* items : {"#2=TESSELLATED_CURVE_SET($,$,$);\n", "#2=TESSELLATED_CURVE_SET();\n",
                              "#2=TRIANGULATED_FACE('',#1,$,$,$,$,$);\n",
                              "#2=COMPLEX_TRIANGULATED_SURFACE_SET('',#1,3,(),(),(1,2,3),((),(1)));\n",
                              "#2=TESSELLATED_CURVE_SET('',#2,((1)));\n"}) {
        const Drawing drawing = drawnOf(tessellated(items));
        EXPECT_THAT(drawing.callouts, IsEmpty()) << items;
        EXPECT_EQ(drawing.counts.triangles + drawing.counts.polylines, 0u) << items;
    }
    EXPECT_THAT(drawnOf("#30=ANNOTATION_CURVE_OCCURRENCE($,$,$);\n").unread,
                ElementsAre(Pair("an entity that is not there", 1)));
    EXPECT_THAT(drawnOf("#30=TESSELLATED_ANNOTATION_OCCURRENCE();\n#31=DRAUGHTING_CALLOUT();\n").callouts, IsEmpty());
}

TEST(AnnotationsHostile, CirclesOfReferencesEnd)
{
    const Drawing sets =
        drawnOf("#20=TESSELLATED_GEOMETRIC_SET('',(#20,#20));\n"
                "#30=TESSELLATED_ANNOTATION_OCCURRENCE('A',(#30),#20);\n"
                "#40=DRAUGHTING_CALLOUT('',(#40,#30,#30));\n#41=DRAUGHTING_MODEL('',(#41,#40),#41);\n");
    EXPECT_THAT(sets.callouts, IsEmpty());
    const Drawing curves =
        drawnOf("#1=COMPOSITE_CURVE_SEGMENT(.CONTINUOUS.,.T.,#2);\n#2=COMPOSITE_CURVE('',(#1,#1),.F.);\n"
                "#30=ANNOTATION_CURVE_OCCURRENCE('A',(),#2);\n");
    EXPECT_THAT(curves.unread, ElementsAre(Pair("COMPOSITE_CURVE", 1)));
}

TEST(AnnotationsHostile, SplinesThatDoNotFitTogetherDrawNothing)
{
    const std::string points = "#1=CARTESIAN_POINT('',(1.,2.,3.));\n#2=CARTESIAN_POINT('',(4.,2.,3.));\n"
                               "#20=GEOMETRIC_CURVE_SET('',(#10));\n#30=ANNOTATION_CURVE_OCCURRENCE('A',(),#20);\n";
    for (const char* rest :
         {"1,(#1,#2),.U.,.F.,.F.,(2,2),(0.,0.),.U.", "1,(#1,#2),.U.,.F.,.F.,(2,2),(1.,0.),.U.",
          "1,(#1,#2),.U.,.F.,.F.,(2,3),(0.,1.),.U.", "1,(#1,#2),.U.,.F.,.F.,(2,999999999999),(0.,1.),.U.",
          "99,(#1,#2),.U.,.F.,.F.,(2,2),(0.,1.),.U.", "0,(#1,#2),.U.,.F.,.F.,(1,2),(0.,1.),.U.",
          "1,(#1,#9),.U.,.F.,.F.,(2,2),(0.,1.),.U.", "1,(),.U.,.F.,.F.,(),(),.U.", "1,$,.U."}) {
        const Drawing drawing = drawnOf(points + "#10=B_SPLINE_CURVE_WITH_KNOTS(''," + rest + ");\n");
        EXPECT_EQ(drawing.counts.polylines, 0u) << rest;
        EXPECT_EQ(drawing.unread.count("B_SPLINE_CURVE_WITH_KNOTS"), 1u) << rest;
    }
}

TEST(AnnotationsHostile, NumbersOutOfAllRangeAreNone)
{
    const Drawing drawing =
        drawnOf("#1=CARTESIAN_POINT('',(1.E999,0.,0.));\n#2=CARTESIAN_POINT('',(1.,0.));\n"
                "#3=CARTESIAN_POINT('',(1.,0.,0.));\n#4=POLYLINE('',(#1,#2,#3,#99));\n"
                "#5=CIRCLE('',$,1.);\n#6=CIRCLE('',#7,-1.);\n#8=GEOMETRIC_CURVE_SET('',(#4,#5,#6));\n"
                "#30=ANNOTATION_CURVE_OCCURRENCE('A',(),#8);\n");
    EXPECT_EQ(drawing.counts.outOfRange, 3u);
    EXPECT_THAT(drawing.callouts, IsEmpty());
    EXPECT_THAT(drawing.unread, ElementsAre(Pair("CIRCLE", 2)));
}

TEST(AnnotationsHostile, AMillionPointsAreDrawnOnceAndTheirRepetitionHasAnEnd)
{
    constexpr std::size_t Count = 1'000'000;
    std::string points = "(0.,0.,0.)";
    std::string strip = "1";
    for (std::size_t i = 2; i <= Count; ++i) {
        points += ",(1.,0.,0.)";
        strip += "," + std::to_string(i);
    }
    std::string text =
        "#1=COORDINATES_LIST('',1000000,(" + points + "));\n#2=TESSELLATED_CURVE_SET('',#1,((" + strip +
        ")));\n#3=TESSELLATED_GEOMETRIC_SET('',(#2));\n#4=TESSELLATED_ANNOTATION_OCCURRENCE('',(),#3);\n";
    const Drawing once = drawnOf(text);
    EXPECT_EQ(once.counts.points, Count);
    EXPECT_FALSE(once.counts.isCut);
    for (std::size_t i = 5; i < 2000; ++i)
        text += ref(i) + "=TESSELLATED_ANNOTATION_OCCURRENCE('',(),#3);\n";
    const Drawing often = drawnOf(text);
    EXPECT_TRUE(often.counts.isCut);
    EXPECT_LT(often.counts.points, 20 * Count);
}

TEST(AnnotationsHostile, AFileWithoutAnnotationsDrawsNothing)
{
    EXPECT_THAT(drawnOf("#1=CARTESIAN_POINT('',(1.,0.,0.));\n#2=DRAUGHTING_CALLOUT('',(#1));\n").callouts, IsEmpty());
    EXPECT_THAT(ptxtest::drawn("").callouts, IsEmpty());
}
