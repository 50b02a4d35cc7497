// Tags of nodes.

#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGUtils/znNodeUtils.h"
#include "standalone/OSGSystem/Tags.h"
#include "standalone/znUtils/CallTrace.h"

#include <algorithm>

namespace
{

bool isAmong(const std::string& tag, const std::vector<std::string>& tags)
{
    return std::find(tags.begin(), tags.end(), tag) != tags.end();
}

void remove(const osg::NodePtr& node, const std::vector<std::string>& unwanted)
{
    std::vector<std::string> tags = osg::tagsOf(node);
    if (std::erase_if(tags, [&unwanted](const std::string& tag) { return isAmong(tag, unwanted); }) != 0)
        osg::setTags(node, std::move(tags));
}

} // namespace

std::vector<std::string> znNodeUtils::getTags(const osg::NodePtr& node)
{
    const zn::TracedCall call("znNodeUtils::getTags", node);
    return osg::tagsOf(node);
}

bool znNodeUtils::hasTag(const osg::NodePtr& node, const std::string& tag)
{
    const zn::TracedCall call("znNodeUtils::hasTag", node, tag);
    return isAmong(tag, osg::tagsOf(node));
}

void znNodeUtils::removeTag(const osg::NodePtr& node, const std::string& tag)
{
    const zn::TracedCall call("znNodeUtils::removeTag", node, tag);
    remove(node, {tag});
}

void znNodeUtils::removeTags(const osg::NodePtr& node, const std::vector<std::string>& tags)
{
    const zn::TracedCall call("znNodeUtils::removeTags", node, tags);
    remove(node, tags);
}

void znNodeUtils::getNodesWithTag(const osg::NodePtr& root, const std::string& tag, std::vector<znNodePtr>& nodes)
{
    const zn::TracedCall call("znNodeUtils::getNodesWithTag", root, tag);
    osg::traverse(root, [&](const osg::NodePtr& node) {
        if (isAmong(tag, osg::tagsOf(node)))
            nodes.emplace_back(node);
        return osg::Action::Continue;
    });
}
