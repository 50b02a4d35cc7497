#include "scene/SubMaterials.h"

#include "host/OSGSystem/Cast.h"
#include "host/znOpenSGUberMaterial/UBRDFMaterial.h"

#include <unordered_set>

namespace osg
{

std::vector<MaterialPtr> directSubMaterials(const MaterialPtr& material)
{
    if (const auto choices = fcCast<SwitchMaterial>(material))
        return choices->getMaterials();
    if (const auto brdf = fcCast<UBRDFMaterial>(material); brdf && brdf->getEnvironment())
        return {brdf->getEnvironment()};
    return {};
}

std::vector<MaterialPtr> subMaterialsFirst(const MaterialPtr& material)
{
    struct Step {
        MaterialPtr material;
        bool isDone; ///< all that it holds is listed
    };
    std::vector<MaterialPtr> result;
    std::unordered_set<const Material*> met;
    std::vector<Step> steps = {{material, false}};
    while (!steps.empty()) {
        const Step step = steps.back();
        steps.pop_back();
        if (step.isDone)
            result.push_back(step.material);
        else if (step.material && met.insert(step.material.get()).second) {
            steps.push_back({step.material, true});
            const std::vector<MaterialPtr> inside = directSubMaterials(step.material);
            for (auto entry = inside.rbegin(); entry != inside.rend(); ++entry)
                steps.push_back({*entry, false});
        }
    }
    return result;
}

MaterialPtr shownMaterial(const MaterialPtr& material)
{
    MaterialPtr shown = material;
    std::unordered_set<const Material*> met;
    while (const auto choices = fcCast<SwitchMaterial>(shown)) {
        if (!met.insert(choices.get()).second)
            return {};
        shown = choices->getMaterial(choices->getChoice());
    }
    return shown;
}

} // namespace osg
