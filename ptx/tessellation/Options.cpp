#include "ptx/tessellation/Options.h"

#include "protocol/FileNames.h"
#include "protocol/Options.h"

#include <charconv>
#include <cmath>

namespace ptx::tessellation
{

namespace
{

namespace option = protocol::tessellationoption;
namespace partmark = protocol::partmark;

struct NumberOption {
    const char* name;
    double TessellationOptions::*value;
    bool mayBeZero;
};

constexpr NumberOption NumberOptions[] = {
    {option::Deviation, &TessellationOptions::deviation, false},
    {option::Angle, &TessellationOptions::angle, false},
    {option::MaxEdgeLength, &TessellationOptions::longestEdge, true},
    {option::Stitch, &TessellationOptions::stitchTolerance, true},
};

core::Failure wrongUse(const std::string& text)
{
    return {core::ExitCode::WrongUse, text};
}

/// @return what is wrong with `text` as the value of the option
core::Trouble assign(TessellationOptions& options, const NumberOption& row, const std::string& text)
{
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isNumber = error == std::errc() && end == text.data() + text.size() && std::isfinite(value);
    if (!isNumber || value < 0 || (value == 0 && !row.mayBeZero))
        return wrongUse(std::string(row.name) + " takes a positive number, not \"" + text + "\"");
    options.*row.value = value;
    return std::nullopt;
}

/// Takes the option `name` with its value `text`. @return what is wrong with it
core::Trouble take(TessellationOptions& options, const std::string& name, const std::string& text)
{
    for (const NumberOption& row : NumberOptions)
        if (name == row.name)
            return assign(options, row, text);
    if (name == protocol::option::Sandbox) {
        const auto sandbox = core::sandboxOf(text);
        options.sandbox = sandbox.value_or(core::Sandbox::On);
        return sandbox ? core::Trouble() : wrongUse(name + " takes on, off or require, not \"" + text + "\"");
    }
    if (name != protocol::option::Set)
        return wrongUse("there is no option " + name);
    if (const auto wrong = options.settings.assign(text))
        return wrongUse(*wrong);
    return std::nullopt;
}

} // namespace

std::string tessellationUsage()
{
    return "Usage: ptxtessellate [--deviation MM] [--angle DEGREES] [--max-edge-length MM] [--stitch MM]\n"
           "                     [--sandbox on|off|require] [--set NAME=VALUE]... INPUT OUTPUT\n"
           "Meshes the exact surfaces of all geometries of a scene file. OUTPUT gets one child for each geometry, in\n"
           "the order of the first uses, with its mesh or with the reason why there is none as its name.\n"
           "OUTPUT" +
           std::string(protocol::PartMarksSuffix) + " tells how far each of them came: '" + partmark::Waits +
           "' waits, '" + partmark::Started + "' has started, '" + partmark::Ended + "' has ended.\n";
}

core::Outcome<TessellationOptions> parseTessellationOptions(const std::vector<std::string>& arguments)
{
    TessellationOptions options;
    std::vector<std::string> files;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i].compare(0, 2, "--") != 0) {
            files.push_back(arguments[i]);
            continue;
        }
        if (i + 1 == arguments.size())
            return wrongUse(arguments[i] + " needs a value");
        if (const core::Trouble trouble = take(options, arguments[i], arguments[i + 1]))
            return *trouble;
        ++i;
    }
    if (files.size() != 2)
        return wrongUse("an input and an output are needed");
    options.input = files[0];
    options.output = files[1];
    return options;
}

} // namespace ptx::tessellation
