#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace ptx::core
{

/// Everything that can be told to a conversion. The table in Settings.cpp gives name, unit, range, default and help.
enum class Setting : int {
    Threads,
    TimeLimit,
    TimeLimitPerMegabyte,
    StallLimit,
    WorkLimit,
    WorkLimitPerMegabyte,
    MemoryLimit,
    MemoryLimitPerMegabyte,
    NodeLimit,
    Deviation,
    RelativeDeviation,
    Angle,
    MaxEdgeLength,
    MostTriangles,
    Heal,
    Stitch,
    StitchTolerance,
    StitchRelativeTolerance,
    StitchTime,
    MeshUnit,
    MeshLevel,
    Pmi,
    AutomaticViews,
    SurfaceUv,
    KeepBrep,
    ExactMeasures,
    Count
};

struct SettingRow {
    const char* name;
    const char* unit; ///< empty for a plain number, "0/1" for a switch
    double low;
    double high;
    double standard;
    const char* help;
};

/// One row for each setting, in the order of the enumeration.
std::span<const SettingRow> settingRows();

/// The values of one conversion. All are numbers; a switch is 0 or 1.
class Settings
{
public:
    Settings();

    double number(Setting setting) const { return m_values[static_cast<std::size_t>(setting)]; }
    bool isOn(Setting setting) const { return number(setting) != 0; }
    /// Takes "name=value", the number in the C locale. @return what is wrong with it, nothing when it was taken
    std::optional<std::string> assign(std::string_view assignment);

private:
    std::array<double, static_cast<std::size_t>(Setting::Count)> m_values{};
};

/// How many threads a conversion with `settings` works on: one for each core where they leave it open.
unsigned threadCount(const Settings& settings);

/// The text of --help-settings: one block for each setting.
std::string settingsHelp();

/// `value` as --set takes it, without trailing zeros.
std::string numberText(double value);

/// With one digit behind the point, in every locale.
std::string oneDecimal(double value);

} // namespace ptx::core
