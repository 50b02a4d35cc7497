#include "import/TreeEdits.h"

#include "host/OSGSystem/Cast.h"

namespace frame
{

void exchangeCore(const osg::NodePtr& node, const osg::NodeCorePtr& core)
{
    osg::beginEditCP(node, osg::Node::CoreFieldMask, 1);
    node->setCore(core);
    osg::endEditCP(node, osg::Node::CoreFieldMask, 1);
}

void addChild(const osg::NodePtr& parent, const osg::NodePtr& child, osg::FieldMask mask)
{
    osg::beginEditCP(parent, mask, 1);
    parent->addChild(child);
    osg::endEditCP(parent, mask, 1);
}

void moveChildren(const osg::NodePtr& from, const osg::NodePtr& to)
{
    osg::beginEditCP(to, osg::Node::ChildrenFieldMask, 1);
    while (from->getNChildren() > 0)
        to->addChild(from->getChild(0));
    osg::endEditCP(to, osg::Node::ChildrenFieldMask, 1);
}

void markReferenceLoaded(const osg::NodePtr& node)
{
    const auto reference = osg::fcCast<osg::ExtReference>(node->getCore());
    if (!reference)
        return;
    osg::beginEditCP(reference, osg::ExtReferenceBase::StateFieldMask, 1);
    reference->setState(loadedReference);
    osg::endEditCP(reference, osg::ExtReferenceBase::StateFieldMask, 1);
}

osg::FileReferencePtr makeFileReference(const std::string& path)
{
    const osg::FileReferencePtr file = osg::FileReference::create();
    osg::beginEditCP(file, osg::FileReference::PathFieldMask, 1);
    file->setPath(path);
    osg::endEditCP(file, osg::FileReference::PathFieldMask, 1);
    return file;
}

osg::ExtReferencePtr makeReferenceCore(const osg::FileReferencePtr& file, bool isSmart)
{
    const osg::ExtReferencePtr core = osg::ExtReference::create();
    const osg::FieldMask mask =
        isSmart ? osg::ExtReference::SmartFileFieldMask : osg::ExtReference::SourceFileFieldMask;
    osg::beginEditCP(core, mask, 1);
    if (isSmart)
        core->setSmartFile(file);
    else
        core->setSourceFile(file);
    osg::endEditCP(core, mask, 1);
    return core;
}

} // namespace frame
