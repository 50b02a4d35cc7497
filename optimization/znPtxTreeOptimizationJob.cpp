#include "optimization/znPtxTreeOptimizationJob.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/Geometry.h"
#include "host/OSGSystem/MaterialPool.h"
#include "host/znKernel/znFileIO.h"
#include "host/znKernel/znFileIOHelper.h"
#include "host/znKernel/znOSGWidget.h"
#include "host/znKernel/znPtxHelper.h"
#include "host/znKernel/znScenegraph.h"
#include "host/znOpenSGUberMaterial/znMaterialMerger.h"
#include "host/znOpenSGUtils/znMaterials.h"
#include "host/znOpenSGUtils/znNodeUtils.h"
#include "host/znOpenSGUtils/znOptimize.h"
#include "host/znTessellation/znRetessellation.h"
#include "import/ReferenceNotice.h"
#include "optimization/BookmarkConversion.h"
#include "optimization/MaterialAssets.h"
#include "optimization/MaterialFolding.h"
#include "optimization/MaterialUpdate.h"
#include "optimization/SourceReferences.h"

#include <vector>

namespace
{

constexpr osg::FieldMask allFields = ~osg::FieldMask(0);

/// Nothing below a geometry is visited. A flush may change the number of children.
void flushGeometryScales(const osg::NodePtr& root)
{
    struct Place {
        osg::NodePtr node;
        unsigned next = 0;
    };
    std::vector<Place> path{{root}};
    while (!path.empty()) {
        Place& place = path.back();
        if (place.next == 0 && osg::fcCast<osg::Geometry>(place.node->getCore())) {
            znOptimize::flushSelectedTransformationScales(place.node);
            path.pop_back();
        } else if (place.next < place.node->getNChildren()) {
            path.push_back({place.node->getChild(place.next++)});
        } else {
            path.pop_back();
        }
    }
}

} // namespace

/// What the steps of one run hand on.
struct znPtxTreeOptimizationJob::Run {
    bool useGsk;
    zndPtxSettings settings;
    osg::NodePtr root;
    bool isPtx = false;    ///< from the removal of the vertex colours on
    bool wasEmpty = false; ///< from the insertion into the scene on
};

/// A step, and whether it is one for converted trees only.
struct znPtxTreeOptimizationJob::Step {
    const char* name = nullptr;
    void (znPtxTreeOptimizationJob::*run)(Run&) = nullptr;
    bool onlyPtx = false;
};

const znPtxTreeOptimizationJob::Step znPtxTreeOptimizationJob::steps[] = {
    {"optimizeMaterials", &znPtxTreeOptimizationJob::optimizeMaterials},
    {"updateMaterials", &znPtxTreeOptimizationJob::updateMaterials},
    {"reuseMaterials", &znPtxTreeOptimizationJob::reuseMaterials},
    {"addAmbientOcclusion", &znPtxTreeOptimizationJob::addAmbientOcclusion},
    {"removeVertexColors", &znPtxTreeOptimizationJob::removeVertexColors},
    {"removeEmptyGroups", &znPtxTreeOptimizationJob::removeEmptyGroups, true},
    {"flushTransformations", &znPtxTreeOptimizationJob::flushTransformations, true},
    {"mergeGeometries", &znPtxTreeOptimizationJob::mergeGeometries, true},
    {"removeNurbs", &znPtxTreeOptimizationJob::removeNurbs, true},
    {"removeSourceReferences", &znPtxTreeOptimizationJob::removeSourceReferences, true},
    {"removePtxTag", &znPtxTreeOptimizationJob::removePtxTag},
    {"removeInvalidMechanorReferences", &znPtxTreeOptimizationJob::removeInvalidMechanorReferences},
    {"insertIntoScene", &znPtxTreeOptimizationJob::insertIntoScene},
    {"registerMaterials", &znPtxTreeOptimizationJob::registerMaterials},
    {"convertBookmarks", &znPtxTreeOptimizationJob::convertBookmarks},
    {"unshareNodes", &znPtxTreeOptimizationJob::unshareNodes, true},
    {"applySceneSettings", &znPtxTreeOptimizationJob::applySceneSettings},
    {"renewEnvironment", &znPtxTreeOptimizationJob::renewEnvironment},
    {"notifyReferences", &znPtxTreeOptimizationJob::notifyReferences},
};

znPtxTreeOptimizationJob::znPtxTreeOptimizationJob(const QString& fileName, const osg::NodePtr& root,
                                                   const osg::NodePtr& parent)
    : znAbstractProcessingJob(nullptr), m_fileName(fileName), m_root(root), m_parent(parent)
{
    m_canProcess = znFileIOHelper::isPtxFile(fileName) || znFileIOHelper::isPLMXMLFile(fileName);
    if (!m_canProcess && znPtxHelper::isConvertedPtxTree(root)) {
        m_fileName = znFileIOHelper::getFileNameFromFileInfo(root);
        m_canProcess = true;
    }
}

znPtxTreeOptimizationJob::~znPtxTreeOptimizationJob() = default;

void znPtxTreeOptimizationJob::process()
{
    Q_EMIT started();
    if (!m_canProcess || !m_root) {
        m_state = znCADFileTypes::JobFailed;
        Q_EMIT processingFinished();
        return;
    }
    const bool useGsk = znFileIO::getUseGSK();
    Run run{useGsk, znFileIOHelper::getImportSettingsByFileName(m_fileName, false), m_root.get()};
    for (const Step& step : steps) {
        if (step.onlyPtx && !run.isPtx)
            continue;
        if (m_stepListener)
            m_stepListener(step.name);
        (this->*step.run)(run);
    }
    if (m_stepListener)
        m_stepListener(nullptr);
    m_state = znCADFileTypes::JobSucceeded;
    Q_EMIT processingFinished();
}

void znPtxTreeOptimizationJob::optimizeMaterials(Run& run)
{
    if (run.settings.getMergeSubReferenceMaterials())
        MaterialFolding().optimizeMaterials(run.root);
}

void znPtxTreeOptimizationJob::updateMaterials(Run& run)
{
    if (m_updateMaterials)
        ::updateMaterials(run.root);
}

void znPtxTreeOptimizationJob::reuseMaterials(Run& run)
{
    if (!m_mergeMaterials)
        return;
    const std::set<unsigned> known = znMaterials::getMaterialPoolMaterialIds();
    znMaterialMerger::reuseMaterials({znNodePtr(run.root)}, known,
                                     static_cast<znMaterialComparison::MaterialCompareSettings>(12),
                                     static_cast<znMaterialMerger::MaterialMergeSettings>(0));
}

void znPtxTreeOptimizationJob::addAmbientOcclusion(Run& run)
{
    if (m_addAmbientOcclusion && run.useGsk)
        znNodeUtils::addAmbientOcclusionData(run.root);
}

void znPtxTreeOptimizationJob::removeVertexColors(Run& run)
{
    znNodeUtils::removeVertexColors(run.root);
    run.isPtx = znFileIOHelper::isPtxFile(m_fileName);
}

/// Asks again for the opposite of what brought it here: empty groups stay.
void znPtxTreeOptimizationJob::removeEmptyGroups(Run& run)
{
    if (run.settings.getRemoveEmptyGroups() && !znFileIOHelper::isPtxFile(m_fileName))
        znOptimize::removeEmptyGroups(run.root, false);
}

void znPtxTreeOptimizationJob::flushTransformations(Run& run)
{
    if (run.settings.getFlushTransformations())
        znOptimize::flushTransformationsKeepFaceNormals(run.root);
    else if (m_flushGeometryScales)
        flushGeometryScales(run.root);
}

void znPtxTreeOptimizationJob::mergeGeometries(Run& run)
{
    if (!run.settings.getMergeGeometries() || run.useGsk)
        return;
    znOptimize::cleanupGroupNodes(run.root);
    znOptimize::triangulate(run.root, false);
    znNodeUtils::verifyIndexMap(run.root);
    znOptimize::mergeGeometry(run.root);
    znRetessellation retessellation;
    znRetessellation::copySettings();
    retessellation.addNodes({run.root});
    const double stitchingTolerance = run.settings.getStitchingTolerance();
    const bool useStitching = run.settings.getUseStitching();
    const double maxChordLength = run.settings.getMaxChordLength();
    const double normalTolerance = run.settings.getNormalTolerance();
    const double chordDeviation = run.settings.getChordDeviation();
    retessellation.setupTessellation(chordDeviation, normalTolerance, maxChordLength, useStitching, stitchingTolerance);
    retessellation.applyTessellation();
    retessellation.rebuildSurfaces();
    retessellation.finalize();
}

void znPtxTreeOptimizationJob::removeNurbs(Run& run)
{
    if (!run.settings.getKeepNurbs())
        znOptimize::removeNURBS(run.root);
}

void znPtxTreeOptimizationJob::removeSourceReferences(Run& run)
{
    if (run.settings.getSourceReferenceBehavior() == 0)
        ::removeSourceReferences(run.root);
}

void znPtxTreeOptimizationJob::removePtxTag(Run& run)
{
    znPtxHelper::removePtxTag(run.root);
}

void znPtxTreeOptimizationJob::removeInvalidMechanorReferences(Run& run)
{
    if (znFileIOHelper::isBrantelMechanorFile(m_fileName))
        ::removeInvalidMechanorReferences(run.root);
}

osg::NodePtr znPtxTreeOptimizationJob::decideParent() const
{
    const osg::NodePtr parent = m_parent;
    const bool isDrawable = parent && osg::fcCast<osg::Drawable>(parent->getCore());
    if (isDrawable || znNodeUtils::getLock(parent) || znNodeUtils::hasLockedParent(parent) ||
        znNodeUtils::isUneditedAssetRoot(parent) || !parent)
        return znScenegraph::getRoot();
    return parent;
}

void znPtxTreeOptimizationJob::insertIntoScene(Run& run)
{
    run.wasEmpty = znScenegraph::isEmpty();
    const osg::NodePtr parent = decideParent();
    osg::beginEditCP(parent, osg::Node::ChildrenFieldMask, 1);
    parent->addChild(run.root);
    osg::endEditCP(parent, osg::Node::ChildrenFieldMask, 1);
}

void znPtxTreeOptimizationJob::registerMaterials(Run& run)
{
    const osg::MaterialPoolPtr pool = znScenegraph::getMaterialPool();
    osg::beginEditCP(pool, allFields, 1);
    pool->add(run.root);
    osg::endEditCP(pool, allFields, 1);
}

void znPtxTreeOptimizationJob::convertBookmarks(Run& run)
{
    if (m_convertBookmarks)
        convertStylarBookmarks(run.root, false);
}

void znPtxTreeOptimizationJob::unshareNodes(Run& run)
{
    if (run.settings.getUnshareNodes())
        (void)znScenegraph::unshareNode(run.root, znScenegraph::DuplicateCores, true, true);
}

void znPtxTreeOptimizationJob::applySceneSettings(Run& run)
{
    const zndSceneImportSettings settings = znFileIOHelper::getGlobalSceneImportSettings();
    if (settings.getApplyMaterialsFromAssetManager())
        applySelectedMaterialAssets(run.root);
    const bool putOnGround = settings.getPutOnGround();
    const bool centerInOrigin = settings.getCenterInOrigin();
    znFileIO::applyGeometryImportTransformations(run.root, m_fileName, false, centerInOrigin, putOnGround);
}

void znPtxTreeOptimizationJob::renewEnvironment(Run& run)
{
    if (!run.wasEmpty)
        return;
    znNodeUtils::destroy(znScenegraph::environmentGeometrySwitch());
    (void)znScenegraph::createEnvironmentGeometrySwitch({});
    znOSGWidget::showAllMains(false);
}

void znPtxTreeOptimizationJob::notifyReferences(Run& run)
{
    znReferenceNotice::send(run.root, znReferenceNotice::OptimisedTree);
}
