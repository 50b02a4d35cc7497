#include "ptx/scene/OverrideTracker.h"

#include <algorithm>

namespace ptx::scene
{

OverrideTracker::OverrideTracker(const std::vector<model::PathOverride>& overrides)
{
    for (const model::PathOverride& override : overrides)
        if (!override.path.empty())
            m_byLastStep[override.path.back()].push_back(&override);
}

int OverrideTracker::enter(std::size_t product, std::size_t child)
{
    m_path.emplace_back(product, child);
    const auto candidates = m_byLastStep.find(m_path.back());
    if (candidates == m_byLastStep.end())
        return model::NoAppearance;
    const model::PathOverride* longest = nullptr;
    for (const model::PathOverride* override : candidates->second)
        if (endsHere(*override) && (!longest || override->path.size() > longest->path.size()))
            longest = override;
    return longest ? longest->appearance : model::NoAppearance;
}

void OverrideTracker::leave()
{
    if (!m_path.empty())
        m_path.pop_back();
}

bool OverrideTracker::endsHere(const model::PathOverride& override) const
{
    return override.path.size() <= m_path.size() &&
           std::equal(override.path.rbegin(), override.path.rend(), m_path.rbegin());
}

} // namespace ptx::scene
