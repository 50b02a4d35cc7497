#pragma once

#include "host/OSGSystem/FieldContainer.h"
#include "host/OSGSystem/Pointers.h"

namespace osg
{

/// Something that can be attached to any container that takes attachments.
class ZN_HOST_EXPORT Attachment : public FieldContainer
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = AttachmentPtr;
    static FieldContainerType _type;
    ///@}
};

} // namespace osg
