#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Names.h"
#include "host/znKernelServices/zndCameraNode.h"
#include "host/znKernelServices/zndReferenceNode.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "host/znOpenSGUberCamera/UberCamera.h"
#include "standalone/session/znStandaloneSession.h"
#include "standalone/znKernel/TreeReading.h"
#include "standalone/znKernelServices/WrappedNodes.h"
#include "standalone/znUtils/CallTrace.h"

#include <QFileInfo>

#include <limits>

using zn::containerOf;
using zn::nodeOf;

namespace
{

/// 0 stands for no session.
std::uint64_t livingSessionId()
{
    const znStandaloneSession* session = znStandaloneSession::current();
    return session ? session->id() : 0;
}

osg::ExtReferencePtr referenceOf(const zndObject& object)
{
    const osg::NodePtr node = nodeOf(object);
    return node ? osg::fcCast<osg::ExtReference>(node->getCore()) : osg::ExtReferencePtr();
}

/// The wrapper class for what `object` is in the scene; null when it is nothing.
const QMetaObject* wrapperClassOf(const zndObject& object)
{
    if (referenceOf(object))
        return &zndReferenceNode::staticMetaObject;
    const osg::NodePtr node = nodeOf(object);
    if (node && osg::fcCast<osg::UberCamera>(node->getCore()))
        return &zndCameraNode::staticMetaObject;
    if (node)
        return &zndNode::staticMetaObject;
    return containerOf(object) ? &zndSceneObject::staticMetaObject : nullptr;
}

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

osg::FieldContainerPtr zn::containerOf(const zndObject& object)
{
    if (object.getSessionId() != livingSessionId() || object.getObjectId() > std::numeric_limits<unsigned>::max())
        return {};
    return osg::FieldContainerFactory::the()->getContainer(static_cast<unsigned>(object.getObjectId()));
}

osg::NodePtr zn::nodeOf(const zndObject& object)
{
    return osg::fcCast<osg::Node>(containerOf(object));
}

zndObject::zndObject() = default;

zndObject::zndObject(std::uint64_t objectId) : m_sessionId(objectId == 0 ? 0 : livingSessionId()), m_objectId(objectId)
{
}

zndObject::zndObject(const zndObject& other)
    : QObject(nullptr), m_sessionId(other.m_sessionId), m_objectId(other.m_objectId)
{
}

zndObject::~zndObject() = default;

zndObject& zndObject::operator=(const zndObject& other)
{
    assign(other.m_sessionId, other.m_objectId);
    return *this;
}

void zndObject::assign(std::uint64_t sessionId, std::uint64_t objectId)
{
    m_sessionId = sessionId;
    m_objectId = objectId;
}

bool zndObject::isTypeOf(const QMetaObject* type) const
{
    const QMetaObject* wrapperClass = wrapperClassOf(*this);
    return wrapperClass && wrapperClass->inherits(type);
}

bool zndSceneObject::isValid() const
{
    return static_cast<bool>(containerOf(*this));
}

void zndNode::setName(const QString& name)
{
    const zn::TracedCall call("zndNode::setName", getObjectId(), name);
    osg::setName(nodeOf(*this), name.toStdString());
}

zndReferenceNode::zndReferenceNode(std::uint64_t objectId) : zndNode(objectId) {}

bool zndReferenceNode::hasSmartReference() const
{
    const zn::TracedCall call("zndReferenceNode::hasSmartReference", getObjectId());
    const osg::ExtReferencePtr reference = referenceOf(*this);
    return reference && reference->getSmartFile() && !reference->getSmartFile()->getPath().empty();
}

void zndReferenceNode::setSmartPath(const QString& path)
{
    const zn::TracedCall call("zndReferenceNode::setSmartPath", getObjectId(), path);
    const osg::ExtReferencePtr reference = referenceOf(*this);
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
    const osg::NodePtr node = nodeOf(*this);
    const osg::ExtReferencePtr reference = referenceOf(*this);
    const QString path = QString::fromStdString(reference->getSmartFile()->getPath());
    const osg::RefPtr<osg::NodePtr> loaded(zn::readTree(znStandaloneSession::require(), path).value_or(osg::NodePtr()));
    if (!loaded)
        return;
    exchangeChildren(node, loaded);
    osg::beginEditCP(reference, osg::ExtReferenceBase::StateFieldMask, 1);
    reference->setState(2);
    osg::endEditCP(reference, osg::ExtReferenceBase::StateFieldMask, 1);
}
