// Materials that hold others, and who uses them.

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Names.h"
#include "host/znOpenSGUtils/znMaterials.h"
#include "standalone/OSGSystem/SubMaterials.h"
#include "standalone/session/znStandaloneSession.h"
#include "standalone/znKernel/KernelState.h"
#include "standalone/znUtils/CallTrace.h"

#include <unordered_set>

namespace
{

/// What `material` holds, with the first of it last.
std::vector<osg::MaterialPtr> heldBy(const osg::MaterialPtr& material, bool shownOnly)
{
    const auto choices = osg::fcCast<osg::SwitchMaterial>(material);
    if (choices && shownOnly)
        return {choices->getMaterial(choices->getChoice())};
    const std::vector<osg::MaterialPtr> held = osg::directSubMaterials(material);
    return {held.rbegin(), held.rend()};
}

} // namespace

const char* znMaterials::getName(const osg::MaterialPtr& material)
{
    const zn::TracedCall call("znMaterials::getName", material);
    const char* name = osg::getName(material);
    return name ? name : "";
}

osg::MaterialField* znMaterials::getSubMaterials(const osg::MaterialPtr& material, osg::FieldMask& mask)
{
    const zn::TracedCall call("znMaterials::getSubMaterials", material);
    const auto choices = osg::fcCast<osg::SwitchMaterial>(material);
    if (!choices)
        return nullptr;
    mask = osg::SwitchMaterialBase::MaterialsFieldMask;
    return &osg::SwitchMaterialAccess::materials(*choices);
}

void znMaterials::getRecursiveMaterials(const osg::MaterialPtr& material, std::vector<osg::MaterialPtr>& materials,
                                        bool shownOnly)
{
    const zn::TracedCall call("znMaterials::getRecursiveMaterials", material, shownOnly);
    std::unordered_set<const osg::Material*> met;
    std::vector<osg::MaterialPtr> pending = {material};
    while (!pending.empty()) {
        const osg::MaterialPtr next = pending.back();
        pending.pop_back();
        if (!next || !met.insert(next.get()).second)
            continue;
        materials.push_back(next);
        for (const osg::MaterialPtr& held : heldBy(next, shownOnly))
            pending.push_back(held);
    }
}

void znMaterials::addRef(const osg::MaterialPtr& material, const osg::NodePtr& user, int purpose)
{
    const zn::TracedCall call("znMaterials::addRef", material, user, purpose);
    if (!material)
        return;
    zn::MaterialBook::Use& use = znStandaloneSession::require().kernel().materials.uses[material->getContainerId()];
    use.material = material;
    ++use.count;
}
