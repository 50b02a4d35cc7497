#include "import/InsertionNode.h"

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Drawable.h"
#include "host/OSGSystem/FieldContainerFactory.h"
#include "host/znKernel/znScenegraph.h"
#include "host/znOpenSGUtils/znNodeUtils.h"

namespace frame
{

namespace
{

/// Nothing may be hung below `node`.
bool mustBeGivenUp(const osg::NodePtr& node)
{
    if (node && osg::fcCast<osg::Drawable>(node->getCore()))
        return true;
    return znNodeUtils::getLock(node) || znNodeUtils::hasLockedParent(node) || znNodeUtils::isUneditedAssetRoot(node);
}

} // namespace

osg::NodePtr insertionNode(std::uint64_t target)
{
    const auto id = static_cast<std::uint32_t>(target);
    osg::NodePtr node = osg::fcCast<osg::Node>(osg::FieldContainerFactory::the()->getContainer(id));
    if (!node)
        node = znScenegraph::getSelectedNode();
    return mustBeGivenUp(node) && !(node == znScenegraph::getRoot()) ? znScenegraph::getRoot() : node;
}

} // namespace frame
