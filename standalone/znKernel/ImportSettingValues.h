#pragma once

#include "host/znKernelServices/zndPtxSettings.h"
#include "host/znKernelServices/zndSceneImportSettings.h"

namespace zn
{
class Settings;
} // namespace zn

namespace zn::kernel
{

/// What the settings say now of the trees that the converter makes; later changes do not reach the result. A
/// tessellation preset wins over the numbers that it stands for.
zndPtxSettings ptxSettings(const Settings& settings);

/// What the settings say now of every import; later changes do not reach the result.
zndSceneImportSettings sceneImportSettings(const Settings& settings);

} // namespace zn::kernel
