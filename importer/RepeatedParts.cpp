#include "importer/RepeatedParts.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"

#include <map>
#include <vector>

namespace
{

constexpr unsigned loadedState = 2;

/// The places of one part file.
struct Places {
    osg::NodePtr filled;
    std::vector<osg::NodePtr> empty;
};

/// By the id of the core, so that the order is that of the document.
std::map<unsigned, Places> loadedPlaces(const osg::NodePtr& root)
{
    std::map<unsigned, Places> places;
    osg::traverse(root, [&](const osg::NodePtr& node) {
        const auto reference = osg::fcCast<osg::ExtReference>(node->getCore());
        if (!reference || reference->getState() != loadedState)
            return osg::Action::Continue;
        Places& part = places[reference->getContainerId()];
        if (node->getNChildren() == 0)
            part.empty.push_back(node);
        else if (!part.filled)
            part.filled = node;
        return osg::Action::Continue;
    });
    return places;
}

void copyContent(const osg::NodePtr& from, const osg::NodePtr& to)
{
    osg::beginEditCP(to, osg::Node::ChildrenFieldMask, 1);
    for (unsigned i = 0; i < from->getNChildren(); ++i)
        to->addChild(osg::cloneTree(from->getChild(i), true));
    osg::endEditCP(to, osg::Node::ChildrenFieldMask, 1);
}

} // namespace

void fillRepeatedParts(const osg::NodePtr& root)
{
    for (const auto& [core, part] : loadedPlaces(root))
        if (part.filled)
            for (const osg::NodePtr& node : part.empty)
                copyContent(part.filled, node);
}
