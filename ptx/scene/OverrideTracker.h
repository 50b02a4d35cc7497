#pragma once

#include "ptx/model/Model.h"

#include <map>
#include <vector>

namespace ptx::scene
{

/// Follows a walk through the tree of occurrences and says where the path of an override ends.
class OverrideTracker
{
public:
    explicit OverrideTracker(const std::vector<model::PathOverride>& overrides);

    /// The walk goes down from `product` into its child of this number.
    /// @return the appearance of the override that ends here, `NoAppearance` if none does
    int enter(std::size_t product, std::size_t child);
    /// The walk goes up again. A call for the root, which was never entered, is ignored.
    void leave();

private:
    using Step = std::pair<std::size_t, std::size_t>;

    bool endsHere(const model::PathOverride& override) const;

    std::map<Step, std::vector<const model::PathOverride*>> m_byLastStep;
    std::vector<Step> m_path;
};

} // namespace ptx::scene
