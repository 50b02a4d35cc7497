#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/MaterialPool.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znKernel/znScenegraph.h"
#include "host/znOpenSGUtils/znMaterials.h"
#include "standalone/session/znStandaloneSession.h"
#include "standalone/znKernel/KernelState.h"
#include "standalone/znUtils/CallTrace.h"

namespace
{

osg::NodePtr poolBelow(const osg::NodePtr& root)
{
    osg::NodePtr found;
    osg::traverse(root, [&found](const osg::NodePtr& node) {
        if (!node || !osg::fcCast<osg::MaterialPool>(node->getCore()))
            return osg::Action::Continue;
        found = node;
        return osg::Action::Quit;
    });
    return found;
}

osg::NodePtr poolOfScene(bool create)
{
    osg::RefPtr<osg::NodePtr>& pool = znStandaloneSession::require().kernel().materialPool;
    if (!pool && create) {
        pool = osg::makeNodeFor(osg::MaterialPool::create());
        osg::setName(pool, "Materials");
    }
    return pool;
}

} // namespace

osg::NodePtr znMaterials::findMaterialPool(const osg::NodePtr& root, bool below, bool create, PoolSearch search)
{
    const zn::TracedCall call("znMaterials::findMaterialPool", root, below, create, static_cast<int>(search));
    if (!root)
        return osg::NodePtr();
    if (below)
        if (const osg::NodePtr found = poolBelow(root))
            return found;
    return root == znStandaloneSession::require().sceneRoot() ? poolOfScene(create) : osg::NodePtr();
}

osg::MaterialPoolPtr znScenegraph::getMaterialPool()
{
    const zn::TracedCall call("znScenegraph::getMaterialPool");
    return osg::fcCast<osg::MaterialPool>(poolOfScene(true)->getCore());
}
