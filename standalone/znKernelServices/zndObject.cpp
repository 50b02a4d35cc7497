#include "host/znKernelServices/zndObject.h"

#include "host/znKernelServices/zndCameraNode.h"
#include "host/znKernelServices/zndReferenceNode.h"
#include "standalone/znKernelServices/WrappedNodes.h"

namespace
{

/// The wrapper class for what `object` is in the scene; null when it is nothing.
const QMetaObject* wrapperClassOf(const zndObject& object)
{
    if (zn::services::referenceOf(object))
        return &zndReferenceNode::staticMetaObject;
    if (zn::services::cameraOf(object))
        return &zndCameraNode::staticMetaObject;
    if (zn::services::nodeOf(object))
        return &zndNode::staticMetaObject;
    return zn::services::containerOf(object) ? &zndSceneObject::staticMetaObject : nullptr;
}

} // namespace

zndObject::zndObject() = default;

zndObject::zndObject(std::uint64_t objectId)
    : m_sessionId(objectId == 0 ? 0 : zn::services::livingSessionId()), m_objectId(objectId)
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
