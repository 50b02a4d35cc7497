#include "tests/ptx/readers/step/annotations/DrawnText.h"

#include "ptx/readers/step/annotations/Annotations.h"
#include "ptx/readers/step/p21/Scan.h"

namespace ptxtest
{

using namespace ptx::step;

annotations::Drawing drawn(std::string_view file)
{
    const p21::Records records = p21::scan(file, 2);
    return annotations::readAnnotations(records, p21::EntityIndex(records));
}

annotations::Drawing drawnOf(const std::string& data)
{
    return drawn("ISO-10303-21;\nHEADER;FILE_NAME('a');ENDSEC;\nDATA;\n" + data + "\nENDSEC;\nEND-ISO-10303-21;\n");
}

} // namespace ptxtest
