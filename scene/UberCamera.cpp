#include "host/znOpenSGUberCamera/UberCamera.h"

#include "scene/Attachments.h"

namespace osg
{

FieldContainerType UberCameraBase::_type("UberCamera", &Transform3DBase::_type);

UberCameraPtr UberCameraBase::create()
{
    return UberCameraPtr(new UberCamera);
}

void UberCameraBase::setProjection(Projection projection)
{
    m_projection = projection;
    fieldChanged(ProjectionFieldMask);
}

void UberCameraBase::setFieldOfView(float degrees)
{
    m_fieldOfView = degrees;
    fieldChanged(FieldOfViewFieldMask);
}

void UberCameraBase::setHeight(float millimetres)
{
    m_height = millimetres;
    fieldChanged(HeightFieldMask);
}

void UberCameraBase::setNear(float millimetres)
{
    m_near = millimetres;
    fieldChanged(NearFieldMask);
}

void UberCameraBase::setFar(float millimetres)
{
    m_far = millimetres;
    fieldChanged(FarFieldMask);
}

bool UberCameraBase::equalFields(const FieldContainer& other) const
{
    const auto& camera = static_cast<const UberCameraBase&>(other);
    return m_projection == camera.m_projection && m_fieldOfView == camera.m_fieldOfView &&
           m_height == camera.m_height && m_near == camera.m_near && m_far == camera.m_far &&
           Transform3D::equalFields(other);
}

FieldContainerPtr UberCameraBase::copy() const
{
    auto* result = new UberCamera;
    AttachmentAccess::copyAll(*this, *result);
    copyTransformTo(*result);
    UberCameraBase& fields = *result;
    fields.m_flags = m_flags;
    fields.m_projection = m_projection;
    fields.m_fieldOfView = m_fieldOfView;
    fields.m_height = m_height;
    fields.m_near = m_near;
    fields.m_far = m_far;
    return UberCameraPtr(result);
}

} // namespace osg
