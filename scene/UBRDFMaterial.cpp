#include "host/znOpenSGUberMaterial/UBRDFMaterial.h"

#include "scene/Attachments.h"
#include "scene/HeldMaterialComparison.h"
#include "scene/SubMaterials.h"

#include <algorithm>
#include <utility>

namespace osg
{

FieldContainerType UBRDFMaterialBase::_type("UBRDFMaterial", &UberMaterialBase::_type);

UBRDFMaterialBase::~UBRDFMaterialBase()
{
    MaterialPtr(m_environment).subRef();
}

UBRDFMaterialPtr UBRDFMaterialBase::create()
{
    return UBRDFMaterialPtr(new UBRDFMaterial);
}

MaterialPtr UBRDFMaterialBase::getEnvironment() const
{
    return MaterialPtr(m_environment);
}

bool UBRDFMaterialBase::equalFields(const FieldContainer& other) const
{
    return UberMaterial::equalFields(other) &&
           holdEqualMaterials({getEnvironment()}, {static_cast<const UBRDFMaterialBase&>(other).getEnvironment()});
}

FieldContainerPtr UBRDFMaterialBase::copy() const
{
    const UBRDFMaterialPtr result = create();
    AttachmentAccess::copyAll(*this, *result);
    UBRDFMaterialBase& fields = *result;
    fields.m_look = m_look;
    fields.m_environment = m_environment;
    getEnvironment().addRef();
    return result;
}

MaterialPtr UBRDFMaterial::getActiveEnvironment() const
{
    return shownMaterial(getEnvironment());
}

void UBRDFMaterial::setEnvironment(const MaterialPtr& environment)
{
    const std::vector<MaterialPtr> inside = subMaterialsFirst(environment);
    if (std::any_of(inside.begin(), inside.end(), [this](const MaterialPtr& inner) { return inner.get() == this; }))
        return;
    environment.addRef();
    MaterialPtr(std::exchange(m_environment, environment.get())).subRef();
    fieldChanged(EnvironmentFieldMask);
}

} // namespace osg
