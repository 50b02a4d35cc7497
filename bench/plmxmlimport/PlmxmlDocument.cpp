#include "bench/plmxmlimport/PlmxmlDocument.h"

#include "tests/support/StepText.h"

#include <fstream>

namespace
{

bool writeText(const std::string& path, const std::string& text)
{
    std::ofstream file(path, std::ios::binary);
    return static_cast<bool>(file << text << std::flush);
}

std::string partText(int boxes)
{
    ptxtest::StepText step;
    ptxtest::StepProduct product = step.product("part");
    for (int i = 0; i < boxes; ++i) {
        const double x = 4 * (i % 50);
        const double y = 4 * (i / 50);
        step.box(product, {x, y, 0}, {x + 3, y + 3, 3});
    }
    return step.text();
}

std::string partName(int part)
{
    return "part-" + std::to_string(part) + ".stp";
}

std::string documentText(const PlmxmlDocument& document)
{
    std::string roots, instances, parts;
    for (int i = 0; i < document.instances; ++i) {
        const std::string n = std::to_string(i);
        roots += " i" + n;
        instances += "<Instance id='i" + n + "' name='I" + n + "' partRef='#p" + std::to_string(i % document.parts) +
                     "'><Transform type='translate'>" + std::to_string(i % 100) + " " + std::to_string(i / 100) +
                     " 0</Transform></Instance>\n";
    }
    for (int i = 0; i < document.parts; ++i) {
        const std::string n = std::to_string(i);
        parts += "<Part id='p" + n + "' name='P" + n + "' type='solid'><Representation id='r" + n +
                 "' format='STEP' location='" + partName(i) + "'/></Part>\n";
    }
    return "<PLMXML><ProductDef id='pd'><InstanceGraph rootRefs='" + roots.substr(1) + "'>\n" + instances +
           "</InstanceGraph>\n" + parts + "</ProductDef></PLMXML>\n";
}

} // namespace

std::string PlmxmlDocument::write(const std::string& folder) const
{
    const std::string part = partText(boxesOfPart);
    for (int i = 0; i < parts; ++i)
        if (!writeText(folder + "/" + partName(i), part))
            return {};
    const std::string file = folder + "/assembly.plmxml";
    return writeText(file, documentText(*this)) ? file : std::string();
}
