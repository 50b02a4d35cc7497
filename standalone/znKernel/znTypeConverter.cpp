#include "host/znKernel/znTypeConverter.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/FieldContainerFactory.h"

osg::NodePtr znTypeConverter::convertNode(const zndNode& node)
{
    const auto id = static_cast<unsigned>(node.getObjectId());
    return osg::fcCast<osg::Node>(osg::FieldContainerFactory::the()->getContainer(id));
}

zndNode znTypeConverter::convertNode(const osg::NodePtr& node)
{
    return zndNode(node ? node->getContainerId() : 0);
}
