#include "importer/PartViews.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/SceneEdits.h"
#include "scene/Tags.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace importer
{

namespace
{

bool isBookmark(const osg::NodePtr& node)
{
    const std::vector<std::string>& tags = osg::tagsOf(node);
    return std::find(tags.begin(), tags.end(), "stylar::bookmark") != tags.end();
}

} // namespace

std::size_t dropPartViews(const osg::NodePtr& root)
{
    std::vector<std::pair<osg::NodePtr, osg::NodePtr>> views; // with what holds them
    osg::traverse(root, [&](const osg::NodePtr& node) {
        const osg::NodePtr parent = node->getParent();
        if (node != root && parent != root && isBookmark(node) && osg::fcCast<osg::ExtReference>(parent->getCore()))
            views.emplace_back(parent, node);
        return osg::Action::Continue;
    });
    for (const auto& [parent, view] : views)
        osg::subChild(parent, view);
    return views.size();
}

} // namespace importer
