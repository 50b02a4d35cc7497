#include "optimization/znPtxTreeOptimizationJob.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Drawable.h"
#include "host/OSGSystem/Edit.h"
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
#include "import/TreeEdits.h"
#include "import/TreeNotices.h"
#include "optimization/BookmarkConversion.h"
#include "optimization/GeometryCleanup.h"
#include "optimization/MaterialAssets.h"
#include "optimization/MaterialFolding.h"
#include "optimization/MaterialUpdate.h"
#include "optimization/SourceReferences.h"

#include <set>

namespace
{

void renewEnvironment()
{
    znNodeUtils::destroy(znScenegraph::environmentGeometrySwitch());
    (void)znScenegraph::createEnvironmentGeometrySwitch({});
    znOSGWidget::showAllMains(false);
}

} // namespace

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
    const osg::NodePtr root = m_root.get();
    const bool useGsk = znFileIO::getUseGSK();
    const zndPtxSettings settings = znFileIOHelper::getImportSettingsByFileName(m_fileName, false);
    reduceMaterials(root, settings);
    prepareSurfaces(root, useGsk);
    const bool isPtx = znFileIOHelper::isPtxFile(m_fileName);
    if (isPtx)
        cleanConvertedTree(root, settings, useGsk);
    removeOrigins(root);

    beginStep("insertIntoScene");
    const bool wasEmpty = znScenegraph::isEmpty();
    insertIntoScene(root);
    takeUpMaterialsAndBookmarks(root);
    if (isPtx)
        unshareNodes(root, settings);
    applySceneSettings(root);
    beginStep("renewEnvironment");
    if (wasEmpty)
        renewEnvironment();
    beginStep("notifyReferences");
    frame::notifyReferences(root, frame::TreeNotice::OptimisedTree);
    beginStep(nullptr);
    m_state = znCADFileTypes::JobSucceeded;
    Q_EMIT processingFinished();
}

void znPtxTreeOptimizationJob::beginStep(const char* name) const
{
    if (m_stepListener)
        m_stepListener(name);
}

void znPtxTreeOptimizationJob::reduceMaterials(const osg::NodePtr& root, const zndPtxSettings& settings) const
{
    beginStep("optimizeMaterials");
    if (settings.getMergeSubReferenceMaterials())
        optimization::MaterialFolding().optimizeMaterials(root);
    beginStep("updateMaterials");
    if (m_updateMaterials)
        optimization::updateMaterials(root);
    beginStep("reuseMaterials");
    if (!m_mergeMaterials)
        return;
    const std::set<unsigned> known = znMaterials::getMaterialPoolMaterialIds();
    znMaterialMerger::reuseMaterials({znNodePtr(root)}, known,
                                     static_cast<znMaterialComparison::MaterialCompareSettings>(12),
                                     static_cast<znMaterialMerger::MaterialMergeSettings>(0));
}

void znPtxTreeOptimizationJob::prepareSurfaces(const osg::NodePtr& root, bool useGsk) const
{
    beginStep("addAmbientOcclusion");
    if (m_addAmbientOcclusion && useGsk)
        znNodeUtils::addAmbientOcclusionData(root);
    beginStep("removeVertexColors");
    znNodeUtils::removeVertexColors(root);
}

/// The name is asked again for the opposite of what brought it here: empty groups stay.
void znPtxTreeOptimizationJob::cleanConvertedTree(const osg::NodePtr& root, const zndPtxSettings& settings,
                                                  bool useGsk) const
{
    beginStep("removeEmptyGroups");
    if (settings.getRemoveEmptyGroups() && !znFileIOHelper::isPtxFile(m_fileName))
        znOptimize::removeEmptyGroups(root, false);
    beginStep("flushTransformations");
    if (settings.getFlushTransformations())
        znOptimize::flushTransformationsKeepFaceNormals(root);
    else if (m_flushGeometryScales)
        optimization::flushGeometryScales(root);
    beginStep("mergeGeometries");
    if (settings.getMergeGeometries() && !useGsk)
        optimization::mergeGeometries(root, settings);
    beginStep("removeNurbs");
    if (!settings.getKeepNurbs())
        znOptimize::removeNURBS(root);
    beginStep("removeSourceReferences");
    if (settings.getSourceReferenceBehavior() == 0)
        optimization::removeSourceReferences(root);
}

void znPtxTreeOptimizationJob::removeOrigins(const osg::NodePtr& root) const
{
    beginStep("removePtxTag");
    znPtxHelper::removePtxTag(root);
    beginStep("removeInvalidMechanorReferences");
    if (znFileIOHelper::isBrantelMechanorFile(m_fileName))
        optimization::removeInvalidMechanorReferences(root);
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

void znPtxTreeOptimizationJob::insertIntoScene(const osg::NodePtr& root) const
{
    frame::addChild(decideParent(), root);
}

/// The bookmarks look for materials by name, in the pool.
void znPtxTreeOptimizationJob::takeUpMaterialsAndBookmarks(osg::NodePtr root) const
{
    beginStep("registerMaterials");
    const osg::MaterialPoolPtr pool = znScenegraph::getMaterialPool();
    osg::beginEditCP(pool, osg::AllFieldsMask, 1);
    pool->add(root);
    osg::endEditCP(pool, osg::AllFieldsMask, 1);
    beginStep("convertBookmarks");
    if (m_convertBookmarks)
        optimization::convertStylarBookmarks(root, false);
}

void znPtxTreeOptimizationJob::unshareNodes(const osg::NodePtr& root, const zndPtxSettings& settings) const
{
    beginStep("unshareNodes");
    if (settings.getUnshareNodes())
        (void)znScenegraph::unshareNode(root, znScenegraph::DuplicateCores, true, true);
}

void znPtxTreeOptimizationJob::applySceneSettings(const osg::NodePtr& root) const
{
    beginStep("applySceneSettings");
    const zndSceneImportSettings settings = znFileIOHelper::getGlobalSceneImportSettings();
    if (settings.getApplyMaterialsFromAssetManager())
        optimization::applySelectedMaterialAssets(root);
    const bool putOnGround = settings.getPutOnGround();
    const bool centerInOrigin = settings.getCenterInOrigin();
    znFileIO::applyGeometryImportTransformations(root, m_fileName, false, centerInOrigin, putOnGround);
}
