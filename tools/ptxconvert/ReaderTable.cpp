#include "tools/ptxconvert/ReaderTable.h"

#include "ptx/readers/brep/BrepReader.h"
#include "ptx/readers/iges/IgesReader.h"
#include "ptx/readers/jt/JtReader.h"
#include "ptx/readers/step/StepReader.h"
#include "ptx/readers/stl/StlReader.h"

#include <array>

namespace ptxconvert
{

ptx::readers::Formats formats()
{
    static const std::array<ptx::readers::Format, 5> rows = {
        ptx::step::format(), ptx::iges::format(), ptx::jt::format(), ptx::stl::format(), ptx::brep::format()};
    return rows;
}

} // namespace ptxconvert
