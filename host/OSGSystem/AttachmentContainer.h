#pragma once

#include "host/OSGSystem/Attachment.h"

#include <memory>

namespace osg
{

class AttachmentMap;

/// A container that carries attachments, one for each pair of group id and binding. It holds a reference on each.
class ZN_HOST_EXPORT AttachmentContainer : public FieldContainer
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = AttachmentContainerPtr;
    static FieldContainerType _type;
    ///@}
    /// The bit of an edit bracket around a change of the attachments.
    static constexpr FieldMask AttachmentsFieldMask = 1u << 0;

    /// Adds `attachment` under the group of its type; one that is there already is replaced. Null is ignored.
    void addAttachment(const AttachmentPtr& attachment, unsigned short binding = 0);
    /// Removes `attachment` if it is the one attached under its group and `binding`.
    void subAttachment(const AttachmentPtr& attachment, unsigned short binding = 0);
    /// The attachment of this group, null if there is none.
    AttachmentPtr findAttachment(unsigned groupId, unsigned short binding = 0) const;

protected:
    AttachmentContainer();
    ~AttachmentContainer() override;

    /// Whether both carry equal attachments under the same groups and bindings; names are left out.
    bool equalAttachments(const AttachmentContainer& other) const;

private:
    friend struct AttachmentAccess;

    std::unique_ptr<AttachmentMap> m_attachments;
};

} // namespace osg
