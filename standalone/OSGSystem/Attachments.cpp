#include "standalone/OSGSystem/Attachments.h"

#include "host/OSGSystem/Names.h"
#include "standalone/OSGSystem/ContainerRegistry.h"
#include "standalone/OSGSystem/SceneEdits.h"

#include <algorithm>
#include <utility>

namespace osg
{

FieldContainerType Attachment::_type("Attachment", &FieldContainer::_type, "Attachment");
FieldContainerType AttachmentContainer::_type("AttachmentContainer", &FieldContainer::_type, "AttachmentContainer");
FieldContainerType NameAttachment::_type("Name", &Attachment::_type, "Name");

AttachmentMap::~AttachmentMap()
{
    for (const Entry& entry : m_entries)
        AttachmentPtr(entry.attachment).subRef();
}

Attachment* AttachmentMap::find(std::uint32_t key) const
{
    for (const Entry& entry : m_entries)
        if (entry.key == key)
            return entry.attachment;
    return nullptr;
}

void AttachmentMap::set(std::uint32_t key, Attachment* attachment)
{
    AttachmentPtr(attachment).addRef();
    for (Entry& entry : m_entries) {
        if (entry.key == key) {
            AttachmentPtr(std::exchange(entry.attachment, attachment)).subRef();
            return;
        }
    }
    m_entries.push_back({key, attachment});
}

void AttachmentMap::remove(std::uint32_t key)
{
    const auto place = std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& e) { return e.key == key; });
    if (place == m_entries.end())
        return;
    const AttachmentPtr gone(place->attachment);
    m_entries.erase(place);
    gone.subRef();
}

AttachmentContainer::AttachmentContainer() = default;
AttachmentContainer::~AttachmentContainer() = default;

void AttachmentContainer::addAttachment(const AttachmentPtr& attachment, unsigned short binding)
{
    if (!attachment)
        return;
    if (!m_attachments)
        m_attachments = std::make_unique<AttachmentMap>();
    m_attachments->set(AttachmentMap::key(attachment->getType().getGroupId(), binding), attachment.get());
    fieldChanged(AttachmentsFieldMask);
}

void AttachmentContainer::subAttachment(const AttachmentPtr& attachment, unsigned short binding)
{
    if (!attachment || !m_attachments)
        return;
    const std::uint32_t key = AttachmentMap::key(attachment->getType().getGroupId(), binding);
    if (m_attachments->find(key) != attachment.get())
        return;
    m_attachments->remove(key);
    if (m_attachments->entries().empty())
        m_attachments.reset();
    fieldChanged(AttachmentsFieldMask);
}

AttachmentPtr AttachmentContainer::findAttachment(unsigned groupId, unsigned short binding) const
{
    return AttachmentPtr(m_attachments ? m_attachments->find(AttachmentMap::key(groupId, binding)) : nullptr);
}

bool AttachmentContainer::equalAttachments(const AttachmentContainer& other) const
{
    const auto named = AttachmentMap::key(NameAttachment::_type.getGroupId(), 0);
    const auto covers = [named](const AttachmentMap* a, const AttachmentMap* b) {
        if (!a)
            return true;
        return std::all_of(a->entries().begin(), a->entries().end(), [&](const AttachmentMap::Entry& entry) {
            return entry.key == named ||
                   isEqual(AttachmentPtr(entry.attachment), AttachmentPtr(b ? b->find(entry.key) : nullptr));
        });
    };
    return covers(m_attachments.get(), other.m_attachments.get()) &&
           covers(other.m_attachments.get(), m_attachments.get());
}

void AttachmentAccess::copyAll(const AttachmentContainer& from, AttachmentContainer& to)
{
    if (!from.m_attachments)
        return;
    to.m_attachments = std::make_unique<AttachmentMap>();
    for (const AttachmentMap::Entry& entry : from.m_attachments->entries()) {
        const FieldContainerPtr copied = ContainerAccess::copy(*entry.attachment);
        to.m_attachments->set(entry.key, static_cast<Attachment*>(copied.get()));
    }
}

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
