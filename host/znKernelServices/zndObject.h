#pragma once

#include "host/HostExport.h"

#include <QMetaObject>
#include <QObject>

#include <cstdint>

/// A small copyable value that stands for an object of the scene: what scripts and services hold instead of pointers.
///
/// It has two identity values: the session that the object belongs to, and the object's id in it. Copying a wrapper
/// copies these two and nothing of `QObject`: no parent, no connections.
class ZN_HOST_EXPORT zndObject : public QObject
{
    Q_OBJECT

public:
    /// Stands for nothing.
    zndObject();
    /// Stands for an object of the living session; 0 for nothing.
    explicit zndObject(std::uint64_t objectId);
    /// Stands for the same object; it has no parent, whatever the other one has.
    zndObject(const zndObject& other);
    ~zndObject() override;
    /// Stands for the same object from now on; parent and connections of both stay.
    zndObject& operator=(const zndObject& other);

    /// Makes this wrapper stand for the object with these identity values.
    void assign(std::uint64_t sessionId, std::uint64_t objectId);

    /// The session that the object belongs to, not necessarily the living one.
    std::uint64_t getSessionId() const { return m_sessionId; }
    /// 0 when it stands for nothing.
    std::uint64_t getObjectId() const { return m_objectId; }
    /// Whether it stands for nothing. An object that is gone is something still, see zndSceneObject::isValid().
    bool isNull() const { return m_objectId == 0; }

    /// Whether the object is of this wrapper class or of one derived from it. What counts is what the object is in the
    /// scene, not the class of this wrapper: a node with a reference core is a `zndReferenceNode` behind any of them.
    /// What is gone is of no class.
    virtual bool isTypeOf(const QMetaObject* type) const;

private:
    std::uint64_t m_sessionId = 0;
    std::uint64_t m_objectId = 0;
};
