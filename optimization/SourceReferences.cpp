#include "optimization/SourceReferences.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "host/znOpenSGExt/FileInfo.h"
#include "import/TreeEdits.h"

#include <QString>

#include <vector>

namespace optimization
{

namespace
{

osg::ExtReferencePtr referenceOf(const osg::NodePtr& node)
{
    return node ? osg::fcCast<osg::ExtReference>(node->getCore()) : osg::ExtReferencePtr();
}

void removeFileInfo(const osg::NodePtr& node)
{
    const auto info = osg::fcCast<osg::FileInfo>(node->findAttachment(osg::FileInfoBase::_type.getGroupId(), 0));
    if (!info)
        return;
    osg::beginEditCP(node, osg::AttachmentContainer::AttachmentsFieldMask, 1);
    node->subAttachment(info, 0);
    osg::endEditCP(node, osg::AttachmentContainer::AttachmentsFieldMask, 1);
}

void turnIntoTransform(const osg::NodePtr& node, const osg::ExtReferencePtr& reference)
{
    const osg::Transform3DPtr transform = osg::Transform3DBase::create();
    transform->syncWith(reference, osg::Transform3D::getCombinedTransformAttributesMask());
    frame::exchangeCore(node, transform);
    removeFileInfo(node);
}

/// Turns what stays into transforms, and gives the nodes to take out, parents first.
std::vector<osg::NodePtr> collectIdentityReferences(const osg::NodePtr& root)
{
    std::vector<osg::NodePtr> dissolving;
    osg::traverse(root, [&](const osg::NodePtr& node) {
        const osg::ExtReferencePtr reference = referenceOf(node);
        if (!reference || !reference->getSourceFile())
            return osg::Action::Continue;
        if (reference->isIdentity() && node->getParent())
            dissolving.push_back(node);
        else
            turnIntoTransform(node, reference);
        return osg::Action::Continue;
    });
    return dissolving;
}

/// Puts the children of `node` in its place.
void dissolve(const osg::NodePtr& node)
{
    const osg::NodePtr parent = node->getParent();
    if (!parent)
        return;
    const auto index = static_cast<unsigned>(parent->findChild(node));
    osg::beginEditCP(parent, osg::Node::ChildrenFieldMask, 1);
    while (node->getNChildren() > 0)
        parent->insertChild(index, node->getChild(node->getNChildren() - 1));
    parent->subChild(node);
    osg::endEditCP(parent, osg::Node::ChildrenFieldMask, 1);
}

} // namespace

void removeSourceReferences(const osg::NodePtr& root)
{
    for (const osg::NodePtr& node : collectIdentityReferences(root))
        dissolve(node);
}

void removeInvalidMechanorReferences(const osg::NodePtr& root)
{
    osg::traverse(root, [](const osg::NodePtr& node) {
        const osg::ExtReferencePtr reference = referenceOf(node);
        const osg::FileReferencePtr source = reference ? reference->getSourceFile() : osg::FileReferencePtr();
        const std::string path = source ? source->getPath() : std::string();
        if (!path.empty() && QString::fromStdString(path).startsWith(QStringLiteral("**"), Qt::CaseSensitive))
            frame::exchangeCore(node, osg::Transform3DBase::create());
        return osg::Action::Continue;
    });
}

} // namespace optimization
