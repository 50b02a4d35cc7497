#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Names.h"
#include "host/znKernel/znFileIO.h"
#include "host/znKernelServices/zndReferenceNode.h"
#include "host/znOpenSGExt/ExtReference.h"

#include <QFileInfo>

namespace
{

/// The session that all wrappers of this host belong to.
constexpr std::uint64_t onlySession = 1;

osg::FieldContainerPtr containerOf(const zndObject& object)
{
    return osg::FieldContainerFactory::the()->getContainer(static_cast<unsigned>(object.getObjectId()));
}

osg::NodePtr nodeOf(const zndObject& object)
{
    return osg::fcCast<osg::Node>(containerOf(object));
}

osg::ExtReferencePtr referenceOf(const zndObject& object)
{
    const osg::NodePtr node = nodeOf(object);
    return node ? osg::fcCast<osg::ExtReference>(node->getCore()) : osg::ExtReferencePtr();
}

/// The wrapper class for what `object` is in the scene.
const QMetaObject* wrapperClassOf(const zndObject& object)
{
    if (referenceOf(object))
        return &zndReferenceNode::staticMetaObject;
    if (nodeOf(object))
        return &zndNode::staticMetaObject;
    return containerOf(object) ? &zndSceneObject::staticMetaObject : &zndObject::staticMetaObject;
}

} // namespace

zndObject::zndObject() = default;

zndObject::zndObject(std::uint64_t objectId) : m_sessionId(objectId == 0 ? 0 : onlySession), m_objectId(objectId) {}

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
    return wrapperClassOf(*this)->inherits(type);
}

bool zndSceneObject::isValid() const
{
    return static_cast<bool>(containerOf(*this));
}

void zndNode::setName(const QString& name)
{
    osg::setName(nodeOf(*this), name.toStdString());
}

zndReferenceNode::zndReferenceNode(std::uint64_t objectId) : zndNode(objectId) {}

bool zndReferenceNode::hasSmartReference() const
{
    const osg::ExtReferencePtr reference = referenceOf(*this);
    return reference && reference->getSmartFile() && !reference->getSmartFile()->getPath().empty();
}

void zndReferenceNode::setSmartPath(const QString& path)
{
    const osg::ExtReferencePtr reference = referenceOf(*this);
    if (!reference)
        return;
    const osg::FileReferencePtr file = osg::FileReferenceBase::create();
    file->setPath(QFileInfo(path).absoluteFilePath().toStdString());
    osg::beginEditCP(reference, osg::ExtReferenceBase::SmartFileFieldMask, 1);
    reference->setSmartFile(file);
    osg::endEditCP(reference, osg::ExtReferenceBase::SmartFileFieldMask, 1);
}

void zndReferenceNode::loadSmartReference()
{
    if (!hasSmartReference())
        return;
    const osg::NodePtr node = nodeOf(*this);
    const osg::ExtReferencePtr reference = referenceOf(*this);
    const osg::RefPtr<osg::NodePtr> loaded(osg::Node::create());
    const QString path = QString::fromStdString(reference->getSmartFile()->getPath());
    if (znFileIO::load({path}, loaded, false, false, false) == 0)
        return;
    osg::beginEditCP(node, osg::Node::ChildrenFieldMask, 1);
    while (node->getNChildren() > 0)
        node->subChild(node->getChild(0));
    while (loaded->getNChildren() > 0)
        node->addChild(loaded->getChild(0));
    osg::endEditCP(node, osg::Node::ChildrenFieldMask, 1);
    osg::beginEditCP(reference, osg::ExtReferenceBase::StateFieldMask, 1);
    reference->setState(2);
    osg::endEditCP(reference, osg::ExtReferenceBase::StateFieldMask, 1);
}
