#include "tools/ptxconvert/ReaderTable.h"

#include "ptx/readers/brep/BrepReader.h"
#include "ptx/readers/iges/IgesReader.h"
#include "ptx/readers/jt/JtReader.h"
#include "ptx/readers/step/StepReader.h"
#include "ptx/readers/stl/StlReader.h"

#include <array>

namespace ptx
{

Formats formats()
{
    static const std::array<Format, 5> rows = {step::format(), iges::format(), jt::format(), stl::format(),
                                               brep::format()};
    return rows;
}

} // namespace ptx
