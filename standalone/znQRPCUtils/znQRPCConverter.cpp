#include "host/znQRPCUtils/znQRPCConverter.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "standalone/znUtils/CallTrace.h"

osg::NodePtr znQRPCConverter::idToNode(unsigned id)
{
    const zn::TracedCall call("znQRPCConverter::idToNode", id);
    return osg::fcCast<osg::Node>(osg::FieldContainerFactory::the()->getContainer(id));
}
