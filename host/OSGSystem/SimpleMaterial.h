#pragma once

#include "host/OSGSystem/Material.h"
#include "host/OSGSystem/Math.h"

namespace osg
{

/// Fields of `ChunkMaterial`.
class ZN_HOST_EXPORT ChunkMaterialBase : public Material
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = ChunkMaterialPtr;
    static FieldContainerType _type;
    ///@}
};

/// A material made of drawing states.
class ZN_HOST_EXPORT ChunkMaterial : public ChunkMaterialBase
{
};

/// Fields of `SimpleMaterial`. Colours are display colours (sRGB), from 0 to 1; nothing is clamped.
class ZN_HOST_EXPORT SimpleMaterialBase : public ChunkMaterial
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = SimpleMaterialPtr;
    static FieldContainerType _type;
    ///@}
    ///@{
    /// The bits of an edit bracket: one for each property.
    static constexpr FieldMask AmbientFieldMask = 1u << 1;
    static constexpr FieldMask DiffuseFieldMask = 1u << 2;
    static constexpr FieldMask EmissionFieldMask = 1u << 3;
    static constexpr FieldMask SpecularFieldMask = 1u << 4;
    static constexpr FieldMask ShininessFieldMask = 1u << 5;
    static constexpr FieldMask TransparencyFieldMask = 1u << 6;
    ///@}

    /// Black but for a diffuse of 0.8, opaque, shininess 1.
    static SimpleMaterialPtr create();
    const FieldContainerType& getType() const override { return _type; }

    ///@{
    /// What the surface reflects of even light (ambient), of light from one side (diffuse), as a highlight (specular),
    /// and what it shines with by itself (emission).
    const Color3f& getAmbient() const { return m_ambient; }
    const Color3f& getDiffuse() const { return m_diffuse; }
    const Color3f& getEmission() const { return m_emission; }
    const Color3f& getSpecular() const { return m_specular; }
    ///@}
    /// The exponent of the highlight.
    float getShininess() const { return m_shininess; }
    /// 0 is opaque, 1 is invisible.
    float getTransparency() const { return m_transparency; }

    ///@{
    /// Stores the colour as it is; see the getter of the same name.
    void setAmbient(const Color3f& color);
    void setDiffuse(const Color3f& color);
    void setEmission(const Color3f& color);
    void setSpecular(const Color3f& color);
    ///@}
    /// The exponent of the highlight.
    void setShininess(float shininess);
    /// 0 is opaque, 1 is invisible.
    void setTransparency(float transparency);

protected:
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;

private:
    Color3f m_ambient;
    Color3f m_diffuse = {0.8f, 0.8f, 0.8f};
    Color3f m_emission;
    Color3f m_specular;
    float m_shininess = 1;
    float m_transparency = 0;
};

/// A material of four colours, a shininess and a transparency.
class ZN_HOST_EXPORT SimpleMaterial : public SimpleMaterialBase
{
};

} // namespace osg
