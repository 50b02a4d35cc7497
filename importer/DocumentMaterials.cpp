#include "importer/DocumentMaterials.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "importer/DocumentWalk.h"
#include "scene/SceneEdits.h"

#include <QFile>

#include <exception>
#include <string_view>
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

/// Whether the text may have an element of this name, which is known in much less time than a document is read.
bool mayHaveElement(const QString& path, std::string_view name)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const auto isBeginOfName = [](char before) { return before == '<' || (before >= 0 && before <= ' '); };
    constexpr qint64 blockSize = 1 << 20;
    QByteArray text;
    for (QByteArray block = file.read(blockSize); !block.isEmpty(); block = file.read(blockSize)) {
        // What may be the first part of a name, and the letter before it.
        text = text.right(static_cast<int>(name.size())) + block;
        const std::string_view view(text.constData(), static_cast<std::size_t>(text.size()));
        for (std::size_t at = view.find(name); at != view.npos; at = view.find(name, at + 1))
            if (at > 0 && isBeginOfName(view[at - 1]))
                return true;
    }
    return false;
}

} // namespace

std::size_t applyDocumentMaterials(const QString& file, const osg::NodePtr& root)
{
    if (!mayHaveElement(file, "Material"))
        return 0;
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
