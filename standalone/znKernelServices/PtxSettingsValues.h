#pragma once

#include "host/znKernelServices/zndPtxSettings.h"

/// What one object of it answers.
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
