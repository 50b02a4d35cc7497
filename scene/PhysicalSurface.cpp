#include "host/OSGSystem/PhysicalSurface.h"

#include <utility>

namespace osg
{

FieldContainerType PhysicalSurfaceAttachmentBase::_type("PhysicalSurfaceAttachment", &Attachment::_type,
                                                        "PhysicalSurfaceAttachment");

PhysicalSurfaceAttachmentPtr PhysicalSurfaceAttachmentBase::create()
{
    return PhysicalSurfaceAttachmentPtr(new PhysicalSurfaceAttachment);
}

void PhysicalSurfaceAttachmentBase::setSurface(PhysicalSurface surface)
{
    m_surface = std::move(surface);
    fieldChanged(SurfaceFieldMask);
}

bool PhysicalSurfaceAttachmentBase::equalFields(const FieldContainer& other) const
{
    return m_surface == static_cast<const PhysicalSurfaceAttachmentBase&>(other).m_surface;
}

FieldContainerPtr PhysicalSurfaceAttachmentBase::copy() const
{
    auto* result = new PhysicalSurfaceAttachment;
    static_cast<PhysicalSurfaceAttachmentBase*>(result)->m_surface = m_surface;
    return PhysicalSurfaceAttachmentPtr(result);
}

} // namespace osg
