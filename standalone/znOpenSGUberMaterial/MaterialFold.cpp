#include "standalone/znOpenSGUberMaterial/MaterialFold.h"

#include "host/znOpenSGUberMaterial/znMaterialMerger.h"
#include "scene/CoreMaterial.h"
#include "scene/NodeWalk.h"
#include "standalone/znOpenSGUberMaterial/KnownMaterials.h"

#include <map>

namespace zn::materials
{

void foldMaterials(const osg::NodePtr& root, const std::set<unsigned>& wanted)
{
    constexpr auto byAll = znMaterialComparison::MaterialCompareSettings(znMaterialComparison::CompareNames |
                                                                         znMaterialComparison::CompareFields);
    std::map<unsigned, osg::MaterialPtr> materials;
    for (const osg::NodePtr& node : osg::parentsFirst(root))
        if (const osg::MaterialPtr material = osg::materialOf(node->getCore()))
            materials.emplace(material->getContainerId(), material);
    KnownMaterials known(wanted, byAll);
    std::set<unsigned> staying = wanted;
    for (const auto& [id, material] : materials)
        if (known.take(material) == material)
            staying.insert(id);
    if (staying.size() < wanted.size() + materials.size())
        znMaterialMerger::reuseMaterials({znNodePtr(root)}, staying, byAll, znMaterialMerger::MergeNodeMaterials);
}

} // namespace zn::materials
