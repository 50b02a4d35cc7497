#include "host/znOpenSGExt/AssetAttachment.h"

namespace osg
{

FieldContainerType AssetAttachmentBase::_type("AssetAttachment", &Attachment::_type, "AssetAttachment");

AssetAttachmentPtr AssetAttachmentBase::create()
{
    return AssetAttachmentPtr(new AssetAttachment);
}

void AssetAttachmentBase::setUuid(const std::string& uuid)
{
    m_uuid = uuid;
    fieldChanged(UuidFieldMask);
}

bool AssetAttachmentBase::equalFields(const FieldContainer& other) const
{
    return m_uuid == static_cast<const AssetAttachmentBase&>(other).m_uuid;
}

FieldContainerPtr AssetAttachmentBase::copy() const
{
    const AssetAttachmentPtr result = create();
    static_cast<AssetAttachmentBase&>(*result).m_uuid = m_uuid;
    return result;
}

} // namespace osg
