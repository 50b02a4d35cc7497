#include "host/znVariants/znNodeVariant.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Names.h"

znNodeVariant::znNodeVariant(const osg::NodePtr& node)
    : znVariant(QString::fromUtf8(osg::getName(node)), node->getContainerId())
{
}

osg::NodePtr znNodeVariant::getNode() const
{
    return osg::fcCast<osg::Node>(osg::FieldContainerFactory::the()->getContainer(getTargetId()));
}

bool znNodeVariant::apply(const QString& stateName)
{
    const osg::NodePtr node = getNode();
    const bool isEnabled = stateName == QLatin1String("!Enable");
    if (!node || (!isEnabled && stateName != QLatin1String("!Disable")))
        return false;
    osg::beginEditCP(node, osg::Node::ActiveFieldMask, 1);
    node->setActive(isEnabled);
    osg::endEditCP(node, osg::Node::ActiveFieldMask, 1);
    return true;
}
