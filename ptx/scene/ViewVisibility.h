#pragma once

#include "host/OSGSystem/Node.h"
#include "ptx/model/View.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace ptx::scene
{

/// What the views of a model do to nodes that some of them show and others hide.
class ViewVisibility
{
public:
    /// Numbers of views, rising.
    using Views = std::vector<std::size_t>;

    /// `views` outlive this object.
    explicit ViewVisibility(std::span<const model::View> views);

    /// Makes `node` visible in the views `shown` and not in the others, and active as in the view that is shown from
    /// the start, otherwise as `isShownAtFirst` says. A host switches it by its tags when it applies a view.
    void addTo(const osg::NodePtr& node, const Views& shown, bool isShownAtFirst);

    /// Of the nodes so far.
    std::size_t tags() const { return m_tags; }

private:
    std::span<const model::View> m_views;
    std::optional<std::size_t> m_opening;
    std::size_t m_tags = 0;
};

} // namespace ptx::scene
