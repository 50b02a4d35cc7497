#pragma once

#include "host/OSGSystem/Material.h"

#include <vector>

namespace osg
{

class SwitchMaterial;
/// Pointer to a `SwitchMaterial`.
using SwitchMaterialPtr = FCPtr<MaterialPtr, SwitchMaterial>;

/// A field that holds materials; entries may be null. Whoever writes an entry moves the reference counts by hand.
using MaterialField = std::vector<MaterialPtr>;

/// Fields of `SwitchMaterial`.
class ZN_HOST_EXPORT SwitchMaterialBase : public Material
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = SwitchMaterialPtr;
    static FieldContainerType _type;
    ///@}
    ///@{
    /// The bits of an edit bracket: for the list of sub-materials, and for the choice.
    static constexpr FieldMask MaterialsFieldMask = 1u << 1;
    static constexpr FieldMask ChoiceFieldMask = 1u << 2;
    ///@}

    /// Without materials; the choice is 0.
    static SwitchMaterialPtr create();
    const FieldContainerType& getType() const override { return _type; }

    /// The sub-materials. It holds a reference on each.
    const MaterialField& getMaterials() const { return m_materials; }
    /// The same for an edit of `MaterialsFieldMask`.
    MaterialField& editMaterials();
    /// The place in the list of the sub-material that shows, from 0; it may be past the end.
    unsigned getChoice() const { return m_choice; }
    /// May be past the end; then there is nothing to see.
    void setChoice(unsigned index);

protected:
    ~SwitchMaterialBase() override;
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;

    /// The sub-materials, a reference held on each; entries may be null.
    MaterialField m_materials;
    /// The place of the one that shows.
    unsigned m_choice = 0;

private:
    friend struct SwitchMaterialAccess;
};

/// A material that looks like the chosen one of its sub-materials.
class ZN_HOST_EXPORT SwitchMaterial : public SwitchMaterialBase
{
public:
    /// Null when `index` is past the end.
    MaterialPtr getMaterial(unsigned index) const;
    /// Appends `material` and takes a reference on it. Null, the switch itself and whatever holds it are ignored.
    void addMaterial(const MaterialPtr& material);
};

} // namespace osg
