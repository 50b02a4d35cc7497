#include "ptx/scene/ViewVisibility.h"

#include "scene/EditScope.h"
#include "scene/Tags.h"

#include <algorithm>

namespace ptx::scene
{

ViewVisibility::ViewVisibility(std::span<const model::View> views) : m_views(views)
{
    const auto found =
        std::find_if(views.begin(), views.end(), [](const model::View& view) { return view.isAtOpening; });
    if (found != views.end())
        m_opening = static_cast<std::size_t>(found - views.begin());
}

// A view that says nothing of a node would leave it as the view before did.
void ViewVisibility::addTo(const osg::NodePtr& node, const Views& shown, bool isShownAtFirst)
{
    std::vector<std::string> tags = osg::tagsOf(node);
    tags.emplace_back("stylar::bookmark_visibilities");
    auto next = shown.begin();
    bool isActive = isShownAtFirst;
    for (std::size_t i = 0; i < m_views.size(); ++i) {
        const bool isShown = next != shown.end() && *next == i;
        if (isShown)
            ++next;
        if (m_opening == i)
            isActive = isShown;
        tags.push_back("bookmark[" + m_views[i].name + (isShown ? "]:visible" : "]:hidden"));
    }
    m_tags += tags.size();
    osg::setTags(node, std::move(tags));
    const osg::EditScope edit(node, osg::Node::ActiveFieldMask);
    node->setActive(isActive);
}

} // namespace ptx::scene
