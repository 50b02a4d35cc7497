#include "standalone/znKernel/NodeUnsharing.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/Material.h"
#include "host/OSGSystem/MaterialDrawable.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/ContainerRegistry.h"
#include "scene/SceneEdits.h"

namespace zn::kernel
{

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

void giveOwnCores(const osg::NodePtr& root, bool recursive, bool keepMaterials)
{
    osg::traverse(root, [&](const osg::NodePtr& step) {
        if (step)
            giveOwnCore(step, keepMaterials);
        return recursive ? osg::Action::Continue : osg::Action::Skip;
    });
}

} // namespace zn::kernel
