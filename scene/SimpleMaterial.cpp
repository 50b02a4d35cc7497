#include "host/OSGSystem/SimpleMaterial.h"

#include "scene/Attachments.h"

namespace osg
{

FieldContainerType ChunkMaterialBase::_type("ChunkMaterial", &MaterialBase::_type);
FieldContainerType SimpleMaterialBase::_type("SimpleMaterial", &ChunkMaterialBase::_type);

SimpleMaterialPtr SimpleMaterialBase::create()
{
    return SimpleMaterialPtr(new SimpleMaterial);
}

void SimpleMaterialBase::setAmbient(const Color3f& color)
{
    m_ambient = color;
    fieldChanged(AmbientFieldMask);
}

void SimpleMaterialBase::setDiffuse(const Color3f& color)
{
    m_diffuse = color;
    fieldChanged(DiffuseFieldMask);
}

void SimpleMaterialBase::setEmission(const Color3f& color)
{
    m_emission = color;
    fieldChanged(EmissionFieldMask);
}

void SimpleMaterialBase::setSpecular(const Color3f& color)
{
    m_specular = color;
    fieldChanged(SpecularFieldMask);
}

void SimpleMaterialBase::setShininess(float shininess)
{
    m_shininess = shininess;
    fieldChanged(ShininessFieldMask);
}

void SimpleMaterialBase::setTransparency(float transparency)
{
    m_transparency = transparency;
    fieldChanged(TransparencyFieldMask);
}

bool SimpleMaterialBase::equalFields(const FieldContainer& other) const
{
    const auto& material = static_cast<const SimpleMaterialBase&>(other);
    return m_ambient == material.m_ambient && m_diffuse == material.m_diffuse && m_emission == material.m_emission &&
           m_specular == material.m_specular && m_shininess == material.m_shininess &&
           m_transparency == material.m_transparency && equalAttachments(material);
}

FieldContainerPtr SimpleMaterialBase::copy() const
{
    auto* result = new SimpleMaterial;
    AttachmentAccess::copyAll(*this, *result);
    SimpleMaterialBase& fields = *result;
    fields.m_ambient = m_ambient;
    fields.m_diffuse = m_diffuse;
    fields.m_emission = m_emission;
    fields.m_specular = m_specular;
    fields.m_shininess = m_shininess;
    fields.m_transparency = m_transparency;
    return SimpleMaterialPtr(result);
}

} // namespace osg
