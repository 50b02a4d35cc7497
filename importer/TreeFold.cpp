#include "importer/TreeFold.h"

#include "importer/KnownNodes.h"
#include "scene/EditScope.h"
#include "scene/NodeAccess.h"
#include "scene/Wrappers.h"

#include <new>
#include <unordered_set>

namespace importer
{

std::size_t foldTree(zn::StandaloneSession& session, const osg::NodePtr& root)
{
    std::size_t count = 0;
    try {
        const std::unordered_set<const osg::Node*> known = knownNodes(session);
        const osg::Wrappers wrappers(root);
        for (const osg::NodePtr& node : wrappers.nodes()) {
            if (node->getRefCount() > 1 || known.contains(node.get()))
                continue;
            const osg::EditScope edit(node->getParent(), osg::Node::ChildrenFieldMask);
            osg::NodeAccess::replaceByChildren(node);
            ++count;
        }
    } catch (const std::bad_alloc&) {
        return count;
    }
    return count;
}

} // namespace importer
