#include "importer/materials/TableEdits.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/SwitchMaterial.h"
#include "scene/ContainerRegistry.h"
#include "scene/CoreMaterial.h"
#include "scene/EditScope.h"
#include "scene/GeometryWalk.h"
#include "scene/SceneEdits.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_set>
#include <utility>

namespace importer::materials
{

namespace
{

using Indices = std::vector<std::size_t>;

class TableEdits
{
public:
    TableEdits(const std::vector<DrawnPlace>& places, const std::vector<osg::MaterialPtr>& materials,
               TableChoices& choices)
        : m_places(places), m_materials(materials), m_choices(choices), m_counts(materials.size())
    {
    }

    std::vector<std::size_t> run();

private:
    void put(const Indices& sharing);
    void separate(const Indices& sharing);
    void dissolveGroups(const osg::NodePtr& top);
    osg::NodeCorePtr coreWith(const osg::NodeCorePtr& core, const osg::MaterialPtr& material);
    void putOnChoices(const osg::SwitchMaterialPtr& material);
    osg::MaterialPtr wanted(const DrawnPlace& place) const
    {
        return place.row ? m_materials[*place.row] : place.material;
    }

    const std::vector<DrawnPlace>& m_places;
    const std::vector<osg::MaterialPtr>& m_materials;
    TableChoices& m_choices;
    std::vector<std::size_t> m_counts;
    std::unordered_set<const osg::FieldContainer*> m_switches; ///< that were met
    std::map<std::pair<const osg::FieldContainer*, const osg::FieldContainer*>, osg::RefPtr<osg::NodeCorePtr>> m_made;
    std::vector<osg::RefPtr<osg::NodeCorePtr>> m_originals; ///< as long as they are known by their addresses
};

/// The core that gives a place its material.
osg::NodeCorePtr holderOf(const DrawnPlace& place)
{
    return (place.group ? place.group : place.node)->getCore();
}

std::vector<std::size_t> TableEdits::run()
{
    std::map<std::uint32_t, Indices> sharing; // in the order in which they were made, the same in each run
    for (std::size_t i = 0; i < m_places.size(); ++i) {
        if (const auto choices = osg::fcCast<osg::SwitchMaterial>(m_places[i].material))
            putOnChoices(choices);
        else
            sharing[holderOf(m_places[i])->getContainerId()].push_back(i);
    }
    for (const auto& [holder, places] : sharing)
        put(places);
    return std::move(m_counts);
}

void TableEdits::put(const Indices& sharing)
{
    const osg::MaterialPtr first = wanted(m_places[sharing.front()]);
    const bool areAlike = std::all_of(sharing.begin(), sharing.end(),
                                      [&](std::size_t place) { return wanted(m_places[place]) == first; });
    for (const std::size_t place : sharing)
        if (m_places[place].row)
            ++m_counts[*m_places[place].row];
    if (!areAlike)
        separate(sharing);
    else if (first != m_places[sharing.front()].material)
        osg::setMaterial(holderOf(m_places[sharing.front()]), first);
}

/// The material of a group would rule the materials of geometries below it. A geometry that stood below one gets a core
/// of its own in any case: at other places its own material rules, and may change.
void TableEdits::separate(const Indices& sharing)
{
    const osg::RefPtr<osg::MaterialPtr> former(m_places[sharing.front()].material);
    std::set<const osg::Node*> dissolved;
    for (const std::size_t place : sharing) {
        const DrawnPlace& here = m_places[place];
        if (here.group && dissolved.insert(here.group.get()).second)
            dissolveGroups(here.group);
        if (here.group || here.row)
            osg::exchangeCore(here.node, coreWith(here.node->getCore(), wanted(here)));
    }
}

/// Makes plain groups of the groups with materials at and below `top`; other places of their cores keep them.
void TableEdits::dissolveGroups(const osg::NodePtr& top)
{
    for (const osg::NodePtr& node : osg::parentsFirst(top)) {
        if (!osg::fcCast<osg::MaterialGroup>(node->getCore()))
            continue;
        const osg::GroupPtr plain = osg::Group::create();
        if (const char* name = osg::getName(node->getCore()))
            osg::setName(plain, name);
        osg::exchangeCore(node, plain);
    }
}

osg::NodeCorePtr TableEdits::coreWith(const osg::NodeCorePtr& core, const osg::MaterialPtr& material)
{
    osg::RefPtr<osg::NodeCorePtr>& made = m_made[{core.get(), material.get()}];
    if (!made) {
        m_originals.emplace_back(core);
        made = osg::NodeCorePtr(static_cast<osg::NodeCore*>(osg::ContainerAccess::copy(*core).get()));
        osg::setMaterial(made.get(), material);
    }
    return made.get();
}

void TableEdits::putOnChoices(const osg::SwitchMaterialPtr& material)
{
    if (!m_switches.insert(material.get()).second)
        return;
    for (unsigned i = 0; i < material->getMaterials().size(); ++i) {
        const auto row = m_choices.rowFor(material->getMaterial(i));
        if (!row)
            continue;
        ++m_counts[*row];
        if (m_materials[*row] == material->getMaterial(i))
            continue;
        const osg::EditScope edit(material, osg::SwitchMaterialBase::MaterialsFieldMask);
        osg::MaterialPtr& entry = material->editMaterials()[i];
        const osg::MaterialPtr former = std::exchange(entry, m_materials[*row]);
        m_materials[*row].addRef();
        former.subRef();
    }
}

} // namespace

std::vector<std::size_t> putMaterials(const std::vector<DrawnPlace>& places,
                                      const std::vector<osg::MaterialPtr>& materials, TableChoices& choices)
{
    return TableEdits(places, materials, choices).run();
}

} // namespace importer::materials
