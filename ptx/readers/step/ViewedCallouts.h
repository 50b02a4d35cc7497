#pragma once

#include "ptx/readers/step/SavedViews.h"
#include "ptx/readers/step/annotations/Drawing.h"

#include <cstddef>
#include <span>
#include <unordered_map>
#include <vector>

namespace ptx::core
{
class Log;
} // namespace ptx::core

namespace ptx::step
{

/// Which saved views show a callout: those one of whose draughting models lists it.
class ViewedCallouts
{
public:
    /// For `callouts` callouts. Where these and `views` are so many that what each view does to each callout would be
    /// too much to tell, no view shows any, and `log` says so.
    ViewedCallouts(std::span<const SavedView> views, std::size_t callouts, core::Log& log);

    /// The numbers of the views that show `callout`, rising.
    std::vector<std::size_t> viewsOf(const annotations::Callout& callout) const;

private:
    std::unordered_map<std::uint32_t, std::vector<std::size_t>> m_views; ///< by the number of the draughting model
};

/// Makes one of `views`, whose callouts `viewed` knows, the default where none is and the text tells by what was hidden
/// when it was written: the only view that has callouts, and none of these.
void findDefaultView(std::vector<SavedView>& views, const ViewedCallouts& viewed, const annotations::Drawing& drawing);

} // namespace ptx::step
