#include "host/OSGSystem/AttachmentContainer.h"

#include "scene/Attachments.h"
#include "scene/NameRevisions.h"

#include <algorithm>

namespace osg
{

FieldContainerType AttachmentContainer::_type("AttachmentContainer", &FieldContainer::_type, "AttachmentContainer");

namespace
{

void noteName(const AttachmentContainer& container, const Attachment& attachment)
{
    if (attachment.getType().getGroupId() == NameAttachment::_type.getGroupId())
        nameChanged(container);
}

} // namespace

AttachmentContainer::AttachmentContainer() = default;
AttachmentContainer::~AttachmentContainer() = default;

void AttachmentContainer::addAttachment(const AttachmentPtr& attachment, unsigned short binding)
{
    if (!attachment)
        return;
    if (!m_attachments)
        m_attachments = std::make_unique<AttachmentMap>();
    m_attachments->set(AttachmentMap::key(attachment->getType().getGroupId(), binding), attachment.get());
    noteName(*this, *attachment);
    fieldChanged(AttachmentsFieldMask);
}

void AttachmentContainer::subAttachment(const AttachmentPtr& attachment, unsigned short binding)
{
    if (!attachment || !m_attachments)
        return;
    const std::uint32_t key = AttachmentMap::key(attachment->getType().getGroupId(), binding);
    if (m_attachments->find(key) != attachment.get())
        return;
    noteName(*this, *attachment);
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

} // namespace osg
