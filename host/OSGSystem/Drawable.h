#pragma once

#include "host/OSGSystem/NodeCore.h"

namespace osg
{

/// Fields of `Drawable`.
class ZN_HOST_EXPORT DrawableBase : public NodeCore
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = DrawablePtr;
    static FieldContainerType _type;
    ///@}
};

/// A core that is drawn; nothing can hang below its node.
class ZN_HOST_EXPORT Drawable : public DrawableBase
{
};

} // namespace osg
