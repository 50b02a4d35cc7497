// Materials of the scene's pool by their names.

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/MaterialPool.h"
#include "host/OSGSystem/Names.h"
#include "host/znOpenSGUtils/znMaterials.h"
#include "standalone/session/znStandaloneSession.h"
#include "standalone/znKernel/KernelState.h"
#include "standalone/znUtils/CallTrace.h"

#include <algorithm>

namespace
{

/// The materials of the scene's pool; empty while it has none.
std::vector<osg::MaterialPtr> pooled()
{
    const osg::NodePtr node = znStandaloneSession::require().kernel().materialPool;
    const auto pool = node ? osg::fcCast<osg::MaterialPool>(node->getCore()) : osg::MaterialPoolPtr();
    return pool ? pool->getMaterials() : std::vector<osg::MaterialPtr>();
}

QString nameOf(const osg::MaterialPtr& material)
{
    return QString::fromUtf8(osg::getName(material));
}

/// What was noted under `name`, null when nothing was or when it does not hold any more.
osg::MaterialPtr noted(const QString& name, const std::vector<osg::MaterialPtr>& materials)
{
    const unsigned id = znStandaloneSession::require().kernel().materials.idsByName.value(name);
    const auto material = osg::fcCast<osg::Material>(osg::FieldContainerFactory::the()->getContainer(id));
    const bool isThere = std::find(materials.begin(), materials.end(), material) != materials.end();
    return isThere && nameOf(material) == name ? material : osg::MaterialPtr();
}

} // namespace

znMaterialPtr::znMaterialPtr() = default;
znMaterialPtr::znMaterialPtr(const osg::MaterialPtr& material) : m_material(material) {}
znMaterialPtr::znMaterialPtr(const znMaterialPtr&) = default;
znMaterialPtr& znMaterialPtr::operator=(const znMaterialPtr&) = default;
znMaterialPtr::~znMaterialPtr() = default;

znMaterialPtr znMaterials::findMaterial(const QString& name)
{
    const zn::TracedCall call("znMaterials::findMaterial", name);
    const std::vector<osg::MaterialPtr> materials = pooled();
    if (const osg::MaterialPtr known = noted(name, materials))
        return known;
    const auto found = std::find_if(materials.begin(), materials.end(),
                                    [&name](const osg::MaterialPtr& material) { return nameOf(material) == name; });
    return found == materials.end() ? osg::MaterialPtr() : *found;
}

void znMaterials::initFindCache()
{
    const zn::TracedCall call("znMaterials::initFindCache");
    QHash<QString, unsigned>& ids = znStandaloneSession::require().kernel().materials.idsByName;
    ids.clear();
    for (const osg::MaterialPtr& material : pooled())
        if (!ids.contains(nameOf(material)))
            ids.insert(nameOf(material), material->getContainerId());
}

std::set<unsigned> znMaterials::getMaterialPoolMaterialIds()
{
    const zn::TracedCall call("znMaterials::getMaterialPoolMaterialIds");
    std::set<unsigned> ids;
    for (const osg::MaterialPtr& material : pooled())
        ids.insert(material->getContainerId());
    return ids;
}
