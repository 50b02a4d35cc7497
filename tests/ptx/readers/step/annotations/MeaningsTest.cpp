// What annotations of small texts mean.

#include "tests/ptx/readers/step/annotations/DrawnText.h"

#include <gmock/gmock.h>

using namespace ptx::step::annotations;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace
{

/// A drawn callout #4 in the drawing #5, and `more`, in which #9 is what it means.
Drawing meaning(const std::string& more)
{
    return ptxtest::drawnOf("#1=POLYLINE('',(#6,#7));#6=CARTESIAN_POINT('',(0.,0.,0.));"
                            "#7=CARTESIAN_POINT('',(1.,0.,0.));"
                            "#3=ANNOTATION_CURVE_OCCURRENCE('',(),#1);#4=DRAUGHTING_CALLOUT('a',(#3));"
                            "#5=DRAUGHTING_MODEL('',(#4),$);"
                            "#8=DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#9,#5,#4);"
                            "#20=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));" +
                            more);
}

std::vector<Meaning> meaningsOf(const std::string& more)
{
    const Drawing drawing = meaning(more);
    EXPECT_EQ(drawing.callouts.size(), 1u);
    return drawing.callouts.empty() ? std::vector<Meaning>() : drawing.callouts[0].meanings;
}

Measure millimetres(double number)
{
    return {number, "mm"};
}

} // namespace

TEST(Meanings, ADimensionHasItsValueAndItsLimits)
{
    const auto found = meaningsOf(
        "#9=DIMENSIONAL_SIZE(#99,'diameter');#30=DIMENSIONAL_CHARACTERISTIC_REPRESENTATION(#9,#31);"
        "#31=SHAPE_DIMENSION_REPRESENTATION('',(#32),$);"
        "#32=(LENGTH_MEASURE_WITH_UNIT()MEASURE_REPRESENTATION_ITEM()MEASURE_WITH_UNIT(LENGTH_MEASURE(30.5),#20)"
        "REPRESENTATION_ITEM('nominal value'));"
        "#33=PLUS_MINUS_TOLERANCE(#34,#9);#34=TOLERANCE_VALUE(#35,#36);"
        "#35=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(-0.1),#20);#36=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(0.2),#20)"
        ";");
    EXPECT_THAT(found, ElementsAre(Meaning{"diameter", millimetres(30.5), millimetres(-0.1), millimetres(0.2), ""}));
}

TEST(Meanings, AToleranceHasItsSizeAndItsDatums)
{
    const std::string datums =
        "#50=DATUM('',$,#1,.F.,'A');#51=DATUM('',$,#1,.F.,'B');#52=DATUM('',$,#1,.F.,'C');"
        "#53=DATUM_SYSTEM('',$,#1,.F.,(#54,#55));#54=DATUM_REFERENCE_COMPARTMENT('',$,#1,.F.,#50,$);"
        "#55=DATUM_REFERENCE_COMPARTMENT('',$,#1,.F.,COMMON_DATUM_LIST((#56,#57)),$);"
        "#56=DATUM_REFERENCE_ELEMENT('',$,#1,.F.,#51,$);"
        "#57=DATUM_REFERENCE_ELEMENT('',$,#1,.F.,#52,$);"
        "#40=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(0.05),#41);"
        "#41=(CONVERSION_BASED_UNIT('INCH',#42)LENGTH_UNIT()NAMED_UNIT(#43));";
    const Meaning expected = {"position tolerance", {0.05, "in"}, {}, {}, "A|B-C"};
    EXPECT_THAT(meaningsOf(datums + "#9=(GEOMETRIC_TOLERANCE('a','',#40,#1)"
                                    "GEOMETRIC_TOLERANCE_WITH_DATUM_REFERENCE((#53))POSITION_TOLERANCE());"),
                ElementsAre(expected));
    EXPECT_THAT(meaningsOf(datums + "#9=POSITION_TOLERANCE('a','',#40,#1,(#53));"), ElementsAre(expected));
    EXPECT_THAT(meaningsOf(datums + "#9=FLATNESS_TOLERANCE('a','',#40,#1);"),
                ElementsAre(Meaning{"flatness tolerance", {0.05, "in"}, {}, {}, ""}));
}

TEST(Meanings, ADatumFeatureHasTheLetterOfItsDatum)
{
    EXPECT_THAT(meaningsOf("#9=DATUM_FEATURE('Simple Datum.1',$,#1,.T.);#50=DATUM('',$,#1,.F.,'D');"
                           "#51=SHAPE_ASPECT_RELATIONSHIP('','',#9,#50);"),
                ElementsAre(Meaning{"datum", {}, {}, {}, "D"}));
}

TEST(Meanings, PlacesAreNoMeaningAndTheRestIsCounted)
{
    const Drawing place = meaning("#9=COMPOSITE_SHAPE_ASPECT('','DIMENSION',#1,.F.);");
    EXPECT_THAT(place.callouts.at(0).meanings, IsEmpty());
    EXPECT_THAT(place.notUnderstood, IsEmpty());
    EXPECT_THAT(meaning("#9=PROPERTY_DEFINITION('semantic text',$,#1);").notUnderstood,
                ElementsAre(Pair("PROPERTY_DEFINITION", 1u)));
}

TEST(Meanings, DatumsThatNameEachOtherEnd)
{
    const auto found = meaningsOf("#9=POSITION_TOLERANCE('a','',$,#1,(#53));#53=DATUM_SYSTEM('',$,#1,.F.,(#53,#54));"
                                  "#54=DATUM_REFERENCE_COMPARTMENT('',$,#1,.F.,#53,$);");
    EXPECT_THAT(found, ElementsAre(Meaning{"position tolerance", {}, {}, {}, ""}));
}
