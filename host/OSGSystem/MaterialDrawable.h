#pragma once

#include "host/OSGSystem/Drawable.h"

namespace osg
{

/// Fields of `MaterialDrawable`.
class ZN_HOST_EXPORT MaterialDrawableBase : public Drawable
{
public:
    using Ptr = MaterialDrawablePtr;
    static FieldContainerType _type;
    static constexpr FieldMask MaterialFieldMask = 1u << 1;

    MaterialPtr getMaterial() const;
    /// Holds a reference on `material`, which may be null.
    void setMaterial(const MaterialPtr& material);

protected:
    ~MaterialDrawableBase() override;
    bool equalFields(const FieldContainer& other) const override;

    Material* m_material = nullptr;
};

/// A drawable with a material.
class ZN_HOST_EXPORT MaterialDrawable : public MaterialDrawableBase
{
};

} // namespace osg
