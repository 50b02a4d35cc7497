#include "importer/DocumentMaterials.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "importer/DocumentWalk.h"
#include "scene/SceneEdits.h"

#include <exception>
#include <vector>

namespace importer
{

namespace
{

/// The material in force at a place.
struct Force {
    osg::NodePtr group; ///< null for none
    bool isOverride = false;
};

Force within(const Force& above, const DocumentPlace& place)
{
    const bool isStronger = place.material && (place.isOverride || !above.isOverride);
    return isStronger ? Force{place.material, place.isOverride} : above;
}

bool hasContent(const osg::NodePtr& node)
{
    return node->getNChildren() > 0 && osg::fcCast<osg::ExtReference>(node->getCore());
}

/// The references to the part's files that are read: below its first children, and behind those of its instances.
std::vector<osg::NodePtr> contentsOf(const DocumentPlace& place)
{
    std::vector<osg::NodePtr> contents;
    std::vector<osg::NodePtr> pending;
    for (unsigned i = 0; i < place.ownChildren; ++i)
        pending.push_back(place.node->getChild(i));
    if (const unsigned count = place.node->getNChildren(); count > place.ownChildren)
        if (const osg::NodePtr last = place.node->getChild(count - 1); hasContent(last))
            contents.push_back(last);
    while (!pending.empty()) {
        const osg::NodePtr node = pending.back();
        pending.pop_back();
        if (hasContent(node)) {
            contents.push_back(node);
            continue;
        }
        for (unsigned i = 0; i < node->getNChildren(); ++i)
            pending.push_back(node->getChild(i));
    }
    return contents;
}

/// A group shares its core with the one that the loader made.
void putBelow(const osg::NodePtr& content, const osg::NodePtr& group)
{
    const osg::NodePtr node = osg::makeNodeFor(group->getCore());
    if (const char* name = osg::getName(group))
        osg::setName(node, name);
    std::vector<osg::NodePtr> children;
    for (unsigned i = 0; i < content->getNChildren(); ++i)
        children.push_back(content->getChild(i));
    osg::addChild(content, node);
    for (const osg::NodePtr& child : children)
        osg::addChild(node, child);
}

} // namespace

std::size_t applyDocumentMaterials(const QString& file, const osg::NodePtr& root)
{
    HB::XML::CAD::CADDocument document;
    try {
        document.load(file.toStdString());
    } catch (const std::exception&) {
        return 0;
    }
    std::vector<std::pair<osg::NodePtr, osg::NodePtr>> placed;
    std::vector<Force> forces;
    walkDocument(document, root, [&](const DocumentPlace& place) {
        forces.resize(place.level);
        forces.push_back(within(place.level > 0 ? forces.back() : Force(), place));
        if (const osg::NodePtr& group = forces.back().group)
            for (const osg::NodePtr& content : contentsOf(place))
                placed.emplace_back(content, group);
    });
    for (const auto& [content, group] : placed)
        putBelow(content, group);
    return placed.size();
}

} // namespace importer
