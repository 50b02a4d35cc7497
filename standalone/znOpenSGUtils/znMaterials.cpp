#include "host/znOpenSGUtils/znMaterials.h"

#include "host/OSGSystem/Cast.h"
#include "scene/SubMaterials.h"
#include "standalone/session/Session.h"
#include "standalone/znOpenSGUtils/ContainerNames.h"
#include "standalone/znOpenSGUtils/HeldMaterials.h"
#include "standalone/znOpenSGUtils/MaterialUses.h"
#include "standalone/znOpenSGUtils/NodesBesideScene.h"
#include "standalone/znOpenSGUtils/SceneMaterials.h"
#include "standalone/znUtils/CallTrace.h"

osg::NodePtr znMaterials::findMaterialPool(const osg::NodePtr& root, bool below, bool create, PoolSearch search)
{
    const zn::TracedCall call("znMaterials::findMaterialPool", root, below, create, static_cast<int>(search));
    if (!root)
        return {};
    if (below)
        if (const osg::NodePtr found = zn::nodes::materialPoolBelow(root))
            return found;
    return root == zn::Session::require().sceneRoot() ? zn::nodes::poolOfScene(create) : osg::NodePtr();
}

const char* znMaterials::getName(const osg::MaterialPtr& material)
{
    const zn::TracedCall call("znMaterials::getName", material);
    return zn::nodes::nameOrEmpty(material);
}

void znMaterials::setName(const osg::MaterialPtr& material, const char* name, bool keep)
{
    const zn::TracedCall call("znMaterials::setName", material, name, keep);
    zn::nodes::rename(material, name, keep);
}

znMaterialPtr znMaterials::findMaterial(const QString& name)
{
    const zn::TracedCall call("znMaterials::findMaterial", name);
    return zn::nodes::findSceneMaterial(name);
}

void znMaterials::initFindCache()
{
    const zn::TracedCall call("znMaterials::initFindCache");
    zn::nodes::noteSceneMaterialNames();
}

std::set<unsigned> znMaterials::getMaterialPoolMaterialIds()
{
    const zn::TracedCall call("znMaterials::getMaterialPoolMaterialIds");
    std::set<unsigned> ids;
    for (const osg::MaterialPtr& material : zn::nodes::sceneMaterials())
        ids.insert(material->getContainerId());
    return ids;
}

osg::MaterialField* znMaterials::getSubMaterials(const osg::MaterialPtr& material, osg::FieldMask& mask)
{
    const zn::TracedCall call("znMaterials::getSubMaterials", material);
    const auto choices = osg::fcCast<osg::SwitchMaterial>(material);
    if (!choices)
        return nullptr;
    mask = osg::SwitchMaterialBase::MaterialsFieldMask;
    return &osg::SwitchMaterialAccess::materials(*choices);
}

void znMaterials::getRecursiveMaterials(const osg::MaterialPtr& material, std::vector<osg::MaterialPtr>& materials,
                                        bool shownOnly)
{
    const zn::TracedCall call("znMaterials::getRecursiveMaterials", material, shownOnly);
    zn::nodes::appendHeldMaterials(material, materials, shownOnly);
}

void znMaterials::addRef(const osg::MaterialPtr& material, const osg::NodePtr& user, int purpose)
{
    const zn::TracedCall call("znMaterials::addRef", material, user, purpose);
    if (material)
        zn::nodes::markAsUsed(material);
}
