#include "ptx/scene/ReferenceCore.h"

#include "scene/EditScope.h"

namespace ptx::scene
{

namespace
{

osg::FileReferencePtr fileOf(const model::Reference& reference)
{
    const osg::FileReferencePtr file = osg::FileReference::create();
    const osg::EditScope edit(file, osg::FileReference::PathFieldMask | osg::FileReference::RelativePathFieldMask);
    file->setPath(reference.file);
    file->setRelativePath(reference.written);
    return file;
}

} // namespace

osg::ExtReferencePtr makeReferenceCore(const model::Reference& reference)
{
    const osg::ExtReferencePtr core = osg::ExtReference::create();
    const osg::EditScope edit(core, osg::ExtReference::SourceFileFieldMask);
    core->setSourceFile(fileOf(reference));
    return core;
}

} // namespace ptx::scene
