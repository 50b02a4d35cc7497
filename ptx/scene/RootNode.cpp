#include "ptx/scene/RootNode.h"

#include "files/scenefile/ConvertedTree.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "ptx/model/Model.h"
#include "ptx/scene/ReferenceCore.h"
#include "scene/EditScope.h"

#include <filesystem>

namespace ptx::scene
{

namespace
{

constexpr unsigned Loaded = 2;

} // namespace

osg::NodePtr makeRootNode(const std::string& input, const model::Model& model)
{
    const osg::ExtReferencePtr core = makeReferenceCore({0, input, {}});
    const osg::NodePtr node = osg::makeNodeFor(core);
    const osg::EditScope edit(core, osg::ExtReference::StateFieldMask);
    core->setState(Loaded);
    osg::setName(node, std::filesystem::path(input).filename().string());
    std::vector<std::string> tags = {osg::scenefile::converted::ConvertedTag};
    tags.insert(tags.end(), model.tags.begin(), model.tags.end());
    osg::setTags(node, std::move(tags));
    return node;
}

} // namespace ptx::scene
