#include "importer/inventory/SceneSelection.h"

#include "files/scenefile/ConvertedTree.h"
#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Material.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/Names.h"
#include "scene/CoreMaterial.h"
#include "scene/EditScope.h"
#include "scene/NodeWalk.h"
#include "scene/OccurrenceIds.h"
#include "scene/SceneEdits.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace importer::inventory
{

namespace
{

std::string textOf(const char* name)
{
    return name ? name : "";
}

/// Tells what a query wants to know of nodes; lists of products are read once.
class FactTeller
{
public:
    FactTeller(const osg::NodePtr& root, const SceneQuery& query)
    {
        if (query.asksForId())
            m_ids.emplace(root);
    }

    QueryFacts of(const osg::NodePtr& node)
    {
        QueryFacts facts;
        facts.name = textOf(osg::getName(node));
        facts.attributes = productAttributes(node);
        facts.product = osg::findText(facts.attributes, "Product");
        for (osg::Attribute& attribute : osg::attributesOf(node, osg::AttributeOwner::Occurrence))
            facts.attributes.push_back(std::move(attribute));
        if (m_ids)
            facts.id = m_ids->of(node);
        if (const osg::MaterialPtr material = materialAt(node))
            facts.material = textOf(osg::getName(material));
        return facts;
    }

private:
    /// That of the topmost group rules all below it. A parent is asked for before its children.
    osg::MaterialPtr materialAt(const osg::NodePtr& node)
    {
        const osg::NodePtr parent = node->getParent();
        const auto above = m_groups.find(parent.get());
        const osg::MaterialPtr ruling = above != m_groups.end() ? above->second : groupMaterial(parent);
        m_groups[node.get()] = ruling ? ruling : groupMaterial(node);
        return ruling ? ruling : osg::materialOf(node->getCore());
    }

    static osg::MaterialPtr groupMaterial(const osg::NodePtr& node)
    {
        const auto group = node ? osg::fcCast<osg::MaterialGroup>(node->getCore()) : osg::MaterialGroupPtr();
        return group ? group->getMaterial() : osg::MaterialPtr();
    }

    const osg::AttributeList& productAttributes(const osg::NodePtr& node)
    {
        const auto attachment = osg::attributeAttachment(node, osg::AttributeOwner::Product);
        const auto [entry, isNew] = m_products.try_emplace(attachment.get());
        if (isNew && attachment)
            entry->second = attachment->attributes();
        return entry->second;
    }

    std::optional<osg::OccurrenceIds> m_ids;
    std::unordered_map<const osg::FieldContainer*, osg::AttributeList> m_products;
    std::unordered_map<const osg::Node*, osg::MaterialPtr> m_groups; ///< material of the topmost group down to a node
};

std::vector<osg::NodePtr> matchesBelow(const osg::NodePtr& root, const SceneQuery& query)
{
    FactTeller facts(root, query);
    std::vector<osg::NodePtr> matches;
    for (const osg::NodePtr& node : osg::parentsFirst(root))
        if (node != root && query.matches(facts.of(node)))
            matches.push_back(node);
    return matches;
}

/// The nodes between the matches and the root.
std::unordered_set<const osg::Node*> above(const std::vector<osg::NodePtr>& matches)
{
    std::unordered_set<const osg::Node*> found;
    for (const osg::NodePtr& match : matches)
        for (osg::NodePtr node = match->getParent(); node && found.insert(node.get()).second;)
            node = node->getParent();
    return found;
}

void setActive(const osg::NodePtr& node, bool isActive)
{
    const osg::EditScope edit(node, osg::Node::ActiveFieldMask);
    node->setActive(isActive);
}

} // namespace

std::size_t keepMatches(const osg::NodePtr& root, const SceneQuery& query)
{
    const std::vector<osg::NodePtr> matches = matchesBelow(root, query);
    if (matches.empty())
        return 0;
    const std::unordered_set<const osg::Node*> path = above(matches);
    std::unordered_set<const osg::Node*> kept;
    for (const osg::NodePtr& match : matches)
        kept.insert(match.get());
    std::vector<osg::NodePtr> pending = {root};
    while (!pending.empty()) {
        const osg::NodePtr node = pending.back();
        pending.pop_back();
        for (unsigned i = node->getNChildren(); i-- > 0;) {
            const osg::NodePtr child = node->getChild(i);
            if (kept.contains(child.get()))
                continue;
            if (path.contains(child.get()))
                pending.push_back(child);
            else
                osg::subChild(node, child);
        }
    }
    return matches.size();
}

std::size_t showPmi(const osg::NodePtr& root)
{
    std::size_t count = 0;
    for (const osg::NodePtr& node : osg::parentsFirst(root)) {
        const std::vector<std::string>& tags = osg::tagsOf(node);
        if (std::find(tags.begin(), tags.end(), osg::scenefile::converted::PmiTag) == tags.end())
            continue;
        setActive(node, true);
        for (unsigned i = 0; i < node->getNChildren(); ++i)
            setActive(node->getChild(i), true);
        ++count;
    }
    return count;
}

std::size_t hideMatches(const osg::NodePtr& root, const SceneQuery& query)
{
    const std::vector<osg::NodePtr> matches = matchesBelow(root, query);
    for (const osg::NodePtr& match : matches)
        setActive(match, false);
    return matches.size();
}

} // namespace importer::inventory
