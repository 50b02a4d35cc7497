#include "host/znOpenSGUtils/znNodeUtils.h"

#include "geometry/AmbientOcclusion.h"
#include "geometry/TreeRepair.h"
#include "geometry/VertexColors.h"
#include "host/znUtils/znLog.h"
#include "scene/CoreMaterial.h"
#include "scene/Tags.h"
#include "standalone/znOpenSGUtils/ContainerNames.h"
#include "standalone/znOpenSGUtils/FileInfos.h"
#include "standalone/znOpenSGUtils/GeometryMessages.h"
#include "standalone/znOpenSGUtils/NodeMaterials.h"
#include "standalone/znOpenSGUtils/NodePredicates.h"
#include "standalone/znOpenSGUtils/NodeRemoval.h"
#include "standalone/znOpenSGUtils/NodeTags.h"
#include "standalone/znOpenSGUtils/TransformKinds.h"
#include "standalone/znUtils/CallTrace.h"

bool znNodeUtils::getLock(const osg::NodePtr& node)
{
    const zn::TracedCall call("znNodeUtils::getLock", node);
    return zn::nodes::isLocked(node);
}

bool znNodeUtils::hasLockedParent(const osg::NodePtr& node)
{
    const zn::TracedCall call("znNodeUtils::hasLockedParent", node);
    return zn::nodes::hasLockedAncestor(node);
}

bool znNodeUtils::isUneditedAssetRoot(const osg::NodePtr& node)
{
    const zn::TracedCall call("znNodeUtils::isUneditedAssetRoot", node);
    return zn::nodes::isUneditedAssetRoot(node);
}

std::vector<std::string> znNodeUtils::getTags(const osg::NodePtr& node)
{
    const zn::TracedCall call("znNodeUtils::getTags", node);
    return osg::tagsOf(node);
}

bool znNodeUtils::hasTag(const osg::NodePtr& node, const std::string& tag)
{
    const zn::TracedCall call("znNodeUtils::hasTag", node, tag);
    return zn::nodes::hasTag(node, tag);
}

void znNodeUtils::removeTag(const osg::NodePtr& node, const std::string& tag)
{
    const zn::TracedCall call("znNodeUtils::removeTag", node, tag);
    zn::nodes::removeTags(node, {tag});
}

void znNodeUtils::removeTags(const osg::NodePtr& node, const std::vector<std::string>& tags)
{
    const zn::TracedCall call("znNodeUtils::removeTags", node, tags);
    zn::nodes::removeTags(node, tags);
}

void znNodeUtils::getNodesWithTag(const osg::NodePtr& root, const std::string& tag, std::vector<znNodePtr>& nodes)
{
    const zn::TracedCall call("znNodeUtils::getNodesWithTag", root, tag);
    zn::nodes::appendNodesWithTag(root, tag, nodes);
}

osg::MaterialPtr znNodeUtils::getMaterial(const osg::NodePtr& node)
{
    const zn::TracedCall call("znNodeUtils::getMaterial", node);
    return node ? osg::materialOf(node->getCore()) : osg::MaterialPtr();
}

bool znNodeUtils::setMaterial(const osg::NodePtr& node, const osg::MaterialPtr& material, bool below, bool asCopy)
{
    const zn::TracedCall call("znNodeUtils::setMaterial", node, material, below, asCopy);
    return zn::nodes::setMaterialOfTree(node, material, below, asCopy);
}

const char* znNodeUtils::getName(const osg::NodePtr& node)
{
    const zn::TracedCall call("znNodeUtils::getName", node);
    return zn::nodes::nameOrEmpty(node);
}

void znNodeUtils::setName(const osg::NodePtr& node, const char* name, bool keep, std::string* formerName)
{
    const zn::TracedCall call("znNodeUtils::setName", node, name, keep);
    if (formerName)
        *formerName = zn::nodes::nameOrEmpty(node);
    zn::nodes::rename(node, name, keep);
}

void znNodeUtils::setFileInfo(const osg::NodePtr& node, const char* fileName, const char* format)
{
    const zn::TracedCall call("znNodeUtils::setFileInfo", node, fileName, format);
    zn::nodes::setFileInfo(node, fileName, format);
}

bool znNodeUtils::convertTransformToTransform3D(const osg::NodePtr& node)
{
    const zn::TracedCall call("znNodeUtils::convertTransformToTransform3D", node);
    return zn::nodes::convertToTransform3D(node);
}

void znNodeUtils::destroy(const osg::NodePtr& node)
{
    const zn::TracedCall call("znNodeUtils::destroy", node);
    zn::nodes::removeNode(node);
}

void znNodeUtils::removeVertexColors(const osg::NodePtr& root)
{
    const zn::TracedCall call("znNodeUtils::removeVertexColors", root);
    geometry::removeVertexColors(root);
}

void znNodeUtils::verifyIndexMap(const osg::NodePtr& root)
{
    const zn::TracedCall call("znNodeUtils::verifyIndexMap", root);
    zn::nodes::tell(geometry::repairMeshes(root));
}

void znNodeUtils::addAmbientOcclusionData(const osg::NodePtr& root)
{
    const zn::TracedCall call("znNodeUtils::addAmbientOcclusionData", root);
    const geometry::OcclusionResult result = geometry::addAmbientOcclusion(root);
    if (!result.error.isEmpty())
        znLog::error(result.error.toUtf8().constData());
}
