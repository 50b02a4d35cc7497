#include "host/OSGSystem/Names.h"

#include "scene/Attachments.h"
#include "scene/SceneEdits.h"

namespace osg
{

FieldContainerType NameAttachment::_type("Name", &Attachment::_type, "Name");

NameAttachment::Ptr NameAttachment::create(const std::string& name)
{
    return Ptr(new NameAttachment(name));
}

bool NameAttachment::equalFields(const FieldContainer& other) const
{
    return m_name == static_cast<const NameAttachment&>(other).m_name;
}

FieldContainerPtr NameAttachment::copy() const
{
    return create(m_name);
}

const char* getName(const AttachmentContainerPtr& container)
{
    if (!container)
        return nullptr;
    const AttachmentPtr found = container->findAttachment(NameAttachment::_type.getGroupId());
    return found ? static_cast<const NameAttachment*>(found.get())->name().c_str() : nullptr;
}

void setName(const AttachmentContainerPtr& container, const std::string& name)
{
    if (!container)
        return;
    const AttachmentPtr old = container->findAttachment(NameAttachment::_type.getGroupId());
    if (name.empty() && !old)
        return;
    if (name.empty())
        detach(container, old);
    else
        attach(container, NameAttachment::create(name));
}

} // namespace osg
