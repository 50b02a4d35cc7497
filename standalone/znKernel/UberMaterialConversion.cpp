#include "standalone/znKernel/UberMaterialConversion.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/MaterialGroup.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "standalone/OSGSystem/Attachments.h"
#include "standalone/znOpenSGUberMaterial/MaterialLook.h"

#include <unordered_map>

namespace zn
{

namespace
{

/// Uber materials, one for each simple one however often that is used.
class UberMaterials
{
public:
    /// What stands for `material`, which is the same again when there is nothing to convert.
    osg::MaterialPtr of(const osg::MaterialPtr& material)
    {
        const auto simple = osg::fcCast<osg::SimpleMaterial>(material);
        if (!simple)
            return material;
        osg::RefPtr<osg::UberMaterialPtr>& made = m_made[simple.get()];
        if (!made)
            made = converted(simple);
        return made.get();
    }

private:
    static osg::UberMaterialPtr converted(const osg::SimpleMaterialPtr& simple)
    {
        const osg::UberMaterialPtr uber = osg::UberMaterial::create();
        osg::beginEditCP(uber, osg::UberMaterial::LookFieldMask, 1);
        uber->setLook(*osg::lookOf(simple));
        osg::endEditCP(uber, osg::UberMaterial::LookFieldMask, 1);
        osg::AttachmentAccess::copyAll(*simple, *uber);
        return uber;
    }

    std::unordered_map<const osg::SimpleMaterial*, osg::RefPtr<osg::UberMaterialPtr>> m_made;
};

/// `Core` holds a material under the mask `mask`.
template <class Core>
void convert(const typename Core::Ptr& core, osg::FieldMask mask, UberMaterials& materials)
{
    if (!core)
        return;
    const osg::MaterialPtr material = materials.of(core->getMaterial());
    if (material == core->getMaterial())
        return;
    osg::beginEditCP(core, mask, 1);
    core->setMaterial(material);
    osg::endEditCP(core, mask, 1);
}

} // namespace

void convertToUberMaterials(const osg::NodePtr& root)
{
    UberMaterials materials;
    osg::traverse(root, [&materials](const osg::NodePtr& node) {
        const osg::NodeCorePtr core = node ? node->getCore() : osg::NodeCorePtr();
        convert<osg::MaterialGroup>(osg::fcCast<osg::MaterialGroup>(core), osg::MaterialGroup::MaterialFieldMask,
                                    materials);
        convert<osg::Geometry>(osg::fcCast<osg::Geometry>(core), osg::MaterialDrawableBase::MaterialFieldMask,
                               materials);
        return osg::Action::Continue;
    });
}

} // namespace zn
