#include "standalone/znOpenSGUtils/NodeMaterials.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/MaterialDrawable.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "standalone/OSGSystem/ContainerRegistry.h"

namespace
{

/// `Core` holds a material under the mask `mask`.
template <class Core>
bool give(const typename Core::Ptr& core, osg::FieldMask mask, const osg::MaterialPtr& material)
{
    if (!core)
        return false;
    osg::beginEditCP(core, mask, 1);
    core->setMaterial(material);
    osg::endEditCP(core, mask, 1);
    return true;
}

osg::MaterialPtr copyOf(const osg::MaterialPtr& material)
{
    return material ? osg::fcCast<osg::Material>(osg::ContainerAccess::copy(*material)) : osg::MaterialPtr();
}

} // namespace

osg::MaterialPtr zn::materialOf(const osg::NodeCorePtr& core)
{
    if (const auto group = osg::fcCast<osg::MaterialGroup>(core))
        return group->getMaterial();
    const auto drawable = osg::fcCast<osg::MaterialDrawable>(core);
    return drawable ? drawable->getMaterial() : osg::MaterialPtr();
}

bool zn::setMaterial(const osg::NodeCorePtr& core, const osg::MaterialPtr& material)
{
    return give<osg::MaterialGroup>(osg::fcCast<osg::MaterialGroup>(core), osg::MaterialGroupBase::MaterialFieldMask,
                                    material) ||
           give<osg::MaterialDrawable>(osg::fcCast<osg::MaterialDrawable>(core),
                                       osg::MaterialDrawableBase::MaterialFieldMask, material);
}

bool zn::setMaterialOfTree(const osg::NodePtr& root, const osg::MaterialPtr& material, bool below, bool asCopy)
{
    const osg::RefPtr<osg::MaterialPtr> holder(material);
    bool isChanged = false;
    osg::traverse(root, [&](const osg::NodePtr& step) {
        const osg::NodeCorePtr core = step ? step->getCore() : osg::NodeCorePtr();
        if (zn::setMaterial(core, material))
            isChanged = true;
        if (asCopy && zn::materialOf(core) == material)
            zn::setMaterial(core, copyOf(material));
        return below ? osg::Action::Continue : osg::Action::Skip;
    });
    return isChanged;
}
