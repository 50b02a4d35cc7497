#include "standalone/znOpenSGUtils/TransformKinds.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/OSGSystem/Transform3D.h"
#include "scene/Attachments.h"
#include "standalone/session/Session.h"

#include <unordered_map>

namespace
{

/// What one session converted.
struct ConvertedTransforms {
    /// From the id of a plain transform to that of the one that took its place.
    std::unordered_map<std::uint32_t, std::uint32_t> ids;
};

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
osg::Transform3DPtr earlier(const ConvertedTransforms& known, const osg::TransformPtr& transform)
{
    const auto found = known.ids.find(transform->getContainerId());
    if (found == known.ids.end())
        return {};
    const auto result = osg::fcCast<osg::Transform3D>(osg::FieldContainerFactory::the()->getContainer(found->second));
    return result && result->getMatrix() == transform->getMatrix() ? result : osg::Transform3DPtr();
}

} // namespace

bool zn::nodes::convertToTransform3D(const osg::NodePtr& node)
{
    const auto transform = node ? osg::fcCast<osg::Transform>(node->getCore()) : osg::TransformPtr();
    if (!transform || !isPlainTransform(transform->getType()))
        return false;
    auto& known = Session::require().state<ConvertedTransforms>();
    osg::Transform3DPtr core =
        transform->getRefCount() > 1 || !known.ids.empty() ? earlier(known, transform) : osg::Transform3DPtr();
    if (!core) {
        core = converted(transform);
        // Only a core that others hold can be met again.
        if (transform->getRefCount() > 1)
            known.ids[transform->getContainerId()] = core->getContainerId();
    }
    osg::beginEditCP(node, osg::Node::CoreFieldMask, 1);
    node->setCore(core);
    osg::endEditCP(node, osg::Node::CoreFieldMask, 1);
    return true;
}
