#pragma once

#include "host/OSGSystem/ComponentTransform.h"

namespace osg
{

/// Fields of `Transform3D`.
class ZN_HOST_EXPORT Transform3DBase : public ComponentTransform
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = Transform3DPtr;
    static FieldContainerType _type;
    ///@}
    /// The bit of an edit bracket around a change of the flags.
    static constexpr FieldMask FlagsFieldMask = 1u << 5;

    /// A new `Transform3D` with the identity and no flags.
    static Transform3DPtr create();
    const FieldContainerType& getType() const override { return _type; }

    /// Bits that the host's tools set; 0 at first.
    std::uint32_t getFlags() const { return m_flags; }

protected:
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;

    /// What getFlags tells.
    std::uint32_t m_flags = 0;
};

} // namespace osg
