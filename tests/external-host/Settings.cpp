// What an import asks for: references stay, part files come in, nothing is changed.
#include "host/znKernel/znFileIOHelper.h"
#include "host/znKernel/znImportOptions.h"
#include "host/znKernelServices/zndPtxSettings.h"
#include "host/znKernelServices/zndSceneImportSettings.h"

struct zndPtxSettings::Values {
};
struct zndSceneImportSettings::Values {
};

zndPtxSettings znFileIOHelper::getImportSettingsByFileName(const QString&, bool)
{
    return zndPtxSettings(nullptr);
}
zndSceneImportSettings znFileIOHelper::getGlobalSceneImportSettings()
{
    return zndSceneImportSettings(nullptr);
}

znImportOptions::znImportOptions(const std::string&, bool, bool) : m_importReferencedFiles(true) {}
znImportOptions::~znImportOptions() = default;

zndPtxSettings::zndPtxSettings(std::shared_ptr<const Values> values) : m_values(std::move(values)) {}
zndPtxSettings::~zndPtxSettings() = default;
bool zndPtxSettings::getMergeSubReferenceMaterials() const
{
    return false;
}
bool zndPtxSettings::getRemoveEmptyGroups() const
{
    return false;
}
bool zndPtxSettings::getFlushTransformations() const
{
    return false;
}
bool zndPtxSettings::getMergeGeometries() const
{
    return false;
}
bool zndPtxSettings::getKeepNurbs() const
{
    return false;
}
bool zndPtxSettings::getUnshareNodes() const
{
    return false;
}
zndPtxSettings::SourceReferenceBehavior zndPtxSettings::getSourceReferenceBehavior() const
{
    return KeepReferences;
}
bool zndPtxSettings::getUseStitching() const
{
    return false;
}
double zndPtxSettings::getStitchingTolerance() const
{
    return 0;
}
double zndPtxSettings::getChordDeviation() const
{
    return 0;
}
double zndPtxSettings::getNormalTolerance() const
{
    return 0;
}
double zndPtxSettings::getMaxChordLength() const
{
    return 0;
}

zndSceneImportSettings::zndSceneImportSettings(std::shared_ptr<const Values> values) : m_values(std::move(values)) {}
zndSceneImportSettings::~zndSceneImportSettings() = default;
bool zndSceneImportSettings::getApplyMaterialsFromAssetManager() const
{
    return false;
}
bool zndSceneImportSettings::getPutOnGround() const
{
    return false;
}
bool zndSceneImportSettings::getCenterInOrigin() const
{
    return false;
}
