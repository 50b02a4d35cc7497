#include "host/znKernel/znScenegraph.h"

#include "host/OSGSystem/Cast.h"
#include "standalone/session/znStandaloneSession.h"
#include "standalone/znOpenSGUtils/NodesBesideScene.h"
#include "standalone/znUtils/CallTrace.h"

bool znScenegraph::isEmpty()
{
    const zn::TracedCall call("znScenegraph::isEmpty");
    return getRoot()->getNChildren() == 0;
}

osg::NodePtr znScenegraph::getRoot()
{
    const zn::TracedCall call("znScenegraph::getRoot");
    return znStandaloneSession::require().sceneRoot();
}

osg::NodePtr znScenegraph::getSelectedNode()
{
    const zn::TracedCall call("znScenegraph::getSelectedNode");
    return znStandaloneSession::require().selectedNode();
}

osg::MaterialPoolPtr znScenegraph::getMaterialPool()
{
    const zn::TracedCall call("znScenegraph::getMaterialPool");
    return osg::fcCast<osg::MaterialPool>(zn::poolOfScene(true)->getCore());
}
