#pragma once

#include <array>
#include <string_view>

namespace geometry
{

/// How finely surfaces become meshes.
struct TessellationPreset {
    std::string_view name;
    double chordDeviation;  ///< mm
    double normalTolerance; ///< degrees
    double maxChordLength;  ///< mm; 0 for any
};

/// The choices of the setting `tessellation.preset` besides "custom".
inline constexpr std::array<TessellationPreset, 3> tessellationPresets = {{
    {"coarse", 0.5, 30, 0},
    {"medium", 0.1, 15, 0},
    {"fine", 0.02, 7.5, 0},
}};

/// Null when no preset has this name.
constexpr const TessellationPreset* findTessellationPreset(std::string_view name)
{
    for (const TessellationPreset& preset : tessellationPresets)
        if (preset.name == name)
            return &preset;
    return nullptr;
}

} // namespace geometry
