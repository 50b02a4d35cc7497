#include "standalone/znOpenSGUtils/SceneMaterials.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/MaterialPool.h"
#include "host/OSGSystem/Names.h"
#include "standalone/session/Session.h"
#include "standalone/znOpenSGUtils/NodesBesideScene.h"

#include <QHash>

#include <algorithm>

namespace zn::nodes
{

namespace
{

/// From a name to the id of the first material of the pool that bore it when the names were noted.
struct NotedNames {
    QHash<QString, unsigned> ids;
};

QString nameOf(const osg::MaterialPtr& material)
{
    return QString::fromUtf8(osg::getName(material));
}

/// What was noted under `name`, null when nothing was or when it does not hold any more.
osg::MaterialPtr noted(const QString& name, const std::vector<osg::MaterialPtr>& materials)
{
    const unsigned id = Session::require().state<NotedNames>().ids.value(name);
    const auto material = osg::fcCast<osg::Material>(osg::FieldContainerFactory::the()->getContainer(id));
    const bool isThere = std::find(materials.begin(), materials.end(), material) != materials.end();
    return isThere && nameOf(material) == name ? material : osg::MaterialPtr();
}

} // namespace

std::vector<osg::MaterialPtr> sceneMaterials()
{
    const osg::NodePtr node = poolOfScene(false);
    const auto pool = node ? osg::fcCast<osg::MaterialPool>(node->getCore()) : osg::MaterialPoolPtr();
    return pool ? pool->getMaterials() : std::vector<osg::MaterialPtr>();
}

void noteSceneMaterialNames()
{
    QHash<QString, unsigned>& ids = Session::require().state<NotedNames>().ids;
    ids.clear();
    for (const osg::MaterialPtr& material : sceneMaterials())
        if (!ids.contains(nameOf(material)))
            ids.insert(nameOf(material), material->getContainerId());
}

osg::MaterialPtr findSceneMaterial(const QString& name)
{
    const std::vector<osg::MaterialPtr> materials = sceneMaterials();
    if (const osg::MaterialPtr known = noted(name, materials))
        return known;
    const auto found = std::find_if(materials.begin(), materials.end(),
                                    [&name](const osg::MaterialPtr& material) { return nameOf(material) == name; });
    return found == materials.end() ? osg::MaterialPtr() : *found;
}

} // namespace zn::nodes
