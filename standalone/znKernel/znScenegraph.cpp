#include "host/znKernel/znScenegraph.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "standalone/session/Session.h"
#include "standalone/znKernel/NodeUnsharing.h"
#include "standalone/znKernel/ReferenceReload.h"
#include "standalone/znKernel/SceneGround.h"
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
    return zn::Session::require().sceneRoot();
}

osg::NodePtr znScenegraph::getSelectedNode()
{
    const zn::TracedCall call("znScenegraph::getSelectedNode");
    return zn::Session::require().selectedNode();
}

bool znScenegraph::reloadFromFile(const osg::NodePtr& reference, osg::NodePtr& loaded,
                                  std::vector<osg::NodePtr>& contents, bool replace, bool merge, bool select)
{
    const zn::TracedCall call("znScenegraph::reloadFromFile", reference, replace, merge, select);
    zn::Session& session = zn::Session::require();
    if (!zn::kernel::reloadReference(session, reference, contents, replace))
        return false;
    loaded = reference;
    if (select)
        session.select(reference);
    return true;
}

osg::NodePtr znScenegraph::environmentGeometrySwitch()
{
    const zn::TracedCall call("znScenegraph::environmentGeometrySwitch");
    return zn::nodes::nodesBesideScene().environmentSwitch;
}

osg::NodePtr znScenegraph::createEnvironmentGeometrySwitch(const osg::NodePtr& content)
{
    const zn::TracedCall call("znScenegraph::createEnvironmentGeometrySwitch", content);
    const osg::NodePtr made = osg::makeNodeFor(osg::Group::create());
    osg::setName(made, "EnvironmentGeometrySwitch");
    made->setActive(false);
    made->addChild(content ? content : zn::kernel::makeGroundBelow(zn::Session::require().sceneRoot()));
    zn::nodes::nodesBesideScene().environmentSwitch = made;
    return made;
}

znNodePtr znScenegraph::unshareNode(const osg::NodePtr& node, DuplicateBehaviour behaviour, bool recursive,
                                    bool keepMaterials)
{
    const zn::TracedCall call("znScenegraph::unshareNode", node, int(behaviour), recursive, keepMaterials);
    zn::kernel::giveOwnCores(node, recursive, keepMaterials);
    return znNodePtr(node);
}

osg::MaterialPoolPtr znScenegraph::getMaterialPool()
{
    const zn::TracedCall call("znScenegraph::getMaterialPool");
    return osg::fcCast<osg::MaterialPool>(zn::nodes::poolOfScene(true)->getCore());
}
