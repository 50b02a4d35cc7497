#pragma once

#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Material.h"

namespace osg
{

class MaterialGroup;
using MaterialGroupPtr = FCPtr<GroupPtr, MaterialGroup>;

/// Fields of `MaterialGroup`.
class ZN_HOST_EXPORT MaterialGroupBase : public Group
{
public:
    using Ptr = MaterialGroupPtr;
    static FieldContainerType _type;
    static constexpr FieldMask MaterialFieldMask = 1u << 1;

    static MaterialGroupPtr create();
    const FieldContainerType& getType() const override { return _type; }

    MaterialPtr getMaterial() const;

protected:
    ~MaterialGroupBase() override;
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;

    Material* m_material = nullptr;
};

/// A group whose material applies to everything below its node.
class ZN_HOST_EXPORT MaterialGroup : public MaterialGroupBase
{
public:
    /// Holds a reference on `material`, which may be null.
    void setMaterial(const MaterialPtr& material);
};

} // namespace osg
