#pragma once

#include "files/glb/packing/PackedFile.h"

#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace files::glb::gathering
{

/// A linear colour with its opacity.
using Color = std::array<float, 4>;

/// Materials that differ in nothing but their name, their extras and their base colour are of one group: what has them
/// can be drawn with one material when its vertices have the colour.
class MaterialGroups
{
public:
    explicit MaterialGroups(const packing::Json& materials);

    /// The first material of the group of `material`.
    std::size_t group(std::size_t material) const { return m_groups[material]; }
    Color color(std::size_t material) const { return m_colors[material]; }
    /// The material of `materials` that draws vertices with the colours of this group; a new one when it is asked for
    /// first.
    std::size_t white(std::size_t group, packing::Json& materials);

private:
    std::vector<std::size_t> m_groups;
    std::vector<Color> m_colors;
    std::map<std::size_t, std::size_t> m_white;
};

} // namespace files::glb::gathering
