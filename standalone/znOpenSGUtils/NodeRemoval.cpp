#include "standalone/znOpenSGUtils/NodeRemoval.h"

#include "host/OSGSystem/Edit.h"
#include "standalone/znOpenSGUtils/NodesBesideScene.h"

void zn::nodes::removeNode(const osg::NodePtr& node)
{
    if (!node)
        return;
    const osg::RefPtr<osg::NodePtr> held(node);
    if (const osg::NodePtr parent = node->getParent()) {
        osg::beginEditCP(parent, osg::Node::ChildrenFieldMask, 1);
        parent->subChild(node);
        osg::endEditCP(parent, osg::Node::ChildrenFieldMask, 1);
    }
    osg::RefPtr<osg::NodePtr>& environmentSwitch = nodesBesideScene().environmentSwitch;
    if (environmentSwitch.get() == node)
        environmentSwitch = osg::NodePtr();
}
