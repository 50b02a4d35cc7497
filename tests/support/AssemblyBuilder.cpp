#include "tests/support/AssemblyBuilder.h"

#include "tests/support/StepText.h"

#include <cstdio>
#include <fstream>
#include <vector>

namespace
{

bool writeText(const std::string& path, const std::string& text)
{
    std::ofstream file(path, std::ios::binary);
    return static_cast<bool>(file << text << std::flush);
}

std::string partText(int part)
{
    ptxtest::StepText step;
    ptxtest::StepProduct box = step.product("box " + std::to_string(part));
    const AssemblyPlan::Place size = AssemblyPlan::size(part);
    step.box(box, {0, 0, 0}, {size.x, size.y, size.z});
    return step.text();
}

std::string assemblyText(const AssemblyPlan& plan)
{
    ptxtest::StepText step;
    const ptxtest::StepProduct top = step.product("assembly");
    std::vector<ptxtest::StepProduct> parts;
    for (int part = 0; part < plan.parts; ++part) {
        parts.push_back(step.product("part " + std::to_string(part)));
        step.keepIn(parts.back(), AssemblyPlan::partName(part));
    }
    for (int i = 0; i < plan.references; ++i) {
        const AssemblyPlan::Place place = AssemblyPlan::place(i);
        step.place(top, parts[static_cast<std::size_t>(i % plan.parts)], "place " + std::to_string(i),
                   {place.x, place.y, place.z});
    }
    return step.text();
}

} // namespace

std::string AssemblyPlan::partName(int part)
{
    char name[32];
    std::snprintf(name, sizeof name, "part-%04d.stp", part);
    return name;
}

std::string AssemblyPlan::write(const std::string& folder) const
{
    for (int part = 0; part < parts; ++part)
        if (!writeText(folder + "/" + partName(part), partText(part)))
            return {};
    const std::string file = folder + "/assembly.stp";
    return writeText(file, assemblyText(*this)) ? file : std::string();
}
