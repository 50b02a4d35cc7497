#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/MaterialPool.h"
#include "host/znKernel/znScenegraph.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "host/znOpenSGExt/FileInfo.h"
#include "scene/EditAudit.h"
#include "scene/NodeProperties.h"
#include "standalone/znKernel/UserInterfaceState.h"
#include "tests/optimization/TreeOptimizationTest.h"

namespace
{

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

using Job = TreeOptimizationTest;

TEST_F(Job, AForeignTreeIsRefusedAndStaysAsItIs)
{
    job = std::make_unique<znPtxTreeOptimizationJob>(QStringLiteral("a.obj"), tree.get(), osg::NodePtr());
    job->setMergeMaterials(true);
    EXPECT_TRUE(job->getMergeMaterials());
    EXPECT_EQ(runJob(), znCADFileTypes::JobFailed);
    EXPECT_THAT(calls, ElementsAre("started", "processingFinished"));
    EXPECT_FALSE(tree->getParent());
}

TEST_F(Job, ANullTreeIsRefused)
{
    tree = osg::NodePtr();
    EXPECT_EQ(run("a.stp"), znCADFileTypes::JobFailed);
    EXPECT_THAT(calls, ElementsAre("started", "processingFinished"));
}

TEST_F(Job, NamesAreJudgedBeforeTheTree)
{
    const auto judged = [this](const char* name) {
        calls.clear();
        const zn::CallTrace trace([this](const std::string& call) { calls.push_back(call); });
        job = std::make_unique<znPtxTreeOptimizationJob>(QString::fromUtf8(name), tree.get(), osg::NodePtr());
        return names();
    };
    EXPECT_THAT(judged("a.stp"), ElementsAre("znFileIOHelper::isPtxFile"));
    EXPECT_THAT(judged("a.plmxml"), ElementsAre("znFileIOHelper::isPtxFile", "znFileIOHelper::isPLMXMLFile"));
    EXPECT_THAT(judged("a.obj"), ElementsAre("znFileIOHelper::isPtxFile", "znFileIOHelper::isPLMXMLFile",
                                             "znPtxHelper::isConvertedPtxTree"));
    osg::setTags(tree.get(), {"ptx::converted"});
    EXPECT_THAT(judged("a.obj"),
                ElementsAre("znFileIOHelper::isPtxFile", "znFileIOHelper::isPLMXMLFile",
                            "znPtxHelper::isConvertedPtxTree", "znFileIOHelper::getFileNameFromFileInfo"));
    EXPECT_FALSE(job->getMergeMaterials());
}

TEST_F(Job, AConvertedFileGoesThroughAllStepsInTheirOrder)
{
    for (const char* name : {"optimize.removeEmptyGroups", "optimize.unshareNodes", "scene.applyMaterialAssets"})
        set(name, "on");
    EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
    EXPECT_THAT(
        names(),
        ElementsAre(
            "started", "znFileIO::getUseGSK", "znFileIOHelper::getImportSettingsByFileName",
            "zndPtxSettings::getMergeSubReferenceMaterials", "znNodeUtils::getMaterial", "znNodeUtils::getMaterial",
            "znNodeUtils::removeVertexColors", "znFileIOHelper::isPtxFile", "zndPtxSettings::getRemoveEmptyGroups",
            "znFileIOHelper::isPtxFile", "zndPtxSettings::getFlushTransformations",
            "znOptimize::flushSelectedTransformationScales", "zndPtxSettings::getMergeGeometries",
            "zndPtxSettings::getKeepNurbs", "znOptimize::removeNURBS", "zndPtxSettings::getSourceReferenceBehavior",
            "znPtxHelper::removePtxTag", "znFileIOHelper::isBrantelMechanorFile", "znScenegraph::isEmpty",
            "znNodeUtils::getLock", "znNodeUtils::hasLockedParent", "znNodeUtils::isUneditedAssetRoot",
            "znScenegraph::getRoot", "znScenegraph::getMaterialPool", "znNodeUtils::hasTag",
            "znNodeUtils::getNodesWithTag", "zndPtxSettings::getUnshareNodes", "znScenegraph::unshareNode",
            "znFileIOHelper::getGlobalSceneImportSettings", "zndSceneImportSettings::getApplyMaterialsFromAssetManager",
            "znController::call", "zndSceneImportSettings::getPutOnGround", "zndSceneImportSettings::getCenterInOrigin",
            "znFileIO::applyGeometryImportTransformations", "znReferenceInterface::notifyReferences",
            "processingFinished"));
    EXPECT_THAT(callsOf("znFileIOHelper::getImportSettingsByFileName"),
                ElementsAre("znFileIOHelper::getImportSettingsByFileName('a.stp', false)"));
    EXPECT_THAT(callsOf("znScenegraph::unshareNode"),
                ElementsAre("znScenegraph::unshareNode(" + treeText() + ", 0, true, true)"));
    EXPECT_THAT(callsOf("znReferenceInterface::notifyReferences"),
                ElementsAre("znReferenceInterface::notifyReferences(" + treeText() + ", 18, 0)"));
}

TEST_F(Job, AProductStructureLeavesOutWhatIsForConvertedFiles)
{
    set("optimize.unshareNodes", "on");
    set("optimize.mergeGeometries", "on");
    EXPECT_EQ(run("a.plmxml"), znCADFileTypes::JobSucceeded);
    EXPECT_THAT(names(),
                ElementsAre("started", "znFileIO::getUseGSK", "znFileIOHelper::getImportSettingsByFileName",
                            "zndPtxSettings::getMergeSubReferenceMaterials", "znNodeUtils::getMaterial",
                            "znNodeUtils::getMaterial", "znNodeUtils::removeVertexColors", "znFileIOHelper::isPtxFile",
                            "znPtxHelper::removePtxTag", "znFileIOHelper::isBrantelMechanorFile",
                            "znScenegraph::isEmpty", "znNodeUtils::getLock", "znNodeUtils::hasLockedParent",
                            "znNodeUtils::isUneditedAssetRoot", "znScenegraph::getRoot",
                            "znScenegraph::getMaterialPool", "znNodeUtils::hasTag", "znNodeUtils::getNodesWithTag",
                            "znFileIOHelper::getGlobalSceneImportSettings",
                            "zndSceneImportSettings::getApplyMaterialsFromAssetManager",
                            "zndSceneImportSettings::getPutOnGround", "zndSceneImportSettings::getCenterInOrigin",
                            "znFileIO::applyGeometryImportTransformations", "znReferenceInterface::notifyReferences",
                            "processingFinished"));
}

/// The converter reads it, though it is no format of the vocabulary.
TEST_F(Job, ABrepIsAConvertedFile)
{
    for (const char* name : {"a.brep", "a.brp"}) {
        tree = makeTree();
        EXPECT_EQ(run(name), znCADFileTypes::JobSucceeded) << name;
        EXPECT_TRUE(wasCalled("zndPtxSettings::getFlushTransformations")) << name;
        EXPECT_TRUE(wasCalled("znOptimize::removeNURBS")) << name;
        EXPECT_TRUE(wasCalled("zndPtxSettings::getUnshareNodes")) << name;
    }
}

TEST_F(Job, AConvertedTreeGoesByTheNameInItsFileInfo)
{
    const osg::FileInfoPtr info = osg::FileInfoBase::create();
    info->setFileName("/cars/engine.stp");
    tree->addAttachment(info);
    osg::setTags(tree.get(), {"ptx::converted"});
    EXPECT_EQ(run("whatever.xyz"), znCADFileTypes::JobSucceeded);
    EXPECT_THAT(callsOf("znFileIOHelper::getImportSettingsByFileName"),
                ElementsAre("znFileIOHelper::getImportSettingsByFileName('/cars/engine.stp', false)"));
    EXPECT_TRUE(wasCalled("zndPtxSettings::getFlushTransformations"));
    EXPECT_THAT(osg::tagsOf(tree.get()), IsEmpty());
}

TEST_F(Job, AConvertedTreeOfAForeignNameIsTreatedLikeAProductStructure)
{
    osg::setTags(tree.get(), {"ptx::converted"});
    EXPECT_EQ(run("whatever.xyz"), znCADFileTypes::JobSucceeded);
    EXPECT_FALSE(wasCalled("zndPtxSettings::getFlushTransformations"));
    EXPECT_EQ(tree->getParent(), scene());
}

TEST_F(Job, EmptyGroupsStayWhateverTheSettingSays)
{
    set("optimize.removeEmptyGroups", "on");
    add(tree.get(), osg::Group::create(), "empty");
    EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
    EXPECT_THAT(childNames(tree.get()), ElementsAre("Part", "empty"));
    EXPECT_FALSE(wasCalled("znOptimize::removeEmptyGroups"));
}

TEST_F(Job, ScalesAloneAreFlushedAtGeometriesAndNothingBelowThem)
{
    const osg::NodePtr part = tree->getChild(0);
    add(part, geometry(), "below");
    const osg::NodePtr scaled = add(tree.get(), transform(placed({2, 2, 2}, {7, 0, 0})), "scaled");
    const osg::NodePtr inner = add(scaled, geometry(), "inner");
    EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
    EXPECT_THAT(callsOf("znOptimize::flushSelectedTransformationScales"),
                ElementsAre("znOptimize::flushSelectedTransformationScales(node " +
                                std::to_string(part->getContainerId()) + " 'Part')",
                            "znOptimize::flushSelectedTransformationScales(node " +
                                std::to_string(inner->getContainerId()) + " 'inner')"));
    EXPECT_EQ(matrixOf(scaled), placed({1, 1, 1}, {7, 0, 0}));
    EXPECT_EQ(listed(meshOf(inner).positions), (Rows{{2, 4, 6}, {10, 4, 6}, {2, 16, 6}}));
}

TEST_F(Job, AllTransformsAreFlushedOnRequest)
{
    set("optimize.flushTransformations", "on");
    const osg::NodePtr moved = add(tree.get(), transform(placed({1, 1, 1}, {7, 0, 0})));
    const osg::NodePtr inner = add(moved, geometry());
    EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
    EXPECT_FALSE(wasCalled("znOptimize::flushSelectedTransformationScales"));
    EXPECT_TRUE(matrixOf(moved).isIdentity());
    EXPECT_EQ(listed(meshOf(inner).positions)[0], (std::vector<float>{8, 2, 3}));
}

TEST_F(Job, GeometryIsMergedAndMeshedAnewWithoutTheSolidKernel)
{
    set("optimize.mergeGeometries", "on");
    EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
    const std::vector<std::string> all = names();
    const auto begin = std::find(all.begin(), all.end(), "zndPtxSettings::getMergeGeometries");
    const auto end = std::find(all.begin(), all.end(), "zndPtxSettings::getKeepNurbs");
    ASSERT_LT(begin, end);
    EXPECT_THAT(std::vector<std::string>(begin + 1, end),
                ElementsAre("znOptimize::cleanupGroupNodes", "znOptimize::triangulate", "znNodeUtils::verifyIndexMap",
                            "znOptimize::mergeGeometry", "znRetessellation::copySettings", "znRetessellation::addNodes",
                            "zndPtxSettings::getStitchingTolerance", "zndPtxSettings::getUseStitching",
                            "zndPtxSettings::getMaxChordLength", "zndPtxSettings::getNormalTolerance",
                            "zndPtxSettings::getChordDeviation", "znRetessellation::setupTessellation",
                            "znRetessellation::applyTessellation", "znRetessellation::rebuildSurfaces",
                            "znRetessellation::finalize"));
    EXPECT_FALSE(wasCalled("znNodeUtils::addAmbientOcclusionData"));
}

TEST_F(Job, TheTessellationIsToldItsNumbersInTheirPlaces)
{
    set("optimize.mergeGeometries", "on");
    set("tessellation.useStitching", "on");
    set("tessellation.chordDeviation", "0.5");
    set("tessellation.normalTolerance", "7.5");
    set("tessellation.maxChordLength", "120");
    set("tessellation.stitchingTolerance", "0.25");
    EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
    EXPECT_THAT(callsOf("znRetessellation::setupTessellation"),
                ElementsAre("znRetessellation::setupTessellation(0.5, 7.5, 120, true, 0.25)"));
}

TEST_F(Job, WithTheSolidKernelOcclusionIsAddedAndNothingMerged)
{
    set("optimize.mergeGeometries", "on");
    set("optimize.solidKernel", "on");
    EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
    EXPECT_THAT(callsOf("znNodeUtils::addAmbientOcclusionData"),
                ElementsAre("znNodeUtils::addAmbientOcclusionData(" + treeText() + ")"));
    EXPECT_TRUE(wasCalled("zndPtxSettings::getMergeGeometries"));
    EXPECT_FALSE(wasCalled("znOptimize::mergeGeometry"));
    EXPECT_FALSE(wasCalled("znRetessellation::addNodes"));
}

TEST_F(Job, ExactSurfacesStayOnRequest)
{
    EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
    EXPECT_TRUE(meshOf(tree->getChild(0)).brep.empty());
    tree = makeTree();
    set("optimize.keepNurbs", "on");
    EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
    EXPECT_FALSE(wasCalled("znOptimize::removeNURBS"));
    EXPECT_EQ(meshOf(tree->getChild(0)).brep.size(), 7u);
}

TEST_F(Job, SourceReferencesAreDissolvedUnlessKept)
{
    const auto addReference = [this] {
        const osg::ExtReferencePtr core = osg::ExtReferenceBase::create();
        const osg::FileReferencePtr file = osg::FileReferenceBase::create();
        file->setPath("/cars/part.stp");
        core->setSourceFile(file);
        addGroup(add(tree.get(), core, "reference"), "content");
    };
    addReference();
    EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
    EXPECT_THAT(childNames(tree.get()), ElementsAre("Part", "content"));
    tree = makeTree();
    addReference();
    set("optimize.sourceReferences", "keep");
    EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
    EXPECT_THAT(childNames(tree.get()), ElementsAre("Part", "reference"));
}

TEST_F(Job, EqualMaterialsFoldUnlessSwitchedOff)
{
    const auto build = [this] {
        tree = makeTree();
        for (int i = 0; i < 2; ++i) {
            const osg::SimpleMaterialPtr material = osg::SimpleMaterialBase::create();
            material->setDiffuse({0.5f, 0.25f, 0.125f});
            osg::setName(material, "steel");
            const osg::GeometryPtr core = geometry();
            core->setMaterial(material);
            add(tree.get(), core);
        }
    };
    const auto materialOf = [this](unsigned child) {
        return osg::fcCast<osg::Geometry>(tree->getChild(child)->getCore())->getMaterial();
    };
    build();
    EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
    EXPECT_EQ(materialOf(1), materialOf(2));
    build();
    set("optimize.mergeMaterials", "off");
    EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
    EXPECT_NE(materialOf(1), materialOf(2));
}

TEST_F(Job, KnownMaterialsAreReusedOnRequestOnly)
{
    EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
    EXPECT_FALSE(wasCalled("znMaterialMerger::reuseMaterials"));
    tree = makeTree();
    job = std::make_unique<znPtxTreeOptimizationJob>(QStringLiteral("a.stp"), tree.get(), osg::NodePtr());
    job->setMergeMaterials(true);
    EXPECT_EQ(runJob(), znCADFileTypes::JobSucceeded);
    const std::vector<std::string> all = names();
    const auto ids = std::find(all.begin(), all.end(), "znMaterials::getMaterialPoolMaterialIds");
    ASSERT_NE(ids, all.end());
    EXPECT_EQ(*(ids + 1), "znMaterialMerger::reuseMaterials");
}

TEST_F(Job, TheTreeAloneIsComparedWithWhatThePoolHolds)
{
    const osg::SimpleMaterialPtr known = osg::SimpleMaterialBase::create();
    znScenegraph::getMaterialPool()->add(osg::MaterialPtr(known));
    job = std::make_unique<znPtxTreeOptimizationJob>(QStringLiteral("a.stp"), tree.get(), osg::NodePtr());
    job->setMergeMaterials(true);
    EXPECT_EQ(runJob(), znCADFileTypes::JobSucceeded);
    EXPECT_THAT(callsOf("znMaterialMerger::reuseMaterials"),
                ElementsAre("znMaterialMerger::reuseMaterials([" + treeText() + "], [" +
                            std::to_string(known->getContainerId()) + "], 12, 0)"));
}

TEST_F(Job, MaterialsOfTheTreeComeIntoThePool)
{
    const osg::SimpleMaterialPtr material = osg::SimpleMaterialBase::create();
    osg::fcCast<osg::Geometry>(tree->getChild(0)->getCore())->setMaterial(material);
    EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
    EXPECT_THAT(znScenegraph::getMaterialPool()->getMaterials(), Contains(osg::MaterialPtr(material)));
}

TEST_F(Job, ThePoolIsOpenedAsAWhole)
{
    const osg::EditAudit audit;
    EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
    EXPECT_THAT(audit.brackets(), Contains(osg::EditAudit::Record{znScenegraph::getMaterialPool()->getContainerId(),
                                                                  "MaterialPool", osg::AllFieldsMask}));
}

TEST_F(Job, TheEndIsToldWithTheStateOfTheRun)
{
    job = std::make_unique<znPtxTreeOptimizationJob>(QStringLiteral("a.stp"), tree.get(), osg::NodePtr());
    std::vector<znCADFileTypes::JobState> told;
    QObject::connect(job.get(), &znAbstractJob::finished, job.get(),
                     [&](znCADFileTypes::JobState state) { told.push_back(state); });
    runJob();
    EXPECT_THAT(told, ElementsAre(znCADFileTypes::JobSucceeded));
}

TEST_F(Job, TheWantedParentTakesTheTree)
{
    const osg::NodePtr parent = addGroup(scene(), "parent");
    EXPECT_EQ(run("a.stp", parent), znCADFileTypes::JobSucceeded);
    EXPECT_EQ(tree->getParent(), parent);
}

TEST_F(Job, AParentThatMayNotTakeItGivesWayToTheRoot)
{
    const osg::NodePtr locked = addGroup(scene(), "locked");
    osg::setLocked(locked, true);
    const osg::NodePtr below = addGroup(locked, "below");
    const osg::NodePtr asset = addGroup(scene(), "asset");
    osg::setAsset(asset, osg::NodeProperties::Asset::Root);
    const osg::NodePtr drawn = add(scene(), geometry(), "drawn");
    for (const osg::NodePtr& parent : {locked, below, asset, drawn, osg::NodePtr()}) {
        tree = makeTree();
        EXPECT_EQ(run("a.stp", parent), znCADFileTypes::JobSucceeded);
        EXPECT_EQ(tree->getParent(), scene());
    }
}

TEST_F(Job, ADrawnParentIsNotAskedForItsLock)
{
    const osg::NodePtr drawn = add(scene(), geometry(), "drawn");
    EXPECT_EQ(run("a.stp", drawn), znCADFileTypes::JobSucceeded);
    EXPECT_FALSE(wasCalled("znNodeUtils::getLock"));
    EXPECT_EQ(run("a.stp", scene()), znCADFileTypes::JobSucceeded);
    EXPECT_TRUE(wasCalled("znNodeUtils::isUneditedAssetRoot"));
}

TEST_F(Job, TheFirstTreeOfASceneRenewsTheEnvironment)
{
    scene()->subChild(root);
    const osg::RefPtr<osg::NodePtr> former(znScenegraph::createEnvironmentGeometrySwitch({}));
    EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
    const osg::NodePtr environment = znScenegraph::environmentGeometrySwitch();
    ASSERT_TRUE(environment);
    EXPECT_NE(environment, former.get());
    EXPECT_EQ(environment->getNChildren(), 1u);
    const std::vector<std::string> all = names();
    const auto at = std::find(all.begin(), all.end(), "znScenegraph::environmentGeometrySwitch");
    ASSERT_LT(at, all.end() - 3);
    EXPECT_THAT(std::vector<std::string>(at, at + 4),
                ElementsAre("znScenegraph::environmentGeometrySwitch", "znNodeUtils::destroy",
                            "znScenegraph::createEnvironmentGeometrySwitch", "znOSGWidget::showAllMains"));
    EXPECT_THAT(callsOf("znOSGWidget::showAllMains"), ElementsAre("znOSGWidget::showAllMains(false)"));

    tree = makeTree();
    EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
    EXPECT_EQ(znScenegraph::environmentGeometrySwitch(), environment);
    EXPECT_EQ(m_session.state<zn::kernel::UserInterfaceState>().shownWholes, 1u);
}

TEST_F(Job, SceneSettingsMoveTheTree)
{
    set("scene.centerInOrigin", "on");
    EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
    EXPECT_THAT(
        callsOf("znFileIO::applyGeometryImportTransformations"),
        ElementsAre("znFileIO::applyGeometryImportTransformations(" + treeText() + ", 'a.stp', false, true, false)"));
    EXPECT_EQ(matrixOf(tree.get()), placed({1, 1, 1}, {-3, -5, -3}));
}

TEST_F(Job, EveryStepChangesFieldsWithinTheirBrackets)
{
    for (const char* name : {"scene.centerInOrigin", "scene.putOnGround", "optimize.flushTransformations"})
        set(name, "on");
    const osg::EditAudit audit;
    EXPECT_EQ(run("a.stp"), znCADFileTypes::JobSucceeded);
    EXPECT_THAT(audit.unbracketed(), testing::IsEmpty());
    EXPECT_THAT(audit.unmatchedEnds(), testing::IsEmpty());
    EXPECT_EQ(audit.openBrackets(), 0u);
    EXPECT_THAT(audit.brackets(), Contains(osg::EditAudit::Record{tree->getCore()->getContainerId(), "Transform3D",
                                                                  osg::TransformBase::MatrixFieldMask}));
}

TEST_F(Job, InvalidReferencesOfMechanorFilesLoseTheirTransform)
{
    const osg::ExtReferencePtr core = osg::ExtReferenceBase::create();
    const osg::FileReferencePtr file = osg::FileReferenceBase::create();
    file->setPath("**lost");
    core->setSourceFile(file);
    core->setMatrix(placed({1, 1, 1}, {9, 0, 0}));
    const osg::NodePtr reference = add(tree.get(), core, "reference");
    set("optimize.sourceReferences", "keep");
    const auto* row = znCADFileTypes::findRow(znCADFileTypes::Mechanor);
    const std::string name = "a." + *row->extensions.begin();
    EXPECT_EQ(run(name.c_str()), znCADFileTypes::JobSucceeded);
    EXPECT_EQ(reference->getCore()->getType().getId(), osg::Transform3D::_type.getId());
    EXPECT_TRUE(matrixOf(reference).isIdentity());
}

TEST_F(Job, AnExceptionPassesThroughWithoutAnEndOfItsOwn)
{
    osg::setTags(tree.get(), {"stylar::bookmark_visibilities", "bookmark[a]"});
    EXPECT_EQ(run("a.styl"), znCADFileTypes::JobFailed);
    EXPECT_FALSE(wasCalled("processingFinished"));
    EXPECT_EQ(job->getErrorText(), QStringLiteral("invalid string position"));
    EXPECT_EQ(tree->getParent(), scene());
}

TEST_F(Job, StepsAreToldOnRequest)
{
    job = std::make_unique<znPtxTreeOptimizationJob>(QStringLiteral("a.plmxml"), tree.get(), osg::NodePtr());
    std::vector<std::string> steps;
    job->setStepListener([&](const char* step) { steps.push_back(step ? step : "end"); });
    EXPECT_EQ(runJob(), znCADFileTypes::JobSucceeded);
    EXPECT_THAT(steps, ElementsAre("optimizeMaterials", "updateMaterials", "reuseMaterials", "addAmbientOcclusion",
                                   "removeVertexColors", "removePtxTag", "removeInvalidMechanorReferences",
                                   "insertIntoScene", "registerMaterials", "convertBookmarks", "applySceneSettings",
                                   "renewEnvironment", "notifyReferences", "end"));
}

} // namespace
