#pragma once

#include "host/OSGSystem/Drawable.h"

namespace osg
{

/// Fields of `MaterialDrawable`.
class ZN_HOST_EXPORT MaterialDrawableBase : public Drawable
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = MaterialDrawablePtr;
    static FieldContainerType _type;
    ///@}
    /// The bit of an edit bracket around a change of the material.
    static constexpr FieldMask MaterialFieldMask = 1u << 1;

    /// Null when it has none; what a group above gives is not looked at.
    MaterialPtr getMaterial() const;
    /// Holds a reference on `material`, which may be null.
    void setMaterial(const MaterialPtr& material);

protected:
    ~MaterialDrawableBase() override;
    bool equalFields(const FieldContainer& other) const override;

    /// The material, on which a reference is held; null for none.
    Material* m_material = nullptr;
};

/// A drawable with a material.
class ZN_HOST_EXPORT MaterialDrawable : public MaterialDrawableBase
{
};

} // namespace osg
