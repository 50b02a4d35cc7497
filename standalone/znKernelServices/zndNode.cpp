#include "host/znKernelServices/zndNode.h"

#include "host/OSGSystem/Names.h"
#include "standalone/znKernelServices/WrappedNodes.h"
#include "standalone/znUtils/CallTrace.h"

void zndNode::setName(const QString& name)
{
    const zn::TracedCall call("zndNode::setName", getObjectId(), name);
    osg::setName(zn::services::nodeOf(*this), name.toStdString());
}
