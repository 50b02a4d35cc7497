#pragma once

#include "host/OSGSystem/AttachmentContainer.h"

namespace osg
{

/// What a node is: its content, which several nodes may share.
class ZN_HOST_EXPORT NodeCore : public AttachmentContainer
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = NodeCorePtr;
    static FieldContainerType _type;
    ///@}
};

} // namespace osg
