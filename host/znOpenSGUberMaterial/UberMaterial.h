#pragma once

#include "host/OSGSystem/Material.h"
#include "host/OSGSystem/Math.h"

namespace osg
{

class UberMaterial;
using UberMaterialPtr = FCPtr<MaterialPtr, UberMaterial>;

/// How light falls on a surface. Colours are display colours (sRGB), from 0 to 1; nothing is clamped.
struct SurfaceLook {
    Color3f ambient;
    Color3f diffuse = {0.8f, 0.8f, 0.8f};
    Color3f emission;
    Color3f specular;
    float shininess = 1;    ///< the exponent of the highlight
    float transparency = 0; ///< 0 is opaque, 1 is invisible
    friend bool operator==(const SurfaceLook&, const SurfaceLook&) = default;
};

/// Fields of `UberMaterial`.
class ZN_HOST_EXPORT UberMaterialBase : public Material
{
public:
    using Ptr = UberMaterialPtr;
    static FieldContainerType _type;
    static constexpr FieldMask LookFieldMask = 1u << 1;

    static UberMaterialPtr create();
    const FieldContainerType& getType() const override { return _type; }

    const SurfaceLook& getLook() const { return m_look; }
    void setLook(const SurfaceLook& look);

protected:
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;

    SurfaceLook m_look;
};

/// The material that the host's own tools edit.
class ZN_HOST_EXPORT UberMaterial : public UberMaterialBase
{
};

} // namespace osg
