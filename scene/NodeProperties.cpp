#include "scene/NodeProperties.h"

#include "host/OSGSystem/Cast.h"
#include "scene/EditScope.h"
#include "scene/SceneEdits.h"

namespace osg
{

FieldContainerType NodeProperties::_type("NodeProperties", &Attachment::_type, "NodeProperties");

NodeProperties::Ptr NodeProperties::of(const NodePtr& node)
{
    return node ? fcCast<NodeProperties>(node->findAttachment(_type.getGroupId())) : Ptr();
}

NodeProperties::Ptr NodeProperties::made(const NodePtr& node)
{
    if (const Ptr found = of(node))
        return found;
    const Ptr properties(new NodeProperties);
    attach(node, properties);
    return properties;
}

void NodeProperties::setLocked(bool locked)
{
    m_locked = locked;
    fieldChanged(LockedFieldMask);
}

void NodeProperties::setAsset(Asset asset)
{
    m_asset = asset;
    fieldChanged(AssetFieldMask);
}

bool NodeProperties::equalFields(const FieldContainer& other) const
{
    const auto& properties = static_cast<const NodeProperties&>(other);
    return m_locked == properties.m_locked && m_asset == properties.m_asset;
}

FieldContainerPtr NodeProperties::copy() const
{
    auto* result = new NodeProperties;
    result->m_locked = m_locked;
    result->m_asset = m_asset;
    return Ptr(result);
}

void setLocked(const NodePtr& node, bool locked)
{
    const NodeProperties::Ptr properties = NodeProperties::made(node);
    const EditScope edit(properties, NodeProperties::LockedFieldMask);
    properties->setLocked(locked);
}

void setAsset(const NodePtr& node, NodeProperties::Asset asset)
{
    const NodeProperties::Ptr properties = NodeProperties::made(node);
    const EditScope edit(properties, NodeProperties::AssetFieldMask);
    properties->setAsset(asset);
}

} // namespace osg
