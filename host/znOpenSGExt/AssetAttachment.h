#pragma once

#include "host/OSGSystem/Attachment.h"

#include <string>

namespace osg
{

class AssetAttachment;
/// Pointer to an `AssetAttachment`.
using AssetAttachmentPtr = FCPtr<AttachmentPtr, AssetAttachment>;

/// Fields of `AssetAttachment`.
class ZN_HOST_EXPORT AssetAttachmentBase : public Attachment
{
public:
    ///@{
    /// The class's pointer and type record, see FieldContainer.
    using Ptr = AssetAttachmentPtr;
    static FieldContainerType _type;
    ///@}
    /// The bit of an edit bracket around `setUuid`.
    static constexpr FieldMask UuidFieldMask = 1u << 0;

    /// A new one with an empty text.
    static AssetAttachmentPtr create();
    const FieldContainerType& getType() const override { return _type; }

    ///@{
    /// The text by which the asset manager knows the asset, in UTF-8.
    const std::string& getUuid() const { return m_uuid; }
    void setUuid(const std::string& uuid);
    ///@}

protected:
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;

private:
    std::string m_uuid;
};

/// Says of which asset its container is a copy.
class ZN_HOST_EXPORT AssetAttachment : public AssetAttachmentBase
{
};

} // namespace osg
