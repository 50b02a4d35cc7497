#include "importer/MeshTreeOptimization.h"

#include "geometry/GeometryGathering.h"
#include "host/znKernel/znScenegraph.h"
#include "host/znOpenSGUtils/znNodeUtils.h"
#include "host/znOpenSGUtils/znOptimize.h"
#include "importer/KnownNodes.h"
#include "importer/NumberedNames.h"
#include "standalone/startup/StandaloneSession.h"
#include "standalone/znOpenSGUberMaterial/MaterialFold.h"
#include "standalone/znVariants/SessionVariants.h"

#include <set>

namespace importer
{

namespace
{

/// A variant has its states from one object, so that this one has to stay.
std::set<unsigned> materialsOfVariants(zn::StandaloneSession& session)
{
    std::set<unsigned> ids;
    for (const auto& variant : zn::variants::sessionVariants(session).materialVariants())
        if (const osg::MaterialPtr material = variant->getMaterial())
            ids.insert(material->getContainerId());
    return ids;
}

void mergeGeometries(zn::StandaloneSession& session, const osg::NodePtr& root)
{
    znOptimize::triangulate(root, false);
    znNodeUtils::verifyIndexMap(root);
    geometry::GatheringChoice choice;
    choice.kept = knownNodes(session);
    choice.nameless = numberedNodes(root);
    geometry::gatherGeometry(root, choice);
}

} // namespace

void optimizeMeshTree(zn::StandaloneSession& session, const osg::NodePtr& root,
                      const std::function<void(const char* step)>& beginStep)
{
    const zn::OptimizeSettings& wanted = session.settings().optimize;
    beginStep("optimizeMaterials");
    if (wanted.mergeMaterials)
        zn::materials::foldMaterials(root, materialsOfVariants(session));
    beginStep("flushTransformations");
    if (wanted.flushTransformations)
        znOptimize::flushTransformationsKeepFaceNormals(root);
    beginStep("mergeGeometries");
    if (wanted.mergeGeometries)
        mergeGeometries(session, root);
    beginStep("unshareNodes");
    if (wanted.unshareNodes)
        (void)znScenegraph::unshareNode(root, znScenegraph::DuplicateCores, true, true);
    beginStep(nullptr);
}

} // namespace importer
