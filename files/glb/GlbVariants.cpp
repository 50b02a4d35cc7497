#include "files/glb/GlbVariants.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SwitchMaterial.h"

#include <algorithm>

namespace files::glb
{

namespace
{

/// Nested deeper than this is a ring.
constexpr int maxNesting = 1000;

std::string nameOf(const osg::MaterialPtr& material)
{
    const char* name = osg::getName(material);
    return name ? name : "";
}

osg::MaterialPtr choiceOf(const osg::SwitchMaterialPtr& choices)
{
    return choices->getMaterial(choices->getChoice());
}

/// The sub-material of this name, otherwise the chosen one.
osg::MaterialPtr choiceOf(const osg::SwitchMaterialPtr& choices, const std::string& name)
{
    for (const osg::MaterialPtr& material : choices->getMaterials())
        if (material && nameOf(material) == name)
            return material;
    return choiceOf(choices);
}

} // namespace

GlbVariants::GlbVariants(const osg::NodePtr& root)
{
    const auto attachment = root ? osg::VariantAttachment::of(root) : osg::VariantAttachment::Ptr();
    if (!attachment)
        return;
    m_table = attachment->table();
    for (std::size_t i = 0; i < m_table.sets.size(); ++i)
        addSet(i, m_table.sets[i], root);
}

void GlbVariants::addSet(std::size_t number, const osg::VariantTable::Set& set, const osg::NodePtr& root)
{
    for (const osg::VariantTable::MaterialState& entry : set.materials)
        m_states[entry.material][number] = entry.state;
    for (const osg::VariantTable::NodeState& entry : set.nodes)
        if (const osg::NodePtr node = osg::nodeAt(entry.node, root)) {
            Json& told = m_visibility[node.get()];
            m_hidden += told.is_null() && !node->isActive() ? 1 : 0;
            told[set.name] = entry.state == "!Enable";
        }
}

osg::MaterialPtr GlbVariants::seen(const osg::MaterialPtr& material, std::size_t set, bool& isTold) const
{
    osg::MaterialPtr result = material;
    for (int depth = 0; depth < maxNesting; ++depth) {
        const auto choices = osg::fcCast<osg::SwitchMaterial>(result);
        if (!choices)
            return result;
        const auto states = m_states.find(nameOf(choices));
        const bool isWanted = states != m_states.end() && states->second.contains(set);
        isTold = isTold || isWanted;
        result = isWanted ? choiceOf(choices, states->second.at(set)) : choiceOf(choices);
    }
    return {};
}

std::vector<GlbVariants::Mapping> GlbVariants::mappings(const osg::MaterialPtr& material) const
{
    std::vector<Mapping> result;
    if (m_states.empty() || !osg::fcCast<osg::SwitchMaterial>(material))
        return result;
    for (std::size_t set = 0; set < m_table.sets.size(); ++set) {
        bool isTold = false;
        const osg::MaterialPtr wanted = seen(material, set, isTold);
        if (!isTold)
            continue;
        const auto isOfWanted = [&](const Mapping& mapping) { return mapping.first == wanted; };
        const auto known = std::find_if(result.begin(), result.end(), isOfWanted);
        if (known == result.end())
            result.push_back({wanted, {set}});
        else
            known->second.push_back(set);
    }
    return result;
}

const Json* GlbVariants::visibility(const osg::NodePtr& node) const
{
    const auto found = m_visibility.find(node.get());
    return found == m_visibility.end() ? nullptr : &found->second;
}

Json GlbVariants::sets() const
{
    Json result = Json::array();
    for (const osg::VariantTable::Set& set : m_table.sets) {
        Json json = {{"name", set.name}};
        if (!set.group.empty())
            json["group"] = set.group;
        if (!set.viewpoint.empty())
            json["viewpoint"] = set.viewpoint;
        result.push_back(std::move(json));
    }
    return result;
}

Json GlbVariants::extension() const
{
    Json names = Json::array();
    for (const osg::VariantTable::Set& set : m_table.sets)
        names.push_back({{"name", set.name}});
    return {{"variants", names}};
}

} // namespace files::glb
