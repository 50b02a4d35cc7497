#include "standalone/znOpenSGUtils/NodeMaterials.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Material.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/ContainerRegistry.h"
#include "scene/CoreMaterial.h"
#include "standalone/znUtils/CallTrace.h"

namespace
{

osg::MaterialPtr copyOf(const osg::MaterialPtr& material)
{
    return material ? osg::fcCast<osg::Material>(osg::ContainerAccess::copy(*material)) : osg::MaterialPtr();
}

} // namespace

bool zn::nodes::setMaterialOfTree(const osg::NodePtr& root, const osg::MaterialPtr& material, bool below, bool asCopy)
{
    const osg::RefPtr<osg::MaterialPtr> holder(material);
    bool isChanged = false;
    osg::traverse(root, [&](const osg::NodePtr& step) {
        const osg::NodeCorePtr core = step ? step->getCore() : osg::NodeCorePtr();
        if (osg::setMaterial(core, material))
            isChanged = true;
        if (asCopy && osg::materialOf(core) == material)
            osg::setMaterial(core, copyOf(material));
        return below ? osg::Action::Continue : osg::Action::Skip;
    });
    return isChanged;
}
