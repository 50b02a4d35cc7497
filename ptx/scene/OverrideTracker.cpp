#include "ptx/scene/OverrideTracker.h"

#include <algorithm>

namespace ptx
{

OverrideTracker::OverrideTracker(const std::vector<PathOverride>& overrides)
{
    for (const PathOverride& override : overrides)
        if (!override.path.empty())
            m_byLastStep[override.path.back()].push_back(&override);
}

int OverrideTracker::enter(std::size_t product, std::size_t child)
{
    m_path.emplace_back(product, child);
    const auto candidates = m_byLastStep.find(m_path.back());
    if (candidates == m_byLastStep.end())
        return NoAppearance;
    const PathOverride* longest = nullptr;
    for (const PathOverride* override : candidates->second)
        if (endsHere(*override) && (!longest || override->path.size() > longest->path.size()))
            longest = override;
    return longest ? longest->appearance : NoAppearance;
}

void OverrideTracker::leave()
{
    if (!m_path.empty())
        m_path.pop_back();
}

bool OverrideTracker::endsHere(const PathOverride& override) const
{
    return override.path.size() <= m_path.size() &&
           std::equal(override.path.rbegin(), override.path.rend(), m_path.rbegin());
}

} // namespace ptx
