#include "host/znOpenSGUtils/znNodeUtils.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "standalone/OSGSystem/Mesh.h"
#include "standalone/session/znStandaloneSession.h"
#include "standalone/znKernel/KernelState.h"
#include "standalone/znUtils/CallTrace.h"

namespace
{

void removeColors(const osg::GeometryPtr& geometry)
{
    osg::Mesh mesh = osg::GeometryAccess::mesh(*geometry);
    mesh.colors = {};
    osg::beginEditCP(geometry, osg::GeometryBase::MeshFieldMask, 1);
    osg::GeometryAccess::setMesh(*geometry, std::make_shared<const osg::Mesh>(std::move(mesh)));
    osg::endEditCP(geometry, osg::GeometryBase::MeshFieldMask, 1);
}

} // namespace

void znNodeUtils::removeVertexColors(const osg::NodePtr& root)
{
    const zn::TracedCall call("znNodeUtils::removeVertexColors", root);
    osg::traverse(root, [](const osg::NodePtr& node) {
        const auto geometry = node ? osg::fcCast<osg::Geometry>(node->getCore()) : osg::GeometryPtr();
        if (geometry && !osg::GeometryAccess::mesh(*geometry).colors.empty())
            removeColors(geometry);
        return osg::Action::Continue;
    });
}

void znNodeUtils::destroy(const osg::NodePtr& node)
{
    const zn::TracedCall call("znNodeUtils::destroy", node);
    if (!node)
        return;
    const osg::RefPtr<osg::NodePtr> held(node);
    if (const osg::NodePtr parent = node->getParent()) {
        osg::beginEditCP(parent, osg::Node::ChildrenFieldMask, 1);
        parent->subChild(node);
        osg::endEditCP(parent, osg::Node::ChildrenFieldMask, 1);
    }
    zn::KernelState& kernel = znStandaloneSession::require().kernel();
    if (kernel.environmentSwitch.get() == node)
        kernel.environmentSwitch = osg::NodePtr();
}
