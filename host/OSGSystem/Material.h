#pragma once

#include "host/OSGSystem/AttachmentContainer.h"

namespace osg
{

/// Fields of `Material`.
class ZN_HOST_EXPORT MaterialBase : public AttachmentContainer
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = MaterialPtr;
    static FieldContainerType _type;
    ///@}
};

/// How a surface looks. Geometries and groups share materials.
class ZN_HOST_EXPORT Material : public MaterialBase
{
};

} // namespace osg
