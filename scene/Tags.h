#pragma once

#include "host/OSGSystem/AttachmentContainer.h"

#include <string>
#include <vector>

namespace osg
{

/// On a node above what is drawn beside a part to tell of it, as converters tag it.
inline constexpr char AnnotationsTag[] = "ptx::pmi";

/// The attachment that holds the tags of its container: texts in an order of their own, repeats and empty ones allowed.
class TagAttachment final : public Attachment
{
public:
    using Ptr = FCPtr<AttachmentPtr, TagAttachment>;
    static FieldContainerType _type;
    static constexpr FieldMask TagsFieldMask = 1u << 0;

    static Ptr create(std::vector<std::string> tags = {});
    const FieldContainerType& getType() const override { return _type; }

    const std::vector<std::string>& tags() const { return m_tags; }
    /// To be called within an edit of `TagsFieldMask`.
    void setTags(std::vector<std::string> tags);

private:
    explicit TagAttachment(std::vector<std::string> tags) : m_tags(std::move(tags)) {}
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;

    std::vector<std::string> m_tags;
};

/// The tags of `container` in their order; empty when it has none or is null. Valid until they change.
const std::vector<std::string>& tagsOf(const AttachmentContainerPtr& container);

/// Exchanges the tags of `container`; an empty list takes the attachment away. Edits within the bracket of the field
/// that changes: the attachments of the container when the attachment comes or goes, else the tags of the attachment.
/// Null is ignored.
void setTags(const AttachmentContainerPtr& container, std::vector<std::string> tags);

} // namespace osg
