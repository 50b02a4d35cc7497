#include "standalone/znOpenSGUtils/NodeTags.h"

#include "host/OSGSystem/TreeFunctions.h"
#include "scene/Tags.h"

#include <algorithm>
#include <utility>

namespace zn::nodes
{

namespace
{

bool isAmong(const std::string& tag, const std::vector<std::string>& tags)
{
    return std::find(tags.begin(), tags.end(), tag) != tags.end();
}

} // namespace

bool hasTag(const osg::NodePtr& node, const std::string& tag)
{
    return isAmong(tag, osg::tagsOf(node));
}

void removeTags(const osg::NodePtr& node, const std::vector<std::string>& unwanted)
{
    std::vector<std::string> tags = osg::tagsOf(node);
    if (std::erase_if(tags, [&unwanted](const std::string& tag) { return isAmong(tag, unwanted); }) != 0)
        osg::setTags(node, std::move(tags));
}

void appendNodesWithTag(const osg::NodePtr& root, const std::string& tag, std::vector<znNodePtr>& nodes)
{
    osg::traverse(root, [&](const osg::NodePtr& node) {
        if (hasTag(node, tag))
            nodes.emplace_back(node);
        return osg::Action::Continue;
    });
}

} // namespace zn::nodes
