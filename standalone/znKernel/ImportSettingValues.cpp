#include "standalone/znKernel/ImportSettingValues.h"

#include "geometry/TessellationPresets.h"
#include "standalone/session/Settings.h"
#include "standalone/znKernelServices/PtxSettingsValues.h"
#include "standalone/znKernelServices/SceneImportSettingsValues.h"

namespace zn::kernel
{

zndPtxSettings ptxSettings(const Settings& settings)
{
    const OptimizeSettings& optimize = settings.optimize;
    const TessellationSettings& tessellation = settings.tessellation;
    auto values = std::make_shared<zndPtxSettings::Values>();
    values->mergeSubReferenceMaterials = optimize.mergeMaterials;
    values->removeEmptyGroups = optimize.removeEmptyGroups;
    values->flushTransformations = optimize.flushTransformations;
    values->mergeGeometries = optimize.mergeGeometries;
    values->keepNurbs = optimize.keepNurbs;
    values->unshareNodes = optimize.unshareNodes;
    values->sourceReferences = optimize.sourceReferences == zn::OptimizeSettings::References::Keep
                                   ? zndPtxSettings::KeepReferences
                                   : zndPtxSettings::DissolveReferences;
    values->useStitching = tessellation.useStitching;
    values->stitchingTolerance = tessellation.stitchingTolerance;
    values->chordDeviation = tessellation.chordDeviation;
    values->normalTolerance = tessellation.normalTolerance;
    values->maxChordLength = tessellation.maxChordLength;
    if (const auto* preset = geometry::findTessellationPreset(tessellation.preset.value().toStdString())) {
        values->chordDeviation = preset->chordDeviation;
        values->normalTolerance = preset->normalTolerance;
        values->maxChordLength = preset->maxChordLength;
    }
    return zndPtxSettings(std::move(values));
}

zndSceneImportSettings sceneImportSettings(const Settings& settings)
{
    const SceneSettings& scene = settings.scene;
    auto values = std::make_shared<zndSceneImportSettings::Values>();
    values->applyMaterialsFromAssetManager = scene.applyMaterialAssets;
    values->centerInOrigin = scene.centerInOrigin;
    values->putOnGround = scene.putOnGround;
    return zndSceneImportSettings(std::move(values));
}

} // namespace zn::kernel
