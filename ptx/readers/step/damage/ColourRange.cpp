#include "ptx/readers/step/damage/ColourRange.h"

#include <StepData_StepModel.hxx>
#include <StepVisual_ColourRgb.hxx>

namespace ptx::step::damage
{

namespace
{

// What is no number is 0.
double limited(double value)
{
    return value > 0 ? (value < 1 ? value : 1) : 0;
}

} // namespace

std::size_t limitColours(const StepData_StepModel& model)
{
    std::size_t count = 0;
    for (int number = 1; number <= model.NbEntities(); ++number) {
        const auto colour = Handle(StepVisual_ColourRgb)::DownCast(model.Value(number));
        if (colour.IsNull())
            continue;
        const double red = limited(colour->Red());
        const double green = limited(colour->Green());
        const double blue = limited(colour->Blue());
        count += red != colour->Red() || green != colour->Green() || blue != colour->Blue() ? 1 : 0;
        colour->SetRed(red);
        colour->SetGreen(green);
        colour->SetBlue(blue);
    }
    return count;
}

} // namespace ptx::step::damage
