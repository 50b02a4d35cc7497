#pragma once

#include "host/znKernelServices/zndPtxSettings.h"
#include "host/znKernelServices/zndSceneImportSettings.h"

struct zndPtxSettings::Values {
    bool mergeSubReferenceMaterials = false;
    bool removeEmptyGroups = false;
    bool flushTransformations = false;
    bool mergeGeometries = false;
    bool keepNurbs = false;
    bool unshareNodes = false;
    bool useStitching = false;
    SourceReferenceBehavior sourceReferences = DissolveReferences;
    double stitchingTolerance = 0;
    double chordDeviation = 0;
    double normalTolerance = 0;
    double maxChordLength = 0;
};

struct zndSceneImportSettings::Values {
    bool applyMaterialsFromAssetManager = false;
    bool putOnGround = false;
    bool centerInOrigin = false;
};
