#include "standalone/znOpenSGUtils/FileInfos.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/znOpenSGExt/FileInfo.h"

namespace
{

/// The node's own info, made if it has none.
osg::FileInfoPtr fileInfoOf(const osg::NodePtr& node)
{
    if (const auto info = osg::fcCast<osg::FileInfo>(node->findAttachment(osg::FileInfo::_type.getGroupId())))
        return info;
    const osg::FileInfoPtr info = osg::FileInfoBase::create();
    osg::beginEditCP(node, osg::AttachmentContainer::AttachmentsFieldMask, 1);
    node->addAttachment(info);
    osg::endEditCP(node, osg::AttachmentContainer::AttachmentsFieldMask, 1);
    return info;
}

} // namespace

void zn::nodes::setFileInfo(const osg::NodePtr& node, const char* fileName, const char* format)
{
    if (!node)
        return;
    const osg::FileInfoPtr info = fileInfoOf(node);
    if (fileName) {
        osg::beginEditCP(info, osg::FileInfoBase::FileNameFieldMask, 1);
        info->setFileName(fileName);
        osg::endEditCP(info, osg::FileInfoBase::FileNameFieldMask, 1);
    }
    if (format) {
        osg::beginEditCP(info, osg::FileInfoBase::FormatFieldMask, 1);
        info->setFormat(format);
        osg::endEditCP(info, osg::FileInfoBase::FormatFieldMask, 1);
    }
}
