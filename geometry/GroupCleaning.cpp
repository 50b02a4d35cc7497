#include "geometry/GroupCleaning.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "scene/Attachments.h"
#include "scene/NodeWalk.h"
#include "scene/Tags.h"

namespace geometry
{

namespace
{

bool hasAttachments(const osg::AttachmentContainer& container)
{
    const osg::AttachmentMap* map = osg::AttachmentAccess::map(container);
    return map && !map->entries().empty();
}

/// A group of the very type that nothing hangs on.
bool saysNothing(const osg::NodePtr& node)
{
    const osg::NodeCorePtr core = node->getCore();
    return node->isActive() && core && core->getType().getId() == osg::Group::_type.getId() && !hasAttachments(*node) &&
           !hasAttachments(*core);
}

/// True for the types whose only use is what hangs below them.
bool isHolder(const osg::NodePtr& node)
{
    const osg::NodeCorePtr core = node->getCore();
    if (!core)
        return true;
    const osg::FieldContainerType& type = core->getType();
    return type.getId() == osg::Group::_type.getId() ||
           (osg::isKindOf(type, osg::Transform::_type) && !osg::isKindOf(type, osg::ExtReference::_type));
}

void putChildrenInPlaceOf(const osg::NodePtr& node, const osg::NodePtr& parent)
{
    const auto index = static_cast<unsigned>(parent->findChild(node));
    while (node->getNChildren() > 0)
        parent->insertChild(index, node->getChild(node->getNChildren() - 1));
    parent->subChild(node);
}

/// Within one edit, takes each child out for which `isSuperfluous` is true, its own children first in its place.
template <class Predicate>
void dissolveChildren(const osg::NodePtr& parent, Predicate isSuperfluous)
{
    std::vector<osg::NodePtr> dissolving;
    for (unsigned i = 0; i < parent->getNChildren(); ++i)
        if (isSuperfluous(parent->getChild(i)))
            dissolving.push_back(parent->getChild(i));
    if (dissolving.empty())
        return;
    osg::beginEditCP(parent, osg::Node::ChildrenFieldMask, 1);
    for (const osg::NodePtr& node : dissolving)
        putChildrenInPlaceOf(node, parent);
    osg::endEditCP(parent, osg::Node::ChildrenFieldMask, 1);
}

} // namespace

void cleanupGroupNodes(const osg::NodePtr& root)
{
    // Children first: what a group gives to its parent is clean already.
    const std::vector<osg::NodePtr> nodes = osg::parentsFirst(root);
    for (auto node = nodes.rbegin(); node != nodes.rend(); ++node)
        dissolveChildren(*node, saysNothing);
}

void removeEmptyGroups(const osg::NodePtr& root, bool keepNamed)
{
    const auto isEmpty = [&](const osg::NodePtr& node) {
        const char* name = osg::getName(node);
        return node->getNChildren() == 0 && node->isActive() && isHolder(node) && osg::tagsOf(node).empty() &&
               !(keepNamed && name && *name);
    };
    const std::vector<osg::NodePtr> nodes = osg::parentsFirst(root);
    for (auto node = nodes.rbegin(); node != nodes.rend(); ++node)
        dissolveChildren(*node, isEmpty);
}

} // namespace geometry
