#include "standalone/znKernelServices/ImportSettings.h"

#include "host/znKernel/znFileIO.h"
#include "host/znKernel/znFileIOHelper.h"
#include "standalone/geometry/TessellationPresets.h"
#include "standalone/session/znStandaloneSession.h"
#include "standalone/znUtils/CallTrace.h"

namespace
{

class Rows
{
public:
    bool isOn(const char* name) const { return m_settings.isOn(QString::fromLatin1(name)); }
    double number(const char* name) const { return m_settings.number(QString::fromLatin1(name)); }
    QString text(const char* name) const { return m_settings.text(QString::fromLatin1(name)); }

private:
    const zn::Settings& m_settings = znStandaloneSession::require().settings();
};

} // namespace

zndPtxSettings znFileIOHelper::getImportSettingsByFileName(const QString& path, bool interactive)
{
    const zn::TracedCall call("znFileIOHelper::getImportSettingsByFileName", path, interactive);
    const Rows rows;
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

zndSceneImportSettings znFileIOHelper::getGlobalSceneImportSettings()
{
    const zn::TracedCall call("znFileIOHelper::getGlobalSceneImportSettings");
    const Rows rows;
    auto values = std::make_shared<zndSceneImportSettings::Values>();
    values->applyMaterialsFromAssetManager = rows.isOn("scene.applyMaterialAssets");
    values->centerInOrigin = rows.isOn("scene.centerInOrigin");
    values->putOnGround = rows.isOn("scene.putOnGround");
    return zndSceneImportSettings(std::move(values));
}

bool znFileIO::getUseGSK()
{
    const zn::TracedCall call("znFileIO::getUseGSK");
    return Rows().isOn("optimize.solidKernel");
}
