#include "tools/ptxconvert/readers/Reader.h"
#include "tools/ptxconvert/readers/step/StepReader.h"

#include <array>

namespace ptx
{

std::span<const Format> formats()
{
    static const std::array<Format, 1> rows = {step::format()};
    return rows;
}

} // namespace ptx
