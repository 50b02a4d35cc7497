#include "host/znKernelServices/zndReferenceNode.h"

#include "host/OSGSystem/Edit.h"
#include "standalone/loading/TreeReading.h"
#include "standalone/session/Session.h"
#include "standalone/znKernelServices/WrappedNodes.h"
#include "standalone/znUtils/CallTrace.h"

#include <QFileInfo>

namespace
{

/// Gives `node` the children of `source` in place of its own.
void exchangeChildren(const osg::NodePtr& node, const osg::NodePtr& source)
{
    osg::beginEditCP(node, osg::Node::ChildrenFieldMask, 1);
    while (node->getNChildren() > 0)
        node->subChild(node->getChild(node->getNChildren() - 1));
    while (source->getNChildren() > 0)
        node->addChild(source->getChild(0));
    osg::endEditCP(node, osg::Node::ChildrenFieldMask, 1);
}

} // namespace

zndReferenceNode::zndReferenceNode(std::uint64_t objectId) : zndNode(objectId) {}

bool zndReferenceNode::hasSmartReference() const
{
    const zn::TracedCall call("zndReferenceNode::hasSmartReference", getObjectId());
    const osg::ExtReferencePtr reference = zn::services::referenceOf(*this);
    return reference && reference->getSmartFile() && !reference->getSmartFile()->getPath().empty();
}

void zndReferenceNode::setSmartPath(const QString& path)
{
    const zn::TracedCall call("zndReferenceNode::setSmartPath", getObjectId(), path);
    const osg::ExtReferencePtr reference = zn::services::referenceOf(*this);
    if (!reference)
        return;
    const osg::FileReferencePtr file = osg::FileReferenceBase::create();
    osg::beginEditCP(file, osg::FileReferenceBase::PathFieldMask, 1);
    file->setPath(QFileInfo(path).absoluteFilePath().toStdString());
    osg::endEditCP(file, osg::FileReferenceBase::PathFieldMask, 1);
    osg::beginEditCP(reference, osg::ExtReferenceBase::SmartFileFieldMask, 1);
    reference->setSmartFile(file);
    osg::endEditCP(reference, osg::ExtReferenceBase::SmartFileFieldMask, 1);
}

void zndReferenceNode::loadSmartReference()
{
    const zn::TracedCall call("zndReferenceNode::loadSmartReference", getObjectId());
    if (!hasSmartReference())
        return;
    const osg::NodePtr node = zn::services::nodeOf(*this);
    const osg::ExtReferencePtr reference = zn::services::referenceOf(*this);
    const QString path = QString::fromStdString(reference->getSmartFile()->getPath());
    const osg::RefPtr<osg::NodePtr> loaded(
        zn::loading::readTree(zn::Session::require(), path).value_or(osg::NodePtr()));
    if (!loaded)
        return;
    exchangeChildren(node, loaded);
    osg::beginEditCP(reference, osg::ExtReferenceBase::StateFieldMask, 1);
    reference->setState(2);
    osg::endEditCP(reference, osg::ExtReferenceBase::StateFieldMask, 1);
}
