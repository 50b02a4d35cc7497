#pragma once

#include "host/OSGSystem/Node.h"

namespace osg
{

/// What the host remembers of a node besides the fields of the scene graph. A copy of the node has the same properties.
class NodeProperties final : public Attachment
{
public:
    using Ptr = FCPtr<AttachmentPtr, NodeProperties>;
    static FieldContainerType _type;
    static constexpr FieldMask LockedFieldMask = 1u << 0;
    static constexpr FieldMask AssetFieldMask = 1u << 1;

    enum class Asset { None, Root, RootOpenForEditing };

    /// The properties of `node`, null when it has none.
    static Ptr of(const NodePtr& node);
    /// The same, made when there are none.
    static Ptr made(const NodePtr& node);

    const FieldContainerType& getType() const override { return _type; }

    bool isLocked() const { return m_locked; }
    void setLocked(bool locked);
    Asset asset() const { return m_asset; }
    void setAsset(Asset asset);

private:
    bool equalFields(const FieldContainer& other) const override;
    FieldContainerPtr copy() const override;

    bool m_locked = false;
    Asset m_asset = Asset::None;
};

/// Locks `node` against changes, or unlocks it.
void setLocked(const NodePtr& node, bool locked);
/// Makes `node` the root of an asset, or takes that away.
void setAsset(const NodePtr& node, NodeProperties::Asset asset);

} // namespace osg
