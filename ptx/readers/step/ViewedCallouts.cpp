#include "ptx/readers/step/ViewedCallouts.h"

#include "ptx/core/Log.h"

#include <algorithm>
#include <set>

namespace ptx::step
{

namespace
{

using Numbers = std::vector<std::size_t>;
using ByDrawing = std::unordered_map<std::uint32_t, Numbers>;

ByDrawing byDrawing(std::span<const SavedView> views)
{
    ByDrawing numbers;
    for (std::size_t i = 0; i < views.size(); ++i)
        for (const std::uint32_t drawing : views[i].drawings)
            if (Numbers& known = numbers[drawing]; known.empty() || known.back() != i)
                known.push_back(i);
    return numbers;
}

} // namespace

ViewedCallouts::ViewedCallouts(std::span<const SavedView> views, std::size_t callouts, core::Log& log)
{
    constexpr std::size_t MostPairs = 2'000'000;
    if (views.empty() || callouts <= MostPairs / views.size())
        m_views = byDrawing(views);
    else
        log.warning("the saved views show no annotations: " + std::to_string(views.size()) + " views of " +
                    std::to_string(callouts) + " callouts are too many");
}

std::vector<std::size_t> ViewedCallouts::viewsOf(const annotations::Callout& callout) const
{
    std::set<std::size_t> found;
    for (const std::uint32_t model : callout.models)
        if (const auto entry = m_views.find(model); entry != m_views.end())
            found.insert(entry->second.begin(), entry->second.end());
    return {found.begin(), found.end()};
}

void findDefaultView(std::vector<SavedView>& views, const ViewedCallouts& viewed, const annotations::Drawing& drawing)
{
    const auto isHidden = [](const annotations::Callout& callout) { return callout.isHidden; };
    if (std::any_of(views.begin(), views.end(), [](const SavedView& view) { return view.isDefault; }) ||
        std::none_of(drawing.callouts.begin(), drawing.callouts.end(), isHidden))
        return;
    std::set<std::size_t> candidates;
    std::set<std::size_t> others;
    for (const annotations::Callout& callout : drawing.callouts)
        for (const std::size_t view : viewed.viewsOf(callout))
            (callout.isHidden ? others : candidates).insert(view);
    std::erase_if(candidates, [&others](std::size_t view) { return others.contains(view); });
    if (candidates.size() == 1)
        views[*candidates.begin()].isDefault = true;
}

} // namespace ptx::step
