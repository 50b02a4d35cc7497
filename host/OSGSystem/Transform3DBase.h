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

    static Transform3DPtr create();
    const FieldContainerType& getType() const override { return _type; }

protected:
    FieldContainerPtr copy() const override;
};

} // namespace osg
