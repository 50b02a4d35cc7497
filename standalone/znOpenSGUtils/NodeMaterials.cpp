// Materials of nodes.

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Material.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGUtils/znNodeUtils.h"
#include "standalone/OSGSystem/ContainerRegistry.h"
#include "standalone/OSGSystem/CoreMaterial.h"
#include "standalone/znUtils/CallTrace.h"

namespace
{

osg::MaterialPtr copyOf(const osg::MaterialPtr& material)
{
    return material ? osg::fcCast<osg::Material>(osg::ContainerAccess::copy(*material)) : osg::MaterialPtr();
}

} // namespace

osg::MaterialPtr znNodeUtils::getMaterial(const osg::NodePtr& node)
{
    const zn::TracedCall call("znNodeUtils::getMaterial", node);
    return node ? osg::materialOf(node->getCore()) : osg::MaterialPtr();
}

bool znNodeUtils::setMaterial(const osg::NodePtr& node, const osg::MaterialPtr& material, bool below, bool asCopy)
{
    const zn::TracedCall call("znNodeUtils::setMaterial", node, material, below, asCopy);
    const osg::RefPtr<osg::MaterialPtr> holder(material);
    bool isChanged = false;
    osg::traverse(node, [&](const osg::NodePtr& step) {
        const osg::NodeCorePtr core = step ? step->getCore() : osg::NodeCorePtr();
        if (osg::setMaterial(core, material))
            isChanged = true;
        if (asCopy && osg::materialOf(core) == material)
            osg::setMaterial(core, copyOf(material));
        return below ? osg::Action::Continue : osg::Action::Skip;
    });
    return isChanged;
}
