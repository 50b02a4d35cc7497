#include "host/OSGSystem/MaterialDrawable.h"

#include "host/OSGSystem/Material.h"

#include <utility>

namespace osg
{

FieldContainerType MaterialDrawableBase::_type("MaterialDrawable", &DrawableBase::_type);

MaterialDrawableBase::~MaterialDrawableBase()
{
    MaterialPtr(m_material).subRef();
}

MaterialPtr MaterialDrawableBase::getMaterial() const
{
    return MaterialPtr(m_material);
}

void MaterialDrawableBase::setMaterial(const MaterialPtr& material)
{
    material.addRef();
    MaterialPtr(std::exchange(m_material, material.get())).subRef();
    fieldChanged(MaterialFieldMask);
}

bool MaterialDrawableBase::equalFields(const FieldContainer& other) const
{
    const auto& drawable = static_cast<const MaterialDrawableBase&>(other);
    return m_material == drawable.m_material && equalAttachments(drawable);
}

} // namespace osg
