#include "standalone/znKernelServices/ImportSettings.h"

#include "host/znKernel/znFileIO.h"
#include "host/znKernel/znFileIOHelper.h"
#include "standalone/geometry/TessellationPresets.h"
#include "standalone/session/znStandaloneSession.h"
#include "standalone/znUtils/CallTrace.h"

namespace
{

const zn::Settings& settings()
{
    return znStandaloneSession::require().settings();
}

} // namespace

zndPtxSettings znFileIOHelper::getImportSettingsByFileName(const QString& path, bool interactive)
{
    const zn::TracedCall call("znFileIOHelper::getImportSettingsByFileName", path, interactive);
    const zn::OptimizeSettings& optimize = settings().optimize;
    const zn::TessellationSettings& tessellation = settings().tessellation;
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

zndSceneImportSettings znFileIOHelper::getGlobalSceneImportSettings()
{
    const zn::TracedCall call("znFileIOHelper::getGlobalSceneImportSettings");
    const zn::SceneSettings& scene = settings().scene;
    auto values = std::make_shared<zndSceneImportSettings::Values>();
    values->applyMaterialsFromAssetManager = scene.applyMaterialAssets;
    values->centerInOrigin = scene.centerInOrigin;
    values->putOnGround = scene.putOnGround;
    return zndSceneImportSettings(std::move(values));
}

bool znFileIO::getUseGSK()
{
    const zn::TracedCall call("znFileIO::getUseGSK");
    return settings().optimize.solidKernel;
}
