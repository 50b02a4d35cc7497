#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/Material.h"
#include "host/OSGSystem/MaterialDrawable.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znKernel/znScenegraph.h"
#include "standalone/OSGSystem/ContainerRegistry.h"
#include "standalone/OSGSystem/SceneEdits.h"
#include "standalone/znUtils/CallTrace.h"

namespace
{

template <class T>
typename T::Ptr copyOf(const typename T::Ptr& original)
{
    return typename T::Ptr(static_cast<T*>(osg::ContainerAccess::copy(*original).get()));
}

void giveOwnMaterial(const osg::NodeCorePtr& core)
{
    const auto drawable = osg::fcCast<osg::MaterialDrawable>(core);
    if (drawable && drawable->getMaterial())
        drawable->setMaterial(copyOf<osg::Material>(drawable->getMaterial()));
}

void giveOwnCore(const osg::NodePtr& node, bool keepMaterials)
{
    const osg::NodeCorePtr shared = node->getCore();
    if (!shared || shared->getRefCount() < 2)
        return;
    const osg::NodeCorePtr own = copyOf<osg::NodeCore>(shared);
    if (!keepMaterials)
        giveOwnMaterial(own);
    osg::exchangeCore(node, own);
}

} // namespace

znNodePtr::znNodePtr() = default;
znNodePtr::znNodePtr(const osg::NodePtr& node) : m_node(node) {}
znNodePtr::znNodePtr(const znNodePtr&) = default;
znNodePtr& znNodePtr::operator=(const znNodePtr&) = default;
znNodePtr::~znNodePtr() = default;

znNodePtr znScenegraph::unshareNode(const osg::NodePtr& node, DuplicateBehaviour behaviour, bool recursive,
                                    bool keepMaterials)
{
    const zn::TracedCall call("znScenegraph::unshareNode", node, int(behaviour), recursive, keepMaterials);
    osg::traverse(node, [&](const osg::NodePtr& step) {
        if (step)
            giveOwnCore(step, keepMaterials);
        return recursive ? osg::Action::Continue : osg::Action::Skip;
    });
    return znNodePtr(node);
}
