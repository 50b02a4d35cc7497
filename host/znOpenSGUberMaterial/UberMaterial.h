#pragma once

#include "host/OSGSystem/Material.h"
#include "host/OSGSystem/Math.h"

namespace osg
{

class UberMaterial;
/// Pointer to an `UberMaterial`.
using UberMaterialPtr = FCPtr<MaterialPtr, UberMaterial>;

/// How light falls on a surface. Colours are display colours (sRGB), from 0 to 1; nothing is clamped.
struct SurfaceLook {
    Color3f ambient;                      ///< reflected of even light
    Color3f diffuse = {0.8f, 0.8f, 0.8f}; ///< reflected of light from one side
    Color3f emission;                     ///< shone by the surface itself
    Color3f specular;                     ///< reflected as a highlight
    float shininess = 1;                  ///< the exponent of the highlight
    float transparency = 0;               ///< 0 is opaque, 1 is invisible
    /// Exact, number by number.
    friend bool operator==(const SurfaceLook&, const SurfaceLook&) = default;
};

/// Fields of `UberMaterial`.
class ZN_HOST_EXPORT UberMaterialBase : public Material
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = UberMaterialPtr;
    static FieldContainerType _type;
    ///@}
    /// The bit of an edit bracket around `setLook`.
    static constexpr FieldMask LookFieldMask = 1u << 1;

    /// A new one that looks as a SurfaceLook does at first.
    static UberMaterialPtr create();
    const FieldContainerType& getType() const override { return _type; }

    ///@{
    /// All of the look at once; it is stored as it is.
    const SurfaceLook& getLook() const { return m_look; }
    void setLook(const SurfaceLook& look);
    ///@}

protected:
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;

    /// What getLook gives.
    SurfaceLook m_look;
};

/// The material that the host's own tools edit.
class ZN_HOST_EXPORT UberMaterial : public UberMaterialBase
{
};

} // namespace osg
