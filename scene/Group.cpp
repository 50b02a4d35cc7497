#include "host/OSGSystem/Group.h"

#include "scene/Attachments.h"

namespace osg
{

FieldContainerType Group::_type("Group", &NodeCore::_type);

GroupPtr Group::create()
{
    return GroupPtr(new Group);
}

bool Group::equalFields(const FieldContainer& other) const
{
    return equalAttachments(static_cast<const Group&>(other));
}

FieldContainerPtr Group::copy() const
{
    return GroupPtr(copyWithAttachments<Group>(*this));
}

} // namespace osg
