// Services, interfaces and the objects that stand for nodes.
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/Transform3D.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znInterfaces/znInterfaceFactory.h"
#include "host/znInterfaces/znReferenceInterface.h"
#include "host/znKernel/znTypeConverter.h"
#include "host/znKernelServices/znKernelServiceFactory.h"
#include "host/znKernelServices/zndReferenceNode.h"
#include "host/znOpenSGUtils/znNodeUtils.h"

znBaseService::~znBaseService() = default;

znKernelServiceFactory* znKernelServiceFactory::the()
{
    static znKernelServiceFactory factory;
    return &factory;
}

znInterfaceObject::znInterfaceObject() = default;
znInterfaceObject::~znInterfaceObject() = default;
znReferenceInterface::znReferenceInterface() = default;
znReferenceInterface::~znReferenceInterface() = default;

znInterfaceFactory* znInterfaceFactory::the()
{
    static znInterfaceFactory factory;
    return &factory;
}
znInterfaceObject* znInterfaceFactory::get(std::type_index) const
{
    return nullptr;
}

zndObject::zndObject() = default;
zndObject::zndObject(std::uint64_t objectId) : m_objectId(objectId) {}
zndObject::zndObject(const zndObject& other) : QObject(), m_sessionId(other.m_sessionId), m_objectId(other.m_objectId)
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
    return metaObject()->inherits(type);
}

bool zndSceneObject::isValid() const
{
    return !isNull();
}

void zndNode::setName(const QString& name)
{
    osg::setName(znTypeConverter::convertNode(*this), name.toStdString());
}

zndReferenceNode::zndReferenceNode(std::uint64_t objectId) : zndNode(objectId) {}
bool zndReferenceNode::hasSmartReference() const
{
    return false;
}
void zndReferenceNode::setSmartPath(const QString&) {}
void zndReferenceNode::loadSmartReference() {}

/// A node that has a core of another kind stays as it is.
bool znNodeUtils::convertTransformToTransform3D(const osg::NodePtr& node)
{
    return node && dynamic_cast<osg::Transform3D*>(node->getCore().get()) != nullptr;
}
