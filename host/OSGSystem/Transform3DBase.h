#pragma once

#include "host/OSGSystem/ComponentTransform.h"

namespace osg
{

/// Fields of `Transform3D`.
class ZN_HOST_EXPORT Transform3DBase : public ComponentTransform
{
public:
    using Ptr = Transform3DPtr;
    static FieldContainerType _type;
    static constexpr FieldMask FlagsFieldMask = 1u << 5;

    static Transform3DPtr create();
    const FieldContainerType& getType() const override { return _type; }

    /// Bits that the host's tools set; 0 at first.
    std::uint32_t getFlags() const { return m_flags; }

protected:
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;

    std::uint32_t m_flags = 0;
};

} // namespace osg
