#pragma once

#include "host/OSGSystem/Math.h"

#include <array>
#include <map>
#include <vector>

namespace ptx::model
{

/// How a surface looks: a display colour (sRGB) whose alpha is its coverage.
using Appearance = osg::Color4f;

/// Stands for an appearance that nothing in the file gives.
inline constexpr int NoAppearance = -1;

/// The appearances of one model, each held once.
class AppearanceTable
{
public:
    /// The number of `appearance`, which is added if it is new.
    int indexOf(const Appearance& appearance)
    {
        const std::array<float, 4> key = {appearance.red, appearance.green, appearance.blue, appearance.alpha};
        const auto [entry, isNew] = m_numbers.try_emplace(key, size());
        if (isNew)
            m_appearances.push_back(appearance);
        return entry->second;
    }

    const Appearance& operator[](int index) const { return m_appearances[static_cast<std::size_t>(index)]; }
    int size() const { return static_cast<int>(m_appearances.size()); }

private:
    std::vector<Appearance> m_appearances;
    std::map<std::array<float, 4>, int> m_numbers;
};

} // namespace ptx::model
