#pragma once

#include "host/OSGSystem/NodeCore.h"

namespace osg
{

/// A core without content of its own: it groups the children of its node.
class ZN_HOST_EXPORT Group : public NodeCore
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = GroupPtr;
    static FieldContainerType _type;
    ///@}

    /// A new group without attachments.
    static GroupPtr create();
    const FieldContainerType& getType() const override { return _type; }

protected:
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;
};

} // namespace osg
