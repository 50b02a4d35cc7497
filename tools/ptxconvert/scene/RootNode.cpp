#include "tools/ptxconvert/scene/RootNode.h"

#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "host/znOpenSGExt/ExtReference.h"
#include "standalone/scenefile/ConvertedTree.h"
#include "tools/ptxconvert/model/Model.h"
#include "tools/ptxconvert/scene/EditScope.h"

#include <filesystem>

namespace ptx
{

namespace
{

constexpr unsigned Loaded = 2;

osg::FileReferencePtr referenceTo(const std::string& path)
{
    const osg::FileReferencePtr file = osg::FileReference::create();
    const EditScope edit(file, osg::FileReference::PathFieldMask);
    file->setPath(path);
    return file;
}

} // namespace

osg::NodePtr makeRootNode(const std::string& input, const Model& model)
{
    const osg::ExtReferencePtr core = osg::ExtReference::create();
    const osg::NodePtr node = osg::makeNodeFor(core);
    const EditScope edit(core, osg::ExtReference::StateFieldMask | osg::ExtReference::SourceFileFieldMask);
    core->setState(Loaded);
    core->setSourceFile(referenceTo(input));
    osg::setName(node, std::filesystem::path(input).filename().string());
    std::vector<std::string> tags = {osg::converted::ConvertedTag};
    tags.insert(tags.end(), model.tags.begin(), model.tags.end());
    osg::setTags(node, std::move(tags));
    return node;
}

} // namespace ptx
