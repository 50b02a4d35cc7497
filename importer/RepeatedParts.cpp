#include "importer/RepeatedParts.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"

#include <algorithm>
#include <functional>
#include <map>
#include <vector>

namespace importer
{

namespace
{

constexpr unsigned loadedState = 2;

/// The places of one part file.
struct Places {
    osg::NodePtr filled;
    std::vector<osg::NodePtr> empty;
};

/// By the id of the core, latest first: what lies within a document was made after the reference to it, and has to be
/// whole before the document is copied.
std::map<unsigned, Places, std::greater<>> loadedPlaces(const osg::NodePtr& root)
{
    std::map<unsigned, Places, std::greater<>> places;
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

std::size_t countNodes(const osg::NodePtr& root)
{
    std::size_t count = 0;
    osg::traverse(root, [&count](const osg::NodePtr&) {
        ++count;
        return osg::Action::Continue;
    });
    return count;
}

void copyContent(const osg::NodePtr& from, const osg::NodePtr& to)
{
    osg::beginEditCP(to, osg::Node::ChildrenFieldMask, 1);
    for (unsigned i = 0; i < from->getNChildren(); ++i)
        to->addChild(osg::cloneTree(from->getChild(i), true));
    osg::endEditCP(to, osg::Node::ChildrenFieldMask, 1);
}

} // namespace

std::size_t fillRepeatedParts(const osg::NodePtr& root, std::size_t& nodesLeft)
{
    std::size_t emptyPlaces = 0;
    for (const auto& [core, part] : loadedPlaces(root)) {
        const std::size_t size = part.filled && !part.empty.empty() ? countNodes(part.filled) : 0;
        for (const osg::NodePtr& node : part.empty) {
            if (size > nodesLeft)
                ++emptyPlaces;
            else if (part.filled)
                copyContent(part.filled, node);
            nodesLeft -= std::min(size, nodesLeft);
        }
    }
    return emptyPlaces;
}

} // namespace importer
