#include "files/gltf/GltfVariants.h"

#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SwitchMaterial.h"
#include "scene/EditScope.h"
#include "scene/NodeWalk.h"
#include "scene/SceneEdits.h"

#include <algorithm>
#include <unordered_map>

namespace files::gltf
{

namespace
{

constexpr const char* materialVariants = "KHR_materials_variants";

/// The names of the variants that the document lists.
std::vector<std::string> namesIn(const tinygltf::Model& model)
{
    std::vector<std::string> names;
    const auto extension = model.extensions.find(materialVariants);
    if (extension == model.extensions.end() || !extension->second.IsObject())
        return names;
    const tinygltf::Value& list = extension->second.Get("variants");
    for (std::size_t i = 0; list.IsArray() && i < list.ArrayLen(); ++i) {
        const tinygltf::Value& name = list.Get(i).IsObject() ? list.Get(i).Get("name") : list;
        names.push_back(name.IsString() && !name.Get<std::string>().empty() ? name.Get<std::string>()
                                                                            : "Variant " + std::to_string(i + 1));
    }
    return names;
}

bool isHidden(const tinygltf::Node& node)
{
    const auto extension = node.extensions.find("KHR_node_visibility");
    if (extension == node.extensions.end() || !extension->second.IsObject())
        return false;
    const tinygltf::Value& visible = extension->second.Get("visible");
    return visible.IsBool() && !visible.Get<bool>();
}

/// Where each node stands below its parent.
std::unordered_map<const osg::Node*, std::uint32_t> placesBelow(const osg::NodePtr& root)
{
    std::unordered_map<const osg::Node*, std::uint32_t> places;
    for (const osg::NodePtr& parent : osg::parentsFirst(root))
        for (unsigned i = 0; i < parent->getNChildren(); ++i)
            places[parent->getChild(i).get()] = i;
    return places;
}

} // namespace

GltfVariants::GltfVariants(const GltfDocument& document, ReadTask& task) : m_document(document), m_task(task)
{
    for (const GltfVariantSet& told : document.extras.variantSets()) {
        osg::VariantTable::Set set;
        set.name = told.name;
        set.group = told.group;
        set.viewpoint = told.viewpoint;
        if (!told.group.empty() &&
            std::find(m_table.groups.begin(), m_table.groups.end(), told.group) == m_table.groups.end())
            m_table.groups.push_back(told.group);
        m_table.sets.push_back(std::move(set));
    }
    const std::vector<std::string> names = namesIn(document.model);
    for (std::size_t i = m_table.sets.size(); i < names.size(); ++i) {
        m_table.sets.emplace_back();
        m_table.sets.back().name = names[i];
    }
}

GltfVariants::Mappings GltfVariants::mappingsOf(const tinygltf::Primitive& primitive, const QString& place)
{
    Mappings result;
    const auto extension = primitive.extensions.find(materialVariants);
    if (extension == primitive.extensions.end() || !extension->second.IsObject())
        return result;
    const tinygltf::Value& mappings = extension->second.Get("mappings");
    bool isSound = mappings.IsArray();
    for (std::size_t i = 0; isSound && i < mappings.ArrayLen(); ++i) {
        const tinygltf::Value& mapping = mappings.Get(i);
        isSound = mapping.IsObject() && mapping.Get("material").IsInt() && mapping.Get("variants").IsArray();
        for (std::size_t k = 0; isSound && k < mapping.Get("variants").ArrayLen(); ++k) {
            const tinygltf::Value& variant = mapping.Get("variants").Get(k);
            const int number = variant.IsInt() ? variant.Get<int>() : -1;
            isSound = number >= 0 && static_cast<std::size_t>(number) < m_table.sets.size();
            if (isSound)
                result[static_cast<std::size_t>(number)] = mapping.Get("material").Get<int>();
        }
    }
    if (!isSound)
        m_task.warn(tr("the variants of a primitive were left out: they name none of the document"), place);
    return isSound ? result : Mappings();
}

/// The name by which a set asks for the material: one that no other has.
std::string GltfVariants::stateOf(const osg::MaterialPtr& material)
{
    const char* name = osg::getName(material);
    if (name && *name)
        return name;
    std::string made = "Material";
    for (unsigned number = 2; !m_states.insert(made).second; ++number)
        made = "Material " + std::to_string(number);
    osg::setName(material, made);
    return made;
}

osg::MaterialPtr GltfVariants::choices(const tinygltf::Primitive& primitive, const osg::MaterialPtr& standard,
                                       const std::function<osg::MaterialPtr(int)>& material, const QString& place)
{
    const Mappings mappings = standard ? mappingsOf(primitive, place) : Mappings();
    if (mappings.empty())
        return standard;
    const auto [entry, isNew] = m_choices.try_emplace({standard, mappings});
    if (!isNew)
        return entry->second.get();
    const osg::SwitchMaterialPtr made = osg::SwitchMaterialBase::create();
    entry->second = osg::RefPtr<osg::MaterialPtr>(made);
    const std::string name = stateOf(standard) + " choices" +
                             (m_choices.size() > 1 ? " " + std::to_string(m_choices.size()) : std::string());
    osg::setName(made, name);
    const osg::EditScope scope(made, osg::SwitchMaterialBase::MaterialsFieldMask);
    made->addMaterial(standard);
    for (const auto& [set, number] : mappings) {
        const osg::MaterialPtr other = material(number);
        const osg::MaterialField& known = made->getMaterials();
        if (std::find(known.begin(), known.end(), other) == known.end())
            made->addMaterial(other);
        m_table.sets[set].materials.push_back({name, stateOf(other)});
    }
    return made;
}

void GltfVariants::addNode(int index, const osg::NodePtr& node)
{
    if (isHidden(m_document.model.nodes[static_cast<std::size_t>(index)]) || m_document.extras.isShrunk(index))
        osg::edit(node, osg::Node::ActiveFieldMask, [&node = node] { node->setActive(false); });
    if (const std::map<std::string, bool>* told = m_document.extras.variantsOfNode(index))
        m_nodes.emplace_back(node, told);
}

void GltfVariants::attach(const osg::NodePtr& root)
{
    if (m_table.empty())
        return;
    const auto places = m_nodes.empty() ? std::unordered_map<const osg::Node*, std::uint32_t>() : placesBelow(root);
    std::unordered_map<std::string, osg::VariantTable::Set*> sets;
    for (osg::VariantTable::Set& set : m_table.sets)
        sets.emplace(set.name, &set);
    for (const auto& [node, told] : m_nodes) {
        osg::NodePath path;
        for (osg::NodePtr each = node; each != root; each = each->getParent())
            path.push_back(places.at(each.get()));
        std::reverse(path.begin(), path.end());
        for (const auto& [name, isShown] : *told)
            if (const auto set = sets.find(name); set != sets.end())
                set->second->nodes.push_back({path, isShown ? "!Enable" : "!Disable"});
    }
    osg::attach(root, osg::VariantAttachment::create(std::move(m_table)));
}

} // namespace files::gltf
