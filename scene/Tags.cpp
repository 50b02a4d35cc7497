#include "scene/Tags.h"

#include "host/OSGSystem/Cast.h"
#include "scene/EditScope.h"
#include "scene/SceneEdits.h"

#include <utility>

namespace osg
{

FieldContainerType TagAttachment::_type("Tags", &Attachment::_type, "Tags");

namespace
{

TagAttachment::Ptr attachmentOf(const AttachmentContainerPtr& container)
{
    if (!container)
        return {};
    return fcCast<TagAttachment>(container->findAttachment(TagAttachment::_type.getGroupId()));
}

} // namespace

TagAttachment::Ptr TagAttachment::create(std::vector<std::string> tags)
{
    return Ptr(new TagAttachment(std::move(tags)));
}

void TagAttachment::setTags(std::vector<std::string> tags)
{
    m_tags = std::move(tags);
    fieldChanged(TagsFieldMask);
}

bool TagAttachment::equalFields(const FieldContainer& other) const
{
    return m_tags == static_cast<const TagAttachment&>(other).m_tags;
}

FieldContainerPtr TagAttachment::copy() const
{
    return create(m_tags);
}

const std::vector<std::string>& tagsOf(const AttachmentContainerPtr& container)
{
    static const std::vector<std::string> none;
    const TagAttachment::Ptr attachment = attachmentOf(container);
    return attachment ? attachment->tags() : none;
}

void setTags(const AttachmentContainerPtr& container, std::vector<std::string> tags)
{
    const TagAttachment::Ptr attachment = attachmentOf(container);
    if (!container || (tags.empty() && !attachment))
        return;
    if (attachment && !tags.empty()) {
        const EditScope edit(attachment, TagAttachment::TagsFieldMask);
        attachment->setTags(std::move(tags));
        return;
    }
    if (attachment)
        detach(container, attachment);
    else
        attach(container, TagAttachment::create(std::move(tags)));
}

} // namespace osg
