#include "host/znKernelServices/zndPtxSettings.h"

#include "standalone/znKernelServices/PtxSettingsValues.h"
#include "standalone/znUtils/CallTrace.h"

zndPtxSettings::zndPtxSettings(std::shared_ptr<const Values> values) : m_values(std::move(values)) {}
zndPtxSettings::zndPtxSettings(const zndPtxSettings&) = default;
zndPtxSettings& zndPtxSettings::operator=(const zndPtxSettings&) = default;
zndPtxSettings::~zndPtxSettings() = default;

bool zndPtxSettings::getMergeSubReferenceMaterials() const
{
    const zn::TracedCall call("zndPtxSettings::getMergeSubReferenceMaterials");
    return m_values->mergeSubReferenceMaterials;
}

bool zndPtxSettings::getRemoveEmptyGroups() const
{
    const zn::TracedCall call("zndPtxSettings::getRemoveEmptyGroups");
    return m_values->removeEmptyGroups;
}

bool zndPtxSettings::getFlushTransformations() const
{
    const zn::TracedCall call("zndPtxSettings::getFlushTransformations");
    return m_values->flushTransformations;
}

bool zndPtxSettings::getMergeGeometries() const
{
    const zn::TracedCall call("zndPtxSettings::getMergeGeometries");
    return m_values->mergeGeometries;
}

bool zndPtxSettings::getKeepNurbs() const
{
    const zn::TracedCall call("zndPtxSettings::getKeepNurbs");
    return m_values->keepNurbs;
}

bool zndPtxSettings::getUnshareNodes() const
{
    const zn::TracedCall call("zndPtxSettings::getUnshareNodes");
    return m_values->unshareNodes;
}

zndPtxSettings::SourceReferenceBehavior zndPtxSettings::getSourceReferenceBehavior() const
{
    const zn::TracedCall call("zndPtxSettings::getSourceReferenceBehavior");
    return m_values->sourceReferences;
}

bool zndPtxSettings::getUseStitching() const
{
    const zn::TracedCall call("zndPtxSettings::getUseStitching");
    return m_values->useStitching;
}

double zndPtxSettings::getStitchingTolerance() const
{
    const zn::TracedCall call("zndPtxSettings::getStitchingTolerance");
    return m_values->stitchingTolerance;
}

double zndPtxSettings::getChordDeviation() const
{
    const zn::TracedCall call("zndPtxSettings::getChordDeviation");
    return m_values->chordDeviation;
}

double zndPtxSettings::getNormalTolerance() const
{
    const zn::TracedCall call("zndPtxSettings::getNormalTolerance");
    return m_values->normalTolerance;
}

double zndPtxSettings::getMaxChordLength() const
{
    const zn::TracedCall call("zndPtxSettings::getMaxChordLength");
    return m_values->maxChordLength;
}
