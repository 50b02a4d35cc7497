#include "host/znOpenSGExt/NodeUtils.h"

#include "host/OSGSystem/Names.h"

void NodeUtils::setName(const osg::NodePtr& node, const char* name, bool replace)
{
    if (node && (replace || !osg::getName(node)))
        osg::setName(node, name ? name : "");
}
