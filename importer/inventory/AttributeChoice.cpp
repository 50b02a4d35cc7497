#include "importer/inventory/AttributeChoice.h"

#include "scene/CoreMaterial.h"
#include "scene/NamePattern.h"
#include "scene/NodeWalk.h"
#include "scene/SubMaterials.h"

#include <functional>
#include <unordered_map>
#include <unordered_set>

namespace importer::inventory
{

namespace
{

using osg::AttributeOwner;

constexpr AttributeOwner owners[] = {AttributeOwner::Product, AttributeOwner::Occurrence};

/// All that may have attributes at and below `root`, materials once.
void eachHolder(const osg::NodePtr& root, const std::function<void(const osg::AttachmentContainerPtr&)>& visit)
{
    std::unordered_set<const osg::FieldContainer*> materials;
    for (const osg::NodePtr& node : osg::parentsFirst(root)) {
        visit(node);
        const osg::MaterialPtr material = osg::materialOf(node->getCore());
        if (!material || !materials.insert(material.get()).second)
            continue;
        for (const osg::MaterialPtr& inner : osg::subMaterialsFirst(material))
            visit(inner);
    }
}

/// Makes each list once, so that it stays shared.
class ChosenAttributes
{
public:
    explicit ChosenAttributes(const AttributeChoice& choice) : m_choice(choice) {}

    osg::AttributeAttachment::Ptr of(const osg::AttributeAttachment::Ptr& attributes)
    {
        const auto [entry, isNew] = m_made.try_emplace(attributes.get());
        if (isNew) {
            entry->second.before = attributes;
            if (osg::AttributeList chosen = chosenOf(attributes->attributes(), m_choice); !chosen.empty())
                entry->second.after = osg::AttributeAttachment::create(std::move(chosen));
        }
        return entry->second.after.get();
    }

private:
    /// Holds the old one too, so that no new one takes its address.
    struct Made {
        osg::RefPtr<osg::AttributeAttachment::Ptr> before;
        osg::RefPtr<osg::AttributeAttachment::Ptr> after;
    };

    const AttributeChoice& m_choice;
    std::unordered_map<const osg::FieldContainer*, Made> m_made;
};

} // namespace

bool AttributeChoice::takes(std::string_view name) const
{
    bool hasWanted = false;
    bool isWanted = false;
    for (const std::string& pattern : patterns) {
        const bool isExclusion = pattern.starts_with('!');
        const bool matches = osg::matchesPattern(std::string_view(pattern).substr(isExclusion ? 1 : 0), name);
        if (isExclusion && matches)
            return false;
        hasWanted = hasWanted || !isExclusion;
        isWanted = isWanted || matches;
    }
    return detail != AttributeDetail::None && (isWanted || !hasWanted);
}

osg::AttributeList chosenOf(const osg::AttributeList& attributes, const AttributeChoice& choice)
{
    osg::AttributeList chosen;
    for (const osg::Attribute& attribute : attributes)
        if (choice.takes(attribute.name))
            chosen.push_back(choice.detail == AttributeDetail::All ? attribute
                                                                   : osg::Attribute{attribute.name, std::string()});
    return chosen;
}

void applyAttributeChoice(const osg::NodePtr& root, const AttributeChoice& choice)
{
    if (choice.takesAll())
        return;
    ChosenAttributes chosen(choice);
    eachHolder(root, [&](const osg::AttachmentContainerPtr& holder) {
        for (const AttributeOwner owner : owners)
            if (const osg::AttributeAttachment::Ptr attributes = osg::attributeAttachment(holder, owner))
                osg::setAttributes(holder, owner, chosen.of(attributes));
    });
}

std::map<std::string, std::size_t> countAttributes(const osg::NodePtr& root)
{
    std::map<std::string, std::size_t> counts;
    std::unordered_set<const osg::FieldContainer*> counted;
    eachHolder(root, [&](const osg::AttachmentContainerPtr& holder) {
        for (const AttributeOwner owner : owners)
            if (const auto attributes = osg::attributeAttachment(holder, owner);
                attributes && counted.insert(attributes.get()).second)
                for (const osg::Attribute& attribute : attributes->attributes())
                    ++counts[attribute.name];
    });
    return counts;
}

} // namespace importer::inventory
