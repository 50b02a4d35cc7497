#include "host/OSGSystem/MaterialGroup.h"

#include "scene/Attachments.h"

#include <utility>

namespace osg
{

FieldContainerType MaterialGroupBase::_type("MaterialGroup", &Group::_type);

MaterialGroupBase::~MaterialGroupBase()
{
    getMaterial().subRef();
}

MaterialGroupPtr MaterialGroupBase::create()
{
    return MaterialGroupPtr(new MaterialGroup);
}

MaterialPtr MaterialGroupBase::getMaterial() const
{
    return MaterialPtr(m_material);
}

bool MaterialGroupBase::equalFields(const FieldContainer& other) const
{
    return m_material == static_cast<const MaterialGroupBase&>(other).m_material && Group::equalFields(other);
}

FieldContainerPtr MaterialGroupBase::copy() const
{
    const MaterialGroupPtr result = create();
    AttachmentAccess::copyAll(*this, *result);
    getMaterial().addRef();
    static_cast<MaterialGroupBase&>(*result).m_material = m_material;
    return result;
}

void MaterialGroup::setMaterial(const MaterialPtr& material)
{
    material.addRef();
    MaterialPtr(std::exchange(m_material, material.get())).subRef();
    fieldChanged(MaterialFieldMask);
}

} // namespace osg
