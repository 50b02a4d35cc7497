#pragma once

#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Material.h"

namespace osg
{

class MaterialGroup;
/// Pointer to a `MaterialGroup`.
using MaterialGroupPtr = FCPtr<GroupPtr, MaterialGroup>;

/// Fields of `MaterialGroup`.
class ZN_HOST_EXPORT MaterialGroupBase : public Group
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = MaterialGroupPtr;
    static FieldContainerType _type;
    ///@}
    /// The bit of an edit bracket around a change of the material.
    static constexpr FieldMask MaterialFieldMask = 1u << 1;

    /// A new group without a material.
    static MaterialGroupPtr create();
    const FieldContainerType& getType() const override { return _type; }

    /// Null when it has none.
    MaterialPtr getMaterial() const;

protected:
    ~MaterialGroupBase() override;
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;

    /// The material, on which a reference is held; null for none.
    Material* m_material = nullptr;
};

/// A group whose material applies to everything below its node, in place of those of groups further down.
class ZN_HOST_EXPORT MaterialGroup : public MaterialGroupBase
{
public:
    /// Holds a reference on `material`, which may be null.
    void setMaterial(const MaterialPtr& material);
};

} // namespace osg
