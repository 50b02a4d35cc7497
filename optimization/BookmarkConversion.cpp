#include "optimization/BookmarkConversion.h"

#include "host/OSGSystem/Edit.h"
#include "host/znOpenSGUtils/znMaterials.h"
#include "host/znOpenSGUtils/znNodeUtils.h"
#include "host/znVariants/znVariants.h"
#include "optimization/BookmarkTags.h"
#include "optimization/BookmarkViewpoints.h"

#include <vector>

namespace optimization
{

namespace
{

QString textOf(const std::string& text)
{
    return QString::fromUtf8(text.c_str());
}

znVariantGroup* groupOf(const osg::NodePtr& bookmarkNode)
{
    znVariantGroup* group = nullptr;
    for (const std::string& tag : znNodeUtils::getTags(bookmarkNode)) {
        const std::optional<std::string> name = BookmarkTags::groupName(tag);
        if (!name)
            continue;
        group = znVariants::findVariantGroup(textOf(*name));
        if (!group)
            group = znVariants::createVariantGroup(textOf(*name), true, true);
    }
    return group;
}

znVariantSet* setOf(const osg::NodePtr& bookmarkNode, znVariantGroup* group)
{
    const QString name = QString::fromUtf8(znNodeUtils::getName(bookmarkNode));
    znVariantSet* set = znVariants::findVariantSet(name);
    return set ? set : znVariants::createVariantSet(name, true, group);
}

void convertBookmark(osg::NodePtr& bookmarkNode)
{
    znVariantSet* set = setOf(bookmarkNode, groupOf(bookmarkNode));
    if (!set)
        return;
    initMaterialVariants(bookmarkNode, set);
    initViewPoints(bookmarkNode, set);
}

void takeOff(const osg::NodePtr& root, const std::vector<osg::NodePtr>& children)
{
    if (children.empty())
        return;
    osg::beginEditCP(root, osg::AllFieldsMask, 1);
    for (const osg::NodePtr& child : children)
        root->subChild(child);
    osg::endEditCP(root, osg::AllFieldsMask, 1);
}

void addSwitch(znVariantSet* set, const BookmarkTags::MaterialSwitch& wanted)
{
    const QString name = textOf(wanted.material);
    const znMaterialPtr material = znMaterials::findMaterial(name);
    if (material == osg::NullFC)
        return;
    znMaterialVariant* variant = znVariants::findMaterialVariant(name);
    if (!variant)
        variant = znVariants::createMaterialVariant(material, true);
    set->add(variant, QString());
    if (znVariantState* state = set->findMaterialVariant(name))
        state->m_stateName = textOf(wanted.state);
}

void addVisibility(const osg::NodePtr& node, const BookmarkTags::Visibility& wanted)
{
    znVariantSet* set = znVariants::findVariantSet(textOf(wanted.set));
    if (!set)
        return;
    znNodeVariant* variant = znVariants::createNodeVariant(node, true);
    set->add(variant, wanted.visible ? QStringLiteral("!Enable") : QStringLiteral("!Disable"));
}

void convertVisibilities(const osg::NodePtr& node)
{
    std::vector<std::string> matched;
    for (const std::string& tag : znNodeUtils::getTags(node)) {
        const std::optional<BookmarkTags::Visibility> wanted = BookmarkTags::visibility(tag);
        if (!wanted)
            continue;
        addVisibility(node, *wanted);
        matched.push_back(tag);
    }
    for (std::size_t i = 0; i < matched.size(); ++i)
        znNodeUtils::removeTags(node, matched);
    znNodeUtils::removeTag(node, BookmarkTags::VariesByBookmark);
}

} // namespace

void convertStylarBookmarks(osg::NodePtr& root, bool)
{
    std::vector<osg::NodePtr> bookmarkNodes;
    for (unsigned i = 0; root && i < root->getNChildren(); ++i) {
        osg::NodePtr child = root->getChild(i);
        if (!znNodeUtils::hasTag(child, BookmarkTags::BookmarkNode))
            continue;
        convertBookmark(child);
        bookmarkNodes.push_back(child);
    }
    takeOff(root, bookmarkNodes);
    initVisibility(root);
}

void initMaterialVariants(osg::NodePtr& bookmarkNode, znVariantSet* set)
{
    if (!set)
        return;
    znMaterials::initFindCache();
    for (const std::string& tag : znNodeUtils::getTags(bookmarkNode))
        if (const std::optional<BookmarkTags::MaterialSwitch> wanted = BookmarkTags::materialSwitch(tag))
            addSwitch(set, *wanted);
}

void initVisibility(osg::NodePtr& root)
{
    std::vector<znNodePtr> marked;
    znNodeUtils::getNodesWithTag(root, BookmarkTags::VariesByBookmark, marked);
    for (const znNodePtr& node : marked)
        convertVisibilities(node);
}

} // namespace optimization
