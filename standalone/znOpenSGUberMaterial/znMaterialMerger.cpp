#include "host/znOpenSGUberMaterial/znMaterialMerger.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/CoreMaterial.h"
#include "standalone/znUtils/CallTrace.h"

#include <map>
#include <unordered_map>
#include <utility>

namespace
{

using Settings = znMaterialComparison::MaterialCompareSettings;

std::string nameOf(const osg::MaterialPtr& material)
{
    const char* name = osg::getName(material);
    return name ? name : "";
}

/// The known materials, and what was found among them.
class KnownMaterials
{
public:
    KnownMaterials(const std::set<unsigned>& ids, Settings settings) : m_settings(settings)
    {
        for (const unsigned id : ids) {
            const auto material = osg::fcCast<osg::Material>(osg::FieldContainerFactory::the()->getContainer(id));
            if (!material)
                continue;
            m_alike[keyOf(material)].push_back(material);
            m_found[material.get()] = material;
        }
    }

    /// What to use for `material`: an equal known one, or itself.
    osg::MaterialPtr of(const osg::MaterialPtr& material)
    {
        const auto [place, isNew] = m_found.try_emplace(material.get(), material);
        if (isNew)
            place->second = lookUp(material);
        return place->second;
    }

private:
    /// Equal materials have equal keys.
    using Key = std::pair<unsigned, std::string>;

    Key keyOf(const osg::MaterialPtr& material) const
    {
        const bool byName = (m_settings & znMaterialComparison::CompareNames) != 0;
        return {material->getType().getId(), byName ? nameOf(material) : std::string()};
    }

    osg::MaterialPtr lookUp(const osg::MaterialPtr& material) const
    {
        const auto alike = m_alike.find(keyOf(material));
        if (alike != m_alike.end())
            for (const osg::MaterialPtr& candidate : alike->second)
                if (znMaterialComparison::areEqual(material, candidate, m_settings))
                    return candidate;
        return material;
    }

    Settings m_settings;
    std::map<Key, std::vector<osg::MaterialPtr>> m_alike; ///< each by ascending id
    std::unordered_map<const osg::Material*, osg::MaterialPtr> m_found;
};

} // namespace

void znMaterialMerger::reuseMaterials(const std::vector<znNodePtr>& roots, const std::set<unsigned>& known,
                                      const znMaterialComparison::MaterialCompareSettings& compare,
                                      MaterialMergeSettings merge)
{
    const zn::TracedCall call("znMaterialMerger::reuseMaterials", roots,
                              std::vector<unsigned>(known.begin(), known.end()), static_cast<int>(compare),
                              static_cast<int>(merge));
    KnownMaterials materials(known, compare);
    std::vector<osg::RefPtr<osg::MaterialPtr>> former; // their addresses must not be given to others meanwhile
    for (const znNodePtr& root : roots)
        osg::traverse(root, [&](const osg::NodePtr& node) {
            const osg::NodeCorePtr core = node ? node->getCore() : osg::NodeCorePtr();
            const osg::MaterialPtr material = osg::materialOf(core);
            const osg::MaterialPtr wanted = material ? materials.of(material) : material;
            if (wanted == material)
                return osg::Action::Continue;
            former.emplace_back(material);
            osg::setMaterial(core, wanted);
            return osg::Action::Continue;
        });
}
