#include "standalone/znKernel/UberMaterialConversion.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/SimpleMaterial.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/Attachments.h"
#include "scene/CoreMaterial.h"
#include "scene/MaterialLook.h"
#include "standalone/session/Session.h"

#include <unordered_map>

namespace zn::kernel
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

void convert(const osg::NodeCorePtr& core, UberMaterials& materials)
{
    const osg::MaterialPtr before = osg::materialOf(core);
    const osg::MaterialPtr material = materials.of(before);
    if (material != before)
        osg::setMaterial(core, material);
}

} // namespace

void convertToUberMaterials(const osg::NodePtr& root)
{
    UberMaterials materials;
    osg::traverse(root, [&materials](const osg::NodePtr& node) {
        const osg::NodeCorePtr core = node ? node->getCore() : osg::NodeCorePtr();
        convert(core, materials);
        return osg::Action::Continue;
    });
}

} // namespace zn::kernel
