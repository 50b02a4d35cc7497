#pragma once

#include "host/znKernelServices/zndSceneImportSettings.h"

/// What one object of it answers.
struct zndSceneImportSettings::Values {
    bool applyMaterialsFromAssetManager = false;
    bool putOnGround = false;
    bool centerInOrigin = false;
};
