#include "standalone/znOpenSGUtils/SceneMaterials.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/MaterialPool.h"
#include "host/OSGSystem/Names.h"
#include "scene/NameRevisions.h"
#include "standalone/session/Session.h"
#include "standalone/znOpenSGUtils/NodesBesideScene.h"

#include <QHash>

#include <cstdint>
#include <utility>

namespace zn::nodes
{

namespace
{

/// From a name to the first material of the pool that bears it, as of `revision`.
struct NamedMaterials {
    std::uint64_t revision = 0;
    QHash<QString, osg::MaterialPtr> byName;
};

QString nameOf(const osg::MaterialPtr& material)
{
    return QString::fromUtf8(osg::getName(material));
}

/// Made anew only when names or the pool have changed: imports prepare a find for each of thousands of bookmarks.
const QHash<QString, osg::MaterialPtr>& namedMaterials()
{
    auto& [revision, byName] = Session::require().state<NamedMaterials>();
    if (std::exchange(revision, osg::materialNamesRevision()) == osg::materialNamesRevision())
        return byName;
    byName.clear();
    for (const osg::MaterialPtr& material : sceneMaterials())
        if (const QString name = nameOf(material); !byName.contains(name))
            byName.insert(name, material);
    return byName;
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
    namedMaterials();
}

osg::MaterialPtr findSceneMaterial(const QString& name)
{
    return namedMaterials().value(name);
}

} // namespace zn::nodes
