#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Node.h"
#include "host/OSGSystem/Transform3D.h"
#include "host/znOpenSGUtils/znNodeUtils.h"
#include "standalone/OSGSystem/Attachments.h"
#include "standalone/session/znStandaloneSession.h"
#include "standalone/znKernel/KernelState.h"
#include "standalone/znUtils/CallTrace.h"

namespace
{

/// True for the two types that only place what hangs below them.
bool isPlainTransform(const osg::FieldContainerType& type)
{
    return type.getId() == osg::Transform::_type.getId() || type.getId() == osg::ComponentTransform::_type.getId();
}

osg::Transform3DPtr converted(const osg::TransformPtr& transform)
{
    const osg::Transform3DPtr result = osg::Transform3DBase::create();
    osg::beginEditCP(result, osg::TransformBase::MatrixFieldMask, 1);
    result->setMatrix(transform->getMatrix());
    osg::endEditCP(result, osg::TransformBase::MatrixFieldMask, 1);
    osg::AttachmentAccess::copyAll(*transform, *result);
    return result;
}

/// The one that took the place of `transform` before; null if none did, or if it is no longer alike.
osg::Transform3DPtr earlier(const zn::KernelState& kernel, const osg::TransformPtr& transform)
{
    const auto found = kernel.convertedTransforms.find(transform->getContainerId());
    if (found == kernel.convertedTransforms.end())
        return {};
    const auto result = osg::fcCast<osg::Transform3D>(osg::FieldContainerFactory::the()->getContainer(found->second));
    return result && result->getMatrix() == transform->getMatrix() ? result : osg::Transform3DPtr();
}

} // namespace

bool znNodeUtils::convertTransformToTransform3D(const osg::NodePtr& node)
{
    const zn::TracedCall call("znNodeUtils::convertTransformToTransform3D", node);
    const auto transform = node ? osg::fcCast<osg::Transform>(node->getCore()) : osg::TransformPtr();
    if (!transform || !isPlainTransform(transform->getType()))
        return false;
    zn::KernelState& kernel = znStandaloneSession::require().kernel();
    osg::Transform3DPtr core = transform->getRefCount() > 1 || !kernel.convertedTransforms.empty()
                                   ? earlier(kernel, transform)
                                   : osg::Transform3DPtr();
    if (!core) {
        core = converted(transform);
        // Only a core that others hold can be met again.
        if (transform->getRefCount() > 1)
            kernel.convertedTransforms[transform->getContainerId()] = core->getContainerId();
    }
    osg::beginEditCP(node, osg::Node::CoreFieldMask, 1);
    node->setCore(core);
    osg::endEditCP(node, osg::Node::CoreFieldMask, 1);
    return true;
}
