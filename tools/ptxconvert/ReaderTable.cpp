#include "tools/ptxconvert/ReaderTable.h"

#include "tools/ptxconvert/readers/brep/BrepReader.h"
#include "tools/ptxconvert/readers/iges/IgesReader.h"
#include "tools/ptxconvert/readers/jt/JtReader.h"
#include "tools/ptxconvert/readers/step/StepReader.h"
#include "tools/ptxconvert/readers/stl/StlReader.h"

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
