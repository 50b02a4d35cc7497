#include "optimization/MaterialFolding.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGUtils/znMaterials.h"
#include "optimization/MaterialHash.h"

#include <string>
#include <utility>
#include <vector>

namespace optimization
{

namespace
{

osg::MaterialPtr materialOf(const osg::NodeCorePtr& core)
{
    if (const auto group = osg::fcCast<osg::MaterialGroup>(core))
        return group->getMaterial();
    const auto geometry = osg::fcCast<osg::Geometry>(core);
    return geometry ? geometry->getMaterial() : osg::MaterialPtr();
}

/// `Core` holds a material under the mask `mask`.
template <class Core>
void exchange(const typename Core::Ptr& core, osg::FieldMask mask, const osg::MaterialPtr& material)
{
    osg::beginEditCP(core, mask, 1);
    core->setMaterial(material);
    osg::endEditCP(core, mask, 1);
}

void setMaterial(const osg::NodeCorePtr& core, const osg::MaterialPtr& material)
{
    if (const auto geometry = osg::fcCast<osg::Geometry>(core))
        exchange<osg::Geometry>(geometry, osg::MaterialDrawableBase::MaterialFieldMask, material);
    else if (const auto group = osg::fcCast<osg::MaterialGroup>(core))
        exchange<osg::MaterialGroup>(group, osg::MaterialGroupBase::MaterialFieldMask, material);
}

osg::MaterialPtr materialWithId(std::uint32_t id)
{
    return osg::fcCast<osg::Material>(osg::FieldContainerFactory::the()->getContainer(id));
}

struct BucketKey {
    std::uint32_t type;
    std::uint64_t hash; ///< of what else there is to a material
    std::string name;
    friend bool operator==(const BucketKey&, const BucketKey&) = default;
};

struct BucketHash {
    std::size_t operator()(const BucketKey& key) const
    {
        return (std::hash<std::string>()(key.name) * 31 + key.type) * 31 + static_cast<std::size_t>(key.hash);
    }
};

/// One material of each kind, the first that came.
using Bucket = std::vector<osg::MaterialPtr>;

/// The one in `bucket` that is equal to `material`, which enters it when there is none.
osg::MaterialPtr representativeIn(Bucket& bucket, const osg::MaterialPtr& material)
{
    for (const osg::MaterialPtr& candidate : bucket)
        if (osg::FieldContainer::isEqual(material, candidate))
            return candidate;
    bucket.push_back(material);
    return material;
}

} // namespace

void MaterialFolding::optimizeMaterials(const osg::NodePtr& root)
{
    m_materialUseCounts.clear();
    m_materialReplacements.clear();
    m_materialVisitCount = 0;
    m_collectingMaterials = true;
    doOptimizeMaterials(root);
    findRepresentatives();
    m_materialVisitTotal = std::exchange(m_materialVisitCount, 0);
    m_collectingMaterials = false;
    doOptimizeMaterials(root);
    m_materialUseCounts.clear();
    m_materialReplacements.clear();
    m_representatives.clear();
}

void MaterialFolding::doOptimizeMaterials(const osg::NodePtr& root)
{
    osg::traverse(root, [this](const osg::NodePtr& node) {
        visit(node);
        return osg::Action::Continue;
    });
}

void MaterialFolding::visit(const osg::NodePtr& node)
{
    const osg::MaterialPtr material = node ? materialOf(node->getCore()) : osg::MaterialPtr();
    if (!material)
        return;
    ++m_materialVisitCount;
    if (m_collectingMaterials)
        ++m_materialUseCounts[material->getContainerId()];
    else
        fold(node, material);
}

void MaterialFolding::fold(const osg::NodePtr& node, const osg::MaterialPtr& material)
{
    const osg::MaterialPtr replacement = replacementOf(material);
    if (!replacement || replacement == material)
        return;
    forgetOneUse(material->getContainerId());
    setMaterial(node->getCore(), replacement);
}

osg::MaterialPtr MaterialFolding::replacementOf(const osg::MaterialPtr& material)
{
    const std::uint32_t id = material->getContainerId();
    const auto judged = m_materialReplacements.find(id);
    if (judged != m_materialReplacements.end())
        return materialWithId(judged->second);
    const auto representative = m_representatives.find(id);
    if (representative == m_representatives.end())
        return {};
    m_materialReplacements.emplace(id, representative->second);
    return materialWithId(representative->second);
}

void MaterialFolding::forgetOneUse(std::uint32_t id)
{
    if (--m_materialUseCounts[id] != 0)
        return;
    m_materialUseCounts.erase(id);
    m_materialReplacements.erase(id);
}

/// A walk from the lowest id upwards meets the one that stays before all others that are equal to it.
void MaterialFolding::findRepresentatives()
{
    std::unordered_map<BucketKey, Bucket, BucketHash> buckets;
    for (const auto& [id, uses] : m_materialUseCounts) {
        const osg::MaterialPtr material = materialWithId(id);
        if (!material)
            continue;
        Bucket& bucket = buckets[{material->getType().getId(), hashOf(material), znMaterials::getName(material)}];
        m_representatives[id] = representativeIn(bucket, material)->getContainerId();
    }
}

} // namespace optimization
