#include "host/OSGSystem/SwitchMaterial.h"

#include "scene/Attachments.h"
#include "scene/HeldMaterialComparison.h"
#include "scene/SubMaterials.h"

#include <algorithm>

namespace osg
{

FieldContainerType SwitchMaterialBase::_type("SwitchMaterial", &MaterialBase::_type);

SwitchMaterialPtr SwitchMaterialBase::create()
{
    return SwitchMaterialPtr(new SwitchMaterial);
}

SwitchMaterialBase::~SwitchMaterialBase()
{
    for (const MaterialPtr& material : m_materials)
        material.subRef();
}

MaterialField& SwitchMaterialBase::editMaterials()
{
    fieldChanged(MaterialsFieldMask);
    return m_materials;
}

void SwitchMaterialBase::setChoice(unsigned index)
{
    m_choice = index;
    fieldChanged(ChoiceFieldMask);
}

bool SwitchMaterialBase::equalFields(const FieldContainer& other) const
{
    const auto& material = static_cast<const SwitchMaterialBase&>(other);
    return m_choice == material.m_choice && equalAttachments(material) &&
           holdEqualMaterials(m_materials, material.m_materials);
}

FieldContainerPtr SwitchMaterialBase::copy() const
{
    auto* result = new SwitchMaterial;
    AttachmentAccess::copyAll(*this, *result);
    SwitchMaterialBase& fields = *result;
    fields.m_materials = m_materials;
    fields.m_choice = m_choice;
    for (const MaterialPtr& material : m_materials)
        material.addRef();
    return SwitchMaterialPtr(result);
}

MaterialPtr SwitchMaterial::getMaterial(unsigned index) const
{
    return index < m_materials.size() ? m_materials[index] : MaterialPtr();
}

void SwitchMaterial::addMaterial(const MaterialPtr& material)
{
    if (!material)
        return;
    const std::vector<MaterialPtr> inside = subMaterialsFirst(material);
    if (std::any_of(inside.begin(), inside.end(), [this](const MaterialPtr& inner) { return inner.get() == this; }))
        return;
    material.addRef();
    m_materials.push_back(material);
    fieldChanged(MaterialsFieldMask);
}

} // namespace osg
