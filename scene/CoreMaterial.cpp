#include "scene/CoreMaterial.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/MaterialDrawable.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "scene/EditScope.h"

namespace osg
{

namespace
{

/// `Core` holds a material under the mask `mask`.
template <class Core>
bool give(const typename Core::Ptr& core, FieldMask mask, const MaterialPtr& material)
{
    if (!core)
        return false;
    const EditScope edit(core, mask);
    core->setMaterial(material);
    return true;
}

} // namespace

MaterialPtr materialOf(const NodeCorePtr& core)
{
    if (const auto group = fcCast<MaterialGroup>(core))
        return group->getMaterial();
    const auto drawable = fcCast<MaterialDrawable>(core);
    return drawable ? drawable->getMaterial() : MaterialPtr();
}

MaterialPtr materialBelow(const NodePtr& node, const MaterialPtr& above)
{
    const auto group = above ? MaterialGroupPtr() : fcCast<MaterialGroup>(node->getCore());
    return group ? group->getMaterial() : above;
}

bool setMaterial(const NodeCorePtr& core, const MaterialPtr& material)
{
    return give<MaterialGroup>(fcCast<MaterialGroup>(core), MaterialGroupBase::MaterialFieldMask, material) ||
           give<MaterialDrawable>(fcCast<MaterialDrawable>(core), MaterialDrawableBase::MaterialFieldMask, material);
}

} // namespace osg
