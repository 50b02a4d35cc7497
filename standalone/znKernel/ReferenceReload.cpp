#include "standalone/znKernel/ReferenceReload.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "host/OSGSystem/Group.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "standalone/loading/TreeReading.h"

namespace zn::kernel
{

namespace
{

QString fileOf(const osg::ExtReferencePtr& core)
{
    const osg::FileReferencePtr file = core->getSourceFile() ? core->getSourceFile() : core->getSmartFile();
    return file ? QString::fromStdString(file->getPath()) : QString();
}

/// The root of a file's tree places and shows nothing by itself.
bool isWrapper(const osg::NodePtr& root)
{
    const osg::NodeCorePtr core = root->getCore();
    if (!core || core->getType().getId() == osg::Group::_type.getId())
        return true;
    const auto reference = osg::fcCast<osg::ExtReference>(core);
    return reference && reference->isIdentity();
}

void removeChildren(const osg::NodePtr& node)
{
    while (node->getNChildren() > 0)
        node->subChild(node->getChild(node->getNChildren() - 1));
}

void hang(const osg::NodePtr& root, const osg::NodePtr& parent)
{
    const osg::RefPtr<osg::NodePtr> held(root);
    if (!isWrapper(root))
        return parent->addChild(root);
    while (root->getNChildren() > 0)
        parent->addChild(root->getChild(0));
}

void exchangeContents(const osg::NodePtr& reference, const osg::NodePtr& root, bool replace)
{
    osg::beginEditCP(reference, osg::Node::ChildrenFieldMask, 1);
    if (replace)
        removeChildren(reference);
    if (root)
        hang(root, reference);
    osg::endEditCP(reference, osg::Node::ChildrenFieldMask, 1);
}

void markLoaded(const osg::ExtReferencePtr& core)
{
    osg::beginEditCP(core, osg::ExtReference::StateFieldMask, 1);
    core->setState(2);
    osg::endEditCP(core, osg::ExtReference::StateFieldMask, 1);
}

} // namespace

bool reloadReference(Session& session, const osg::NodePtr& reference, std::vector<osg::NodePtr>& contents, bool replace)
{
    const auto core = osg::fcCast<osg::ExtReference>(reference ? reference->getCore() : osg::NodeCorePtr());
    const QString file = core ? fileOf(core) : QString();
    if (file.isEmpty())
        return false;
    const std::optional<osg::NodePtr> root = zn::loading::readTree(session, file);
    if (!root)
        return false;
    const unsigned firstNew = replace ? 0 : reference->getNChildren();
    exchangeContents(reference, *root, replace);
    markLoaded(core);
    for (unsigned i = firstNew; i < reference->getNChildren(); ++i)
        contents.push_back(reference->getChild(i));
    return true;
}

} // namespace zn::kernel
