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

std::string reference(int entity)
{
    return "#" + std::to_string(entity);
}

std::string boltText()
{
    ptxtest::StepText step;
    ptxtest::StepProduct bolt = step.product("bolt");
    step.box(bolt, {0, 0, 0}, {1, 2, 3});
    const int layer = step.add("PRESENTATION_LAYER_ASSIGNMENT('screws','',(" + reference(bolt.solid) + "))");
    step.add("INVISIBILITY((" + reference(layer) + "))");
    return step.text();
}

/// A product of `step` that stands for the content of the file `name`.
ptxtest::StepProduct productIn(ptxtest::StepText& step, const std::string& name)
{
    const ptxtest::StepProduct product = step.product("content of " + name);
    step.keepIn(product, name);
    return product;
}

std::string lampText()
{
    ptxtest::StepText step;
    ptxtest::StepProduct lamp = step.product("lamp");
    step.box(lamp, {0, 0, 0}, {4, 5, 6});
    return step.text();
}

std::string wheelText()
{
    ptxtest::StepText step;
    const ptxtest::StepProduct wheel = step.product("wheel");
    ptxtest::StepProduct rim = step.product("rim");
    step.box(rim, {0, 0, 0}, {20, 30, 40});
    const ptxtest::StepProduct bolt = productIn(step, "bolt.stp");
    step.place(wheel, bolt, "first bolt", {0, 0, 0});
    step.place(wheel, rim, "rim place", {5, 0, 0});
    step.place(wheel, bolt, "second bolt", {0, 7, 0});
    return step.text();
}

std::string carText()
{
    ptxtest::StepText step;
    const ptxtest::StepProduct car = step.product("car");
    const ptxtest::StepProduct axle = step.product("axle");
    const ptxtest::StepProduct wheel = productIn(step, "wheel.stp");
    const ptxtest::StepProduct lamp = productIn(step, "lamp.stp");
    step.place(axle, wheel, "left", {0, 0, 0});
    step.place(axle, wheel, "right", {0, 100, 0});
    step.place(car, axle, "front", {0, 0, 0});
    step.place(car, axle, "rear", {300, 0, 0});
    step.place(car, lamp, "front lamp", {0, 0, 0});
    step.place(car, wheel, "spare", {0, 0, 0});
    return step.text();
}

} // namespace

std::string CarPlan::write(const std::string& folder)
{
    const bool isWritten = writeText(folder + "/bolt.stp", boltText()) && writeText(folder + "/lamp.stp", lampText()) &&
                           writeText(folder + "/wheel.stp", wheelText()) && writeText(folder + "/car.stp", carText());
    return isWritten ? folder + "/car.stp" : std::string();
}

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
