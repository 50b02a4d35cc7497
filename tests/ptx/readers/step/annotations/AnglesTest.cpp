// Parts of circles that end at angles, in the units that files assign.

#include "tests/ptx/readers/step/annotations/DrawnText.h"

#include <gmock/gmock.h>

#include <cmath>
#include <numbers>

using namespace ptx::step::annotations;
using ptxtest::drawnOf;
using testing::DoubleNear;
using testing::ElementsAre;

namespace
{

constexpr const char* Radian = "#71=(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.));\n";
constexpr const char* Degree = "#71=(CONVERSION_BASED_UNIT('DEGREE',#72)NAMED_UNIT(#79)PLANE_ANGLE_UNIT());\n"
                               "#72=PLANE_ANGLE_MEASURE_WITH_UNIT(PLANE_ANGLE_MEASURE(0.017453292519943295),#73);\n"
                               "#73=(NAMED_UNIT(*)PLANE_ANGLE_UNIT()SI_UNIT($,.RADIAN.));\n";
constexpr const char* NoUnit = "";

/// An arc around the origin with the radius 2 from one end to the other, in a drawing with `unit` for its angles.
Drawing arc(const std::string& unit, const std::string& from, const std::string& to, const std::string& sense = ".T.")
{
    return drawnOf("#1=CARTESIAN_POINT('',(0.,0.,0.));\n#2=AXIS2_PLACEMENT_3D('',#1,$,$);\n#3=CIRCLE('',#2,2.);\n"
                   "#4=CARTESIAN_POINT('',(0.,2.,0.));\n"
                   "#10=TRIMMED_CURVE('',#3,(" +
                   from + "),(" + to + ")," + sense +
                   ",.PARAMETER.);\n"
                   "#20=GEOMETRIC_CURVE_SET('note',(#10));\n#30=ANNOTATION_CURVE_OCCURRENCE('A',(),#20);\n"
                   "#40=DRAUGHTING_CALLOUT('A',(#30));\n#50=DRAUGHTING_MODEL('',(#40),#60);\n"
                   "#60=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#70,#71))"
                   "REPRESENTATION_CONTEXT('',''));\n#70=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));\n" +
                   unit);
}

std::string parameter(const std::string& value)
{
    return "PARAMETER_VALUE(" + value + ")";
}

std::vector<Point> pointsOf(const Drawing& drawing)
{
    return drawing.callouts.empty() ? std::vector<Point>() : drawing.callouts[0].strokes[0].points;
}

testing::Matcher<Point> at(double degrees)
{
    const double angle = degrees * std::numbers::pi / 180;
    return ElementsAre(DoubleNear(2 * std::cos(angle), 1e-6), DoubleNear(2 * std::sin(angle), 1e-6), 0);
}

/// A circle has 48 steps, so an arc has one more point than it has pieces of 7.5 degrees.
void expectArc(const Drawing& drawing, std::size_t pieces, double from, double second, double to)
{
    const std::vector<Point> points = pointsOf(drawing);
    ASSERT_EQ(points.size(), pieces + 1);
    EXPECT_THAT(points[0], at(from));
    EXPECT_THAT(points[1], at(second));
    EXPECT_THAT(points[pieces], at(to));
}

} // namespace

TEST(Angles, AreInTheUnitOfTheDrawing)
{
    expectArc(arc(Radian, parameter("0.5235987755982988"), parameter("2.0943951023931953")), 12, 30, 37.5, 120);
    expectArc(arc(Degree, parameter("30."), parameter("120.")), 12, 30, 37.5, 120);
    // Less than a full turn of radians, but degrees all the same.
    expectArc(arc(Degree, parameter("0."), parameter("6.")), 1, 0, 6, 6);
    EXPECT_EQ(arc(Degree, parameter("0."), parameter("6.")).counts.guessedAngles, 0u);
}

TEST(Angles, AgainstTheSenseTheCurveGoesRoundTheOtherWay)
{
    expectArc(arc(Degree, parameter("30."), parameter("120."), ".F."), 36, 30, 22.5, 120);
    expectArc(arc(Radian, parameter("2.0943951023931953"), parameter("0.5235987755982988"), ".F."), 12, 120, 112.5, 30);
}

TEST(Angles, ACurveMayPassTheBeginningOfTheCircleOrGoAllAround)
{
    expectArc(arc(Degree, parameter("330."), parameter("30.")), 8, 330, 337.5, 30);
    expectArc(arc(Radian, parameter("0."), parameter("6.283185307179586")), 48, 0, 7.5, 0);
    expectArc(arc(Degree, parameter("0."), parameter("360."), ".F."), 48, 0, -7.5, 0);
}

TEST(Angles, OneEndMayBeAPoint)
{
    expectArc(arc(Degree, parameter("60."), "#4"), 4, 60, 67.5, 90);
    expectArc(arc(Degree, "#4", parameter("60."), ".F."), 4, 90, 82.5, 60);
}

TEST(Angles, WithoutAUnitTheyAreRadiansOrBeyondATurnDegrees)
{
    const Drawing radians = arc(NoUnit, parameter("0."), parameter("1.5707963267948966"));
    expectArc(radians, 12, 0, 7.5, 90);
    EXPECT_EQ(radians.counts.guessedAngles, 1u);
    const Drawing degrees = arc(NoUnit, parameter("0."), parameter("90."));
    expectArc(degrees, 12, 0, 7.5, 90);
    EXPECT_EQ(degrees.counts.guessedAngles, 1u);
    expectArc(arc(NoUnit, parameter("0."), parameter("6.2831853")), 48, 0, 7.5, 0);
    EXPECT_EQ(arc(NoUnit, "#4", "#4").counts.guessedAngles, 0u);
}

TEST(Angles, UnitsThatNameEachOtherAreNone)
{
    const Drawing drawing = arc("#71=(CONVERSION_BASED_UNIT('A',#72)NAMED_UNIT(#79)PLANE_ANGLE_UNIT());\n"
                                "#72=PLANE_ANGLE_MEASURE_WITH_UNIT(PLANE_ANGLE_MEASURE(2.),#71);\n",
                                parameter("0."), parameter("90."));
    EXPECT_EQ(drawing.counts.guessedAngles, 1u);
    expectArc(drawing, 12, 0, 7.5, 90);
}

TEST(Angles, WithoutAnEndNothingIsDrawn)
{
    const Drawing drawing = arc(Degree, parameter("30."), "$");
    EXPECT_TRUE(pointsOf(drawing).empty());
    EXPECT_EQ(drawing.unread.at("TRIMMED_CURVE"), 1u);
}
