#pragma once

#include "host/znOpenSGUberMaterial/UberMaterial.h"

namespace osg
{

class UBRDFMaterial;
/// Pointer to a `UBRDFMaterial`.
using UBRDFMaterialPtr = FCPtr<UberMaterialPtr, UBRDFMaterial>;

/// Fields of `UBRDFMaterial`.
class ZN_HOST_EXPORT UBRDFMaterialBase : public UberMaterial
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = UBRDFMaterialPtr;
    static FieldContainerType _type;
    ///@}
    /// The bit of an edit bracket around `setEnvironment`.
    static constexpr FieldMask EnvironmentFieldMask = 1u << 2;

    /// Without an environment.
    static UBRDFMaterialPtr create();
    const FieldContainerType& getType() const override { return _type; }

    /// As it was set; may be a switch material.
    MaterialPtr getEnvironment() const;

protected:
    ~UBRDFMaterialBase() override;
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;

    /// The environment, on which a reference is held; null for none.
    Material* m_environment = nullptr;
};

/// A material that mirrors what stands around it. Its environment is a material with an `ImageAttachment`.
class ZN_HOST_EXPORT UBRDFMaterial : public UBRDFMaterialBase
{
public:
    /// The environment that shows at present: of a switch material the chosen one. Null when there is none.
    MaterialPtr getActiveEnvironment() const;
    /// Holds a reference on `environment`, which may be null. The material itself and whatever holds it are ignored.
    void setEnvironment(const MaterialPtr& environment);
};

} // namespace osg
