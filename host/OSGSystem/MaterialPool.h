#pragma once

#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Material.h"

#include <vector>

namespace osg
{

class MaterialPool;
/// Pointer to a `MaterialPool`.
using MaterialPoolPtr = FCPtr<GroupPtr, MaterialPool>;

/// Fields of `MaterialPool`. It holds a reference on each material.
class ZN_HOST_EXPORT MaterialPoolBase : public Group
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = MaterialPoolPtr;
    static FieldContainerType _type;
    ///@}
    /// The bit of an edit bracket around a change of the list.
    static constexpr FieldMask MaterialsFieldMask = 1u << 1;

    /// A new pool without materials.
    static MaterialPoolPtr create();
    const FieldContainerType& getType() const override { return _type; }

    /// Each material once, in the order in which they came.
    const std::vector<MaterialPtr>& getMaterials() const { return m_materials; }

protected:
    ~MaterialPoolBase() override;
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;

    /// None is null; the pool holds a reference on each.
    std::vector<MaterialPtr> m_materials;
};

/// A group that keeps the materials of a scene, so that they can be found, chosen and used again.
class ZN_HOST_EXPORT MaterialPool : public MaterialPoolBase
{
public:
    /// Takes in the materials of the material groups and of what is drawn at and below `node`.
    void add(const NodePtr& node);
    /// Takes one in; null and one that is there already are ignored.
    void add(const MaterialPtr& material);
    /// Gives one up; ignored when it is not there.
    void sub(const MaterialPtr& material);
};

} // namespace osg
