#include "host/OSGSystem/Transform3D.h"
#include "standalone/OSGSystem/Attachments.h"
#include "standalone/OSGSystem/MatrixMath.h"

namespace osg
{

FieldContainerType Group::_type("Group", &NodeCore::_type);
FieldContainerType TransformBase::_type("Transform", &Group::_type);
FieldContainerType ComponentTransformBase::_type("ComponentTransform", &TransformBase::_type);
FieldContainerType Transform3DBase::_type("Transform3D", &ComponentTransformBase::_type);

namespace
{

/// A fresh object of class `T` with the attachments of `from`.
template <class T>
T* freshCopy(const AttachmentContainer& from)
{
    T* result = T::create().get();
    AttachmentAccess::copyAll(from, *result);
    return result;
}

} // namespace

GroupPtr Group::create()
{
    return GroupPtr(new Group);
}

bool Group::equalFields(const FieldContainer& other) const
{
    return equalAttachments(static_cast<const Group&>(other));
}

FieldContainerPtr Group::copy() const
{
    return GroupPtr(freshCopy<Group>(*this));
}

TransformPtr TransformBase::create()
{
    return TransformPtr(new Transform);
}

void TransformBase::setMatrix(const Matrix& matrix)
{
    m_matrix = matrix;
    matrixChanged();
    fieldChanged(MatrixFieldMask);
}

bool TransformBase::equalFields(const FieldContainer& other) const
{
    return m_matrix == static_cast<const TransformBase&>(other).m_matrix && Group::equalFields(other);
}

FieldContainerPtr TransformBase::copy() const
{
    Transform* result = freshCopy<Transform>(*this);
    static_cast<TransformBase*>(result)->m_matrix = m_matrix;
    return TransformPtr(result);
}

ComponentTransformPtr ComponentTransformBase::create()
{
    return ComponentTransformPtr(new ComponentTransform);
}

Vec3f ComponentTransformBase::getTranslation() const
{
    return {m_matrix[12], m_matrix[13], m_matrix[14]};
}

void ComponentTransformBase::setTranslation(const Vec3f& translation)
{
    m_matrix[12] = translation.x;
    m_matrix[13] = translation.y;
    m_matrix[14] = translation.z;
    fieldChanged(TranslationFieldMask);
}

Quaternion ComponentTransformBase::getRotation() const
{
    decompose();
    return m_rotation;
}

void ComponentTransformBase::setRotation(const Quaternion& rotation)
{
    decompose();
    m_rotation = rotation;
    compose();
    fieldChanged(RotationFieldMask);
}

Vec3f ComponentTransformBase::getScale() const
{
    decompose();
    return m_scale;
}

void ComponentTransformBase::setScale(const Vec3f& scale)
{
    decompose();
    m_scale = scale;
    compose();
    fieldChanged(ScaleFieldMask);
}

void ComponentTransformBase::matrixChanged()
{
    m_componentsKnown = false;
}

void ComponentTransformBase::decompose() const
{
    if (m_componentsKnown)
        return;
    const Components components = decomposed(m_matrix);
    m_rotation = components.rotation;
    m_scale = components.scale;
    m_scaleOrientation = components.scaleOrientation;
    m_componentsKnown = true;
}

void ComponentTransformBase::compose()
{
    m_matrix = composed({getTranslation(), m_rotation, m_scale, m_scaleOrientation});
}

void ComponentTransformBase::copyTransformTo(ComponentTransformBase& target) const
{
    target.m_matrix = m_matrix;
    target.m_rotation = m_rotation;
    target.m_scale = m_scale;
    target.m_scaleOrientation = m_scaleOrientation;
    target.m_componentsKnown = m_componentsKnown;
}

FieldContainerPtr ComponentTransformBase::copy() const
{
    ComponentTransform* result = freshCopy<ComponentTransform>(*this);
    copyTransformTo(*result);
    return ComponentTransformPtr(result);
}

Transform3DPtr Transform3DBase::create()
{
    return Transform3DPtr(new Transform3D);
}

bool Transform3DBase::equalFields(const FieldContainer& other) const
{
    return m_flags == static_cast<const Transform3DBase&>(other).m_flags && ComponentTransform::equalFields(other);
}

FieldContainerPtr Transform3DBase::copy() const
{
    Transform3D* result = freshCopy<Transform3D>(*this);
    copyTransformTo(*result);
    static_cast<Transform3DBase*>(result)->m_flags = m_flags;
    return Transform3DPtr(result);
}

void Transform3D::addFlag(std::uint32_t flag)
{
    m_flags |= flag;
    fieldChanged(FlagsFieldMask);
}

FieldMask Transform3D::getCombinedTransformAttributesMask()
{
    return MatrixFieldMask | TranslationFieldMask | RotationFieldMask | ScaleFieldMask;
}

void Transform3D::syncWith(const Transform3DPtr& source, FieldMask mask)
{
    if (!source)
        return;
    if (mask & MatrixFieldMask) {
        source->copyTransformTo(*this);
        fieldChanged(mask & getCombinedTransformAttributesMask());
    } else {
        if (mask & RotationFieldMask)
            setRotation(source->getRotation());
        if (mask & ScaleFieldMask)
            setScale(source->getScale());
        if (mask & TranslationFieldMask)
            setTranslation(source->getTranslation());
    }
    if (mask & FlagsFieldMask) {
        m_flags = source->getFlags();
        fieldChanged(FlagsFieldMask);
    }
}

} // namespace osg
