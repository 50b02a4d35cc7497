#include "host/OSGSystem/Transform3D.h"

#include "scene/Attachments.h"

namespace osg
{

FieldContainerType Transform3DBase::_type("Transform3D", &ComponentTransformBase::_type);

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
    Transform3D* result = copyWithAttachments<Transform3D>(*this);
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
