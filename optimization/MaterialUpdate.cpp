#include "optimization/MaterialUpdate.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/SwitchMaterial.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znAssets/znAssetItemFactory.h"
#include "host/znOpenSGUberMaterial/UBRDFMaterial.h"
#include "host/znOpenSGUtils/znNodeUtils.h"

#include <unordered_set>

namespace optimization
{

namespace
{

using NodesByMaterial = std::map<osg::MaterialPtr, std::vector<osg::NodePtr>>;

NodesByMaterial nodesByMaterial(const osg::NodePtr& root)
{
    NodesByMaterial result;
    osg::traverse(root, [&result](const osg::NodePtr& node) {
        if (!node)
            return osg::Action::Skip;
        if (const osg::MaterialPtr material = znNodeUtils::getMaterial(node))
            result[material].push_back(node);
        return osg::Action::Continue;
    });
    return result;
}

/// What is left to do of a material: its sub-materials from `next` to `count`, then the material itself.
struct Pending {
    osg::MaterialPtr material;
    unsigned next;
    unsigned count;
};

/// Walks switch materials inside switch materials; each once, however often it is held.
class MaterialWalk
{
public:
    explicit MaterialWalk(const osg::MaterialPtr& material) { enter(material); }

    void enter(const osg::MaterialPtr& material)
    {
        const auto choices = osg::fcCast<osg::SwitchMaterial>(material);
        const bool isNew = choices && m_met.insert(choices.get()).second;
        m_path.push_back({material, 0, isNew ? static_cast<unsigned>(choices->getMaterials().size()) : 0});
    }
    bool isDone() const { return m_path.empty(); }
    bool isOutermost() const { return m_path.size() == 1; }
    Pending& current() { return m_path.back(); }
    void leave() { m_path.pop_back(); }

private:
    std::vector<Pending> m_path;
    std::unordered_set<const osg::Material*> m_met;
};

/// Exchanges `sub` in `material`, or goes into it when it is not the copy of an asset.
void updateSubMaterial(MaterialWalk& walk, const osg::MaterialPtr& material, const osg::MaterialPtr& sub,
                       AssetCache& assetCache)
{
    const osg::MaterialPtr loaded = loadAssetMaterial(sub, assetCache);
    if (!loaded) {
        walk.enter(sub);
        return;
    }
    ensureEnvironmentImage(loaded);
    replaceSubMaterial(material, sub, loaded);
}

void updateBrdf(const osg::MaterialPtr& material, const std::vector<osg::NodePtr>& nodes, AssetCache& assetCache)
{
    if (!osg::fcCast<osg::UberMaterial>(material) || !osg::fcCast<osg::UBRDFMaterial>(material))
        return;
    const osg::MaterialPtr loaded = loadAssetMaterial(material, assetCache);
    ensureEnvironmentImage(loaded ? loaded : material);
    if (!loaded)
        return;
    for (const osg::NodePtr& node : nodes)
        if (node)
            znNodeUtils::setMaterial(node, loaded, false, false);
}

} // namespace

void updateMaterials(const osg::NodePtr& root)
{
    AssetCache assetCache;
    for (const auto& [material, nodes] : nodesByMaterial(root))
        updateMaterialFromAsset(material, nodes, assetCache);
    if (!assetCache.empty())
        znAssetItemFactory::the().cleanupMaterialItems();
}

void updateMaterialFromAsset(const osg::MaterialPtr& material, const std::vector<osg::NodePtr>& nodes,
                             AssetCache& assetCache)
{
    const osg::RefPtr<osg::MaterialPtr> holder(material); // the last node may give it up
    for (MaterialWalk walk(material); !walk.isDone();) {
        Pending& step = walk.current();
        if (step.next < step.count) {
            const osg::MaterialPtr current = step.material;
            updateSubMaterial(walk, current, osg::fcCast<osg::SwitchMaterial>(current)->getMaterial(step.next++),
                              assetCache);
            continue;
        }
        updateBrdf(step.material, walk.isOutermost() ? nodes : std::vector<osg::NodePtr>(), assetCache);
        walk.leave();
    }
}

} // namespace optimization
