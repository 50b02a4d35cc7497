#include "scene/Attachments.h"

#include "scene/ContainerRegistry.h"

#include <algorithm>
#include <utility>

namespace osg
{

FieldContainerType Attachment::_type("Attachment", &FieldContainer::_type, "Attachment");

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
    // Nodes with attributes have names, too: a vector of one entry would move at once.
    if (m_entries.empty())
        m_entries.reserve(2);
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

void AttachmentAccess::add(AttachmentContainer& container, Attachment& attachment, unsigned short binding)
{
    if (!container.m_attachments)
        container.m_attachments = std::make_unique<AttachmentMap>();
    container.m_attachments->set(AttachmentMap::key(attachment.getType().getGroupId(), binding), &attachment);
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

} // namespace osg
