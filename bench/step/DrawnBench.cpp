// How reading what a STEP text draws (annotations in callouts of draughting models, tessellated parts) grows with it.
//
// "ratio" is the time for twice the text over the time for the text. `views` shares one set of callouts out to many
// draughting models, `callouts` has one model that lists all, and so has `million`, with a million of them.

#include "bench/support/Ratio.h"
#include "ptx/readers/step/annotations/Annotations.h"
#include "ptx/readers/step/facets/Parts.h"
#include "ptx/readers/step/p21/Scan.h"

#include <cstdlib>
#include <string>

using namespace ptx::step;

namespace
{

std::string ref(std::size_t number)
{
    return "#" + std::to_string(number);
}

std::string fileWith(const std::string& data)
{
    return "ISO-10303-21;\nHEADER;FILE_NAME('a');ENDSEC;\nDATA;\n" + data + "ENDSEC;\nEND-ISO-10303-21;\n";
}

/// `count` callouts of a line each, in draughting models of `inModel`.
std::string callouts(std::size_t count, std::size_t inModel)
{
    std::string text = "#1=CARTESIAN_POINT('',(0.,0.,0.));\n#2=CARTESIAN_POINT('',(1.,0.,0.));\n";
    std::string list;
    for (std::size_t i = 0, n = 10; i < count; ++i, n += 10) {
        text += ref(n) + "=POLYLINE('',(#1,#2));\n" + ref(n + 1) + "=GEOMETRIC_CURVE_SET('note',(" + ref(n) + "));\n" +
                ref(n + 2) + "=ANNOTATION_CURVE_OCCURRENCE('A',()," + ref(n + 1) + ");\n" + ref(n + 3) +
                "=DRAUGHTING_CALLOUT('C',(" + ref(n + 2) + "));\n";
        list += (list.empty() ? "" : ",") + ref(n + 3);
        if ((i + 1) % inModel == 0 || i + 1 == count) {
            text += ref(n + 4) + "=DRAUGHTING_MODEL('',(" + list + "),$);\n";
            list.clear();
        }
    }
    return fileWith(text);
}

/// A part with `count` faces.
std::string faces(std::size_t count)
{
    std::string text = "#3=PRODUCT_DEFINITION('','',$,$);\n#4=PRODUCT_DEFINITION_SHAPE('','',#3);\n"
                       "#5=SHAPE_DEFINITION_REPRESENTATION(#4,#6);\n#6=SHAPE_REPRESENTATION('',(),#7);\n"
                       "#8=SHAPE_REPRESENTATION_RELATIONSHIP('','',#6,#9);\n"
                       "#9=TESSELLATED_SHAPE_REPRESENTATION('',(#10),#7);\n"
                       "#11=COORDINATES_LIST('',4,((0.,0.,0.),(1.,0.,0.),(0.,1.,0.),(1.,1.,0.)));\n";
    std::string list;
    for (std::size_t i = 0; i < count; ++i) {
        text += ref(20 + i) + "=TRIANGULATED_FACE('',#11,4,(),$,(),((1,2,3),(3,2,4)));\n";
        list += (list.empty() ? "" : ",") + ref(20 + i);
    }
    return fileWith(text + "#10=TESSELLATED_SHELL('',(" + list + "),$);\n");
}

double annotationSeconds(const std::string& text)
{
    const p21::Records records = p21::scan(text, 1);
    const p21::EntityIndex index(records);
    std::size_t count = 0;
    const double seconds = secondsOf([&] { count = annotations::readAnnotations(records, index).callouts.size(); });
    if (count < 2)
        std::abort();
    return seconds;
}

double facetSeconds(const std::string& text)
{
    const p21::Records records = p21::scan(text, 1);
    const p21::EntityIndex index(records);
    std::size_t count = 0;
    const double seconds = secondsOf([&] { count = facets::readParts(records, index).parts.at(0).faces.size(); });
    if (count < 2)
        std::abort();
    return seconds;
}

void doubled(benchmark::State& state, double (*seconds)(const std::string&), const std::string& text,
             const std::string& twice)
{
    reportRatio(
        state, [&] { return seconds(text); }, [&] { return seconds(twice); });
}

constexpr std::size_t Count = 100'000;

BENCHMARK_CAPTURE(doubled, callouts, annotationSeconds, callouts(Count, Count), callouts(2 * Count, 2 * Count))
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(doubled, million, annotationSeconds, callouts(5 * Count, 5 * Count), callouts(10 * Count, 10 * Count))
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(doubled, views, annotationSeconds, callouts(Count, 20), callouts(2 * Count, 20))
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(doubled, facets, facetSeconds, faces(Count), faces(2 * Count))
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
