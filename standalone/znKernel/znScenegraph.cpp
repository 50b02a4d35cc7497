#include "host/znKernel/znScenegraph.h"

#include "standalone/session/znStandaloneSession.h"

bool znScenegraph::isEmpty()
{
    return getRoot()->getNChildren() == 0;
}

osg::NodePtr znScenegraph::getRoot()
{
    return znStandaloneSession::require().sceneRoot();
}

osg::NodePtr znScenegraph::getSelectedNode()
{
    return znStandaloneSession::require().selectedNode();
}
