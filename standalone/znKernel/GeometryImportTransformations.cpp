#include "standalone/znKernel/GeometryImportTransformations.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Transform3D.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/Bounds.h"
#include "scene/ContainerRegistry.h"
#include "scene/MatrixMath.h"
#include "scene/SceneEdits.h"

namespace zn::kernel
{

namespace
{

/// From where the box is to where it is wanted, in millimetres of the whole tree.
osg::Vec3f wantedShift(const osg::Box& box, bool centerInOrigin, bool putOnGround)
{
    osg::Vec3f shift;
    if (centerInOrigin)
        shift = {float(-box.middle(0)), float(-box.middle(1)), float(-box.middle(2))};
    if (putOnGround)
        shift.z = float(-box.low[2]);
    return shift;
}

/// Hangs `node` below a new node with this core, at the same place.
void putAbove(const osg::NodePtr& node, const osg::NodeCorePtr& core)
{
    const osg::NodePtr parent = node->getParent();
    const osg::NodePtr above = osg::makeNodeFor(core);
    osg::beginEditCP(parent, osg::Node::ChildrenFieldMask, 1);
    parent->insertChild(static_cast<unsigned>(parent->findChild(node)), above);
    osg::addChild(above, node);
    osg::endEditCP(parent, osg::Node::ChildrenFieldMask, 1);
}

void move(const osg::NodePtr& node, const osg::Vec3f& shift)
{
    const osg::NodeCorePtr core = node->getCore();
    const osg::Matrix before = osg::translationMatrix(shift);
    if (osg::fcCast<osg::Transform>(core)) {
        if (core->getRefCount() > 1)
            osg::exchangeCore(node,
                              osg::NodeCorePtr(static_cast<osg::NodeCore*>(osg::ContainerAccess::copy(*core).get())));
        const auto own = osg::fcCast<osg::Transform>(node->getCore());
        osg::beginEditCP(own, osg::TransformBase::MatrixFieldMask, 1);
        own->setMatrix(before * own->getMatrix());
        osg::endEditCP(own, osg::TransformBase::MatrixFieldMask, 1);
        return;
    }
    const osg::Transform3DPtr transform = osg::Transform3DBase::create();
    osg::beginEditCP(transform, osg::TransformBase::MatrixFieldMask, 1);
    transform->setMatrix(before);
    osg::endEditCP(transform, osg::TransformBase::MatrixFieldMask, 1);
    if (!core || core->getType().getId() == osg::Group::_type.getId())
        osg::exchangeCore(node, transform);
    else if (node->getParent())
        putAbove(node, transform);
}

} // namespace

void applyGeometryImportTransformations(const osg::NodePtr& root, bool centerInOrigin, bool putOnGround)
{
    if (!root || (!centerInOrigin && !putOnGround))
        return;
    const osg::Box box = osg::worldBounds(root);
    const auto inverse = osg::inverted(osg::worldMatrix(root->getParent()));
    if (box.isEmpty() || !inverse)
        return;
    const osg::Vec3f shift = osg::transformVector(*inverse, wantedShift(box, centerInOrigin, putOnGround));
    if (shift != osg::Vec3f())
        move(root, shift);
}

} // namespace zn::kernel
