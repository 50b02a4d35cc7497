#include "scene/SceneEdits.h"

#include "scene/EditScope.h"
#include "scene/Mesh.h"

#include <utility>

namespace osg
{

void addChild(const NodePtr& parent, const NodePtr& child)
{
    const EditScope edit(parent, Node::ChildrenFieldMask);
    parent->addChild(child);
}

void subChild(const NodePtr& parent, const NodePtr& child)
{
    const EditScope edit(parent, Node::ChildrenFieldMask);
    parent->subChild(child);
}

void attach(const AttachmentContainerPtr& holder, const AttachmentPtr& attachment)
{
    const EditScope edit(holder, AttachmentContainer::AttachmentsFieldMask);
    holder->addAttachment(attachment);
}

void detach(const AttachmentContainerPtr& holder, const AttachmentPtr& attachment)
{
    const EditScope edit(holder, AttachmentContainer::AttachmentsFieldMask);
    holder->subAttachment(attachment);
}

void exchangeCore(const NodePtr& node, const NodeCorePtr& core)
{
    const EditScope edit(node, Node::CoreFieldMask);
    node->setCore(core);
}

void exchangeMesh(const GeometryPtr& geometry, std::shared_ptr<const Mesh> mesh)
{
    const EditScope edit(geometry, GeometryBase::MeshFieldMask);
    GeometryAccess::setMesh(*geometry, std::move(mesh));
}

} // namespace osg
