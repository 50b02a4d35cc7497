#include "host/znOpenSGUberMaterial/UberMaterial.h"

#include "scene/Attachments.h"

namespace osg
{

FieldContainerType UberMaterialBase::_type("UberMaterial", &MaterialBase::_type);

UberMaterialPtr UberMaterialBase::create()
{
    return UberMaterialPtr(new UberMaterial);
}

void UberMaterialBase::setLook(const SurfaceLook& look)
{
    m_look = look;
    fieldChanged(LookFieldMask);
}

bool UberMaterialBase::equalFields(const FieldContainer& other) const
{
    const auto& material = static_cast<const UberMaterialBase&>(other);
    return m_look == material.m_look && equalAttachments(material);
}

FieldContainerPtr UberMaterialBase::copy() const
{
    auto* result = new UberMaterial;
    AttachmentAccess::copyAll(*this, *result);
    static_cast<UberMaterialBase*>(result)->m_look = m_look;
    return UberMaterialPtr(result);
}

} // namespace osg
