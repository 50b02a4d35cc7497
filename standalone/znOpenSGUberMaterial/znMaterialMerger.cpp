#include "host/znOpenSGUberMaterial/znMaterialMerger.h"

#include "host/OSGSystem/TreeFunctions.h"
#include "scene/CoreMaterial.h"
#include "standalone/znOpenSGUberMaterial/KnownMaterials.h"
#include "standalone/znUtils/CallTrace.h"

void znMaterialMerger::reuseMaterials(const std::vector<znNodePtr>& roots, const std::set<unsigned>& known,
                                      const znMaterialComparison::MaterialCompareSettings& compare,
                                      MaterialMergeSettings merge)
{
    const zn::TracedCall call("znMaterialMerger::reuseMaterials", roots,
                              std::vector<unsigned>(known.begin(), known.end()), static_cast<int>(compare),
                              static_cast<int>(merge));
    zn::materials::KnownMaterials materials(known, compare);
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
