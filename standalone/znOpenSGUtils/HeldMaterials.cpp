#include "standalone/znOpenSGUtils/HeldMaterials.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/SwitchMaterial.h"
#include "scene/SubMaterials.h"

#include <unordered_set>

namespace zn::nodes
{

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

void appendHeldMaterials(const osg::MaterialPtr& material, std::vector<osg::MaterialPtr>& materials, bool shownOnly)
{
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

} // namespace zn::nodes
