#include "importer/PartViews.h"

#include "files/scenefile/ConvertedTree.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/EditScope.h"
#include "scene/SceneEdits.h"
#include "scene/Tags.h"

#include <algorithm>
#include <string>
#include <unordered_set>
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

void setActive(const osg::NodePtr& node, bool isActive)
{
    const osg::EditScope edit(node, osg::Node::ActiveFieldMask);
    node->setActive(isActive);
}

bool isOfView(const std::string& tag)
{
    return tag == "stylar::bookmark_visibilities" || tag.find("bookmark[") != std::string::npos;
}

/// Takes away what views do to `node`, which stands as it does without any.
void forgetViews(const osg::NodePtr& node)
{
    std::vector<std::string> tags = osg::tagsOf(node);
    if (std::erase_if(tags, isOfView) == 0)
        return;
    setActive(node, std::find(tags.begin(), tags.end(), osg::scenefile::converted::PmiTag) == tags.end());
    osg::setTags(node, std::move(tags));
}

/// A part in a part is below the other one too, and walked once.
void forgetViewsBelow(const osg::NodePtr& part, std::unordered_set<const osg::Node*>& known)
{
    std::vector<osg::NodePtr> open = {part};
    while (!open.empty()) {
        const osg::NodePtr node = open.back();
        open.pop_back();
        if (!known.insert(node.get()).second)
            continue;
        forgetViews(node);
        for (unsigned i = 0; i < node->getNChildren(); ++i)
            open.push_back(node->getChild(i));
    }
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
    std::unordered_set<const osg::Node*> known;
    for (const auto& [parent, view] : views) {
        osg::subChild(parent, view);
        forgetViewsBelow(parent, known);
    }
    return views.size();
}

} // namespace importer
