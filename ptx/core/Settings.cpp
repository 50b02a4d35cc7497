#include "ptx/core/Settings.h"

#include "protocol/Options.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <thread>

namespace ptx::core
{

namespace
{

namespace setting = protocol::setting;

constexpr double Many = 1e9;

constexpr std::array<SettingRow, static_cast<std::size_t>(Setting::Count)> Rows = {{
    {setting::Threads, "", 0, 256, 0, "Threads that read, heal, mesh and decode parts; 0 takes one for each core."},
    {setting::TimeLimit, "s", 0, Many, 600,
     "Wall time of a conversion, without what limit.time-per-mb adds; 0 switches the limit off."},
    {setting::TimeLimitPerMegabyte, "s", 0, Many, 60, "Wall time that each megabyte of input adds to limit.time."},
    {setting::StallLimit, "s", 0, Many, 300,
     "Time without progress and without work of the processor; 0 switches the limit off."},
    {setting::WorkLimit, "s", 0, Many, 15,
     "Time that the processor works without progress, of formats whose files can keep the CAD kernel busy for ever "
     "(BREP), without what limit.work-per-mb adds; 0 switches the limit off."},
    {setting::WorkLimitPerMegabyte, "s", 0, Many, 30, "Work that each megabyte of input adds to limit.work."},
    {setting::MemoryLimit, "MB", 0, Many, 4096,
     "Resident memory, without what limit.memory-per-mb adds; 0 switches the limit off."},
    {setting::MemoryLimitPerMegabyte, "MB", 0, Many, 60, "Memory that each megabyte of input adds to limit.memory."},
    {setting::NodeLimit, "", 0, Many, 5e6, "Nodes of the scene; nested instances multiply. 0 switches the limit off."},
    {setting::Deviation, "mm", 0, 1e6, 0,
     "Largest distance between mesh and surface; 0 takes tessellation.relative-deviation instead."},
    {setting::RelativeDeviation, "", 1e-6, 1, 0.001,
     "Largest distance between mesh and surface, as a share of the diagonal of the part's bounding box."},
    {setting::Angle, "degree", 1, 90, 20, "Largest angle between normals of neighbouring triangles of a curved face."},
    {setting::MaxEdgeLength, "mm", 0, 1e9, 0, "Longest edge of a triangle; 0 sets no limit."},
    {setting::MostTriangles, "", 0, Many, 2e7,
     "Triangles of all distinct parts together; a file that needs more is meshed more coarsely. 0 sets no limit."},
    {setting::Heal, "0/1", 0, 1, 1, "Repair the surfaces of each part before they are meshed."},
    {setting::Stitch, "0/1", 0, 1, 1, "Join the loose faces of a part (IGES)."},
    {setting::StitchTolerance, "mm", 0, 1e6, 0,
     "Largest gap that is closed between loose faces; 0 takes stitch.relative-tolerance instead."},
    {setting::StitchRelativeTolerance, "", 1e-9, 0.1, 0.0002,
     "Largest gap that is closed between loose faces, as a share of the diagonal of the part's bounding box."},
    {setting::StitchTime, "s", 0, Many, 60,
     "Time for closing gaps; parts that are left when it is over stay loose. 0 sets no limit."},
    {setting::MeshUnit, "mm", 1e-6, 1e6, 1,
     "Length of one unit of formats that name none (STL): 25.4 for inches, 1000 for metres."},
    {setting::MeshLevel, "", 0, 9, 0,
     "Level of detail of formats that hold several (JT): 0 is the finest; a part with fewer levels takes its "
     "coarsest."},
    {setting::Pmi, "0/1", 0, 1, 1, "Read what is drawn beside parts: dimensions, tolerances, notes (STEP)."},
    {setting::AutomaticViews, "0/1", 0, 1, 0, "Keep the saved views that a program made by itself (STEP)."},
    {setting::SurfaceUv, "0/1", 0, 1, 0,
     "Give faces of exact surfaces texture coordinates: their own parameters by length, a picture for each metre."},
    {setting::KeepBrep, "0/1", 0, 1, 0,
     "Keep the exact surfaces of each part in the scene file, for a later mesh of them."},
    {setting::ExactMeasures, "0/1", 0, 1, 0,
     "Measure area and volume of each part by its exact surfaces, for parts lists."},
}};

std::string rangeText(const SettingRow& row, double value)
{
    return std::string(row.name) + " takes a number from " + numberText(row.low) + " to " + numberText(row.high) +
           ", not " + numberText(value);
}

const SettingRow* findRow(std::string_view name)
{
    for (const SettingRow& row : Rows)
        if (name == row.name)
            return &row;
    return nullptr;
}

} // namespace

std::span<const SettingRow> settingRows()
{
    return Rows;
}

Settings::Settings()
{
    for (std::size_t i = 0; i < Rows.size(); ++i)
        m_values[i] = Rows[i].standard;
}

std::optional<std::string> Settings::assign(std::string_view assignment)
{
    const auto equals = assignment.find('=');
    const std::string_view name = assignment.substr(0, equals);
    const SettingRow* row = findRow(name);
    if (!row)
        return "there is no setting named \"" + std::string(name) + "\"";
    const std::string_view text = equals == std::string_view::npos ? std::string_view() : assignment.substr(equals + 1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
        return std::string(name) + " takes a number, not \"" + std::string(text) + "\"";
    if (value < row->low || value > row->high)
        return rangeText(*row, value);
    m_values[static_cast<std::size_t>(row - Rows.data())] = value;
    return std::nullopt;
}

unsigned threadCount(const Settings& settings)
{
    const auto wanted = static_cast<unsigned>(settings.number(Setting::Threads));
    return wanted > 0 ? wanted : std::max(1u, std::thread::hardware_concurrency());
}

std::string settingsHelp()
{
    std::string text;
    for (const SettingRow& row : Rows) {
        const std::string unit = *row.unit ? std::string(" ") + row.unit : std::string();
        text += std::string(row.name) + "=" + numberText(row.standard) + unit + "  (" + numberText(row.low) + " to " +
                numberText(row.high) + ")\n    " + row.help + "\n";
    }
    return text;
}

std::string oneDecimal(double value)
{
    char text[400]; // the largest number has 309 digits before the point
    const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, 1).ptr;
    return {text, end};
}

std::string numberText(double value)
{
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, value).ptr;
    return {text, end};
}

} // namespace ptx::core
