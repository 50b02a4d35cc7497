#include "host/OSGSystem/Cast.h"
#include "host/znKernel/znFileIOHelper.h"
#include "host/znKernel/znPtxHelper.h"
#include "host/znOpenSGExt/FileInfo.h"
#include "standalone/scenefile/ConvertedTree.h"
#include "standalone/znUtils/CallTrace.h"

#include <algorithm>

bool znPtxHelper::isConvertedPtxTree(const osg::NodePtr& root)
{
    const zn::TracedCall call("znPtxHelper::isConvertedPtxTree", root);
    return osg::converted::isConvertedTree(root);
}

void znPtxHelper::removePtxTag(const osg::NodePtr& root)
{
    const zn::TracedCall call("znPtxHelper::removePtxTag", root);
    if (!osg::converted::isConvertedTree(root))
        return;
    std::vector<std::string> tags = osg::tagsOf(root);
    std::erase(tags, osg::converted::ConvertedTag);
    osg::setTags(root, std::move(tags));
}

QString znFileIOHelper::getFileNameFromFileInfo(const osg::NodePtr& node)
{
    const zn::TracedCall call("znFileIOHelper::getFileNameFromFileInfo", node);
    const auto info =
        node ? osg::fcCast<osg::FileInfo>(node->findAttachment(osg::FileInfo::_type.getGroupId())) : osg::FileInfoPtr();
    return info ? QString::fromStdString(info->getFileName()) : QString();
}
