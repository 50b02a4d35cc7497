#include "standalone/znKernel/ImportSettingValues.h"

#include "standalone/geometry/TessellationPresets.h"
#include "standalone/session/Settings.h"
#include "standalone/znKernelServices/PtxSettingsValues.h"
#include "standalone/znKernelServices/SceneImportSettingsValues.h"

namespace zn
{

namespace
{

class Rows
{
public:
    explicit Rows(const Settings& settings) : m_settings(settings) {}

    bool isOn(const char* name) const { return m_settings.isOn(QString::fromLatin1(name)); }
    double number(const char* name) const { return m_settings.number(QString::fromLatin1(name)); }
    QString text(const char* name) const { return m_settings.text(QString::fromLatin1(name)); }

private:
    const Settings& m_settings;
};

} // namespace

zndPtxSettings ptxSettings(const Settings& settings)
{
    const Rows rows(settings);
    auto values = std::make_shared<zndPtxSettings::Values>();
    values->mergeSubReferenceMaterials = rows.isOn("optimize.mergeMaterials");
    values->removeEmptyGroups = rows.isOn("optimize.removeEmptyGroups");
    values->flushTransformations = rows.isOn("optimize.flushTransformations");
    values->mergeGeometries = rows.isOn("optimize.mergeGeometries");
    values->keepNurbs = rows.isOn("optimize.keepNurbs");
    values->unshareNodes = rows.isOn("optimize.unshareNodes");
    values->sourceReferences = rows.text("optimize.sourceReferences") == QLatin1String("keep")
                                   ? zndPtxSettings::KeepReferences
                                   : zndPtxSettings::DissolveReferences;
    values->useStitching = rows.isOn("tessellation.useStitching");
    values->stitchingTolerance = rows.number("tessellation.stitchingTolerance");
    values->chordDeviation = rows.number("tessellation.chordDeviation");
    values->normalTolerance = rows.number("tessellation.normalTolerance");
    values->maxChordLength = rows.number("tessellation.maxChordLength");
    if (const auto* preset = geometry::findTessellationPreset(rows.text("tessellation.preset").toStdString())) {
        values->chordDeviation = preset->chordDeviation;
        values->normalTolerance = preset->normalTolerance;
        values->maxChordLength = preset->maxChordLength;
    }
    return zndPtxSettings(std::move(values));
}

zndSceneImportSettings sceneImportSettings(const Settings& settings)
{
    const Rows rows(settings);
    auto values = std::make_shared<zndSceneImportSettings::Values>();
    values->applyMaterialsFromAssetManager = rows.isOn("scene.applyMaterialAssets");
    values->centerInOrigin = rows.isOn("scene.centerInOrigin");
    values->putOnGround = rows.isOn("scene.putOnGround");
    return zndSceneImportSettings(std::move(values));
}

} // namespace zn
