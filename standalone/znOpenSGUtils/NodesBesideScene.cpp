#include "standalone/znOpenSGUtils/NodesBesideScene.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/MaterialPool.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "standalone/session/Session.h"

namespace zn::nodes
{

NodesBesideScene& nodesBesideScene()
{
    return Session::require().state<NodesBesideScene>();
}

osg::NodePtr poolOfScene(bool create)
{
    osg::RefPtr<osg::NodePtr>& pool = nodesBesideScene().materialPool;
    if (!pool && create) {
        pool = osg::makeNodeFor(osg::MaterialPool::create());
        osg::setName(pool, "Materials");
    }
    return pool;
}

osg::NodePtr materialPoolBelow(const osg::NodePtr& root)
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

} // namespace zn::nodes
