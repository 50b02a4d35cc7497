#include "host/znKernelServices/zndSceneImportSettings.h"

#include "standalone/znKernelServices/SceneImportSettingsValues.h"
#include "standalone/znUtils/CallTrace.h"

zndSceneImportSettings::zndSceneImportSettings(std::shared_ptr<const Values> values) : m_values(std::move(values)) {}
zndSceneImportSettings::zndSceneImportSettings(const zndSceneImportSettings&) = default;
zndSceneImportSettings& zndSceneImportSettings::operator=(const zndSceneImportSettings&) = default;
zndSceneImportSettings::~zndSceneImportSettings() = default;

bool zndSceneImportSettings::getApplyMaterialsFromAssetManager() const
{
    const zn::TracedCall call("zndSceneImportSettings::getApplyMaterialsFromAssetManager");
    return m_values->applyMaterialsFromAssetManager;
}

bool zndSceneImportSettings::getPutOnGround() const
{
    const zn::TracedCall call("zndSceneImportSettings::getPutOnGround");
    return m_values->putOnGround;
}

bool zndSceneImportSettings::getCenterInOrigin() const
{
    const zn::TracedCall call("zndSceneImportSettings::getCenterInOrigin");
    return m_values->centerInOrigin;
}
