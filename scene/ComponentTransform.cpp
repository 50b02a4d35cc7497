#include "host/OSGSystem/ComponentTransform.h"

#include "scene/Attachments.h"
#include "scene/MatrixMath.h"

namespace osg
{

FieldContainerType ComponentTransformBase::_type("ComponentTransform", &TransformBase::_type);

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
    ComponentTransform* result = copyWithAttachments<ComponentTransform>(*this);
    copyTransformTo(*result);
    return ComponentTransformPtr(result);
}

} // namespace osg
