#include "ptx/scene/CalloutNodes.h"

#include "files/scenefile/AttributeTags.h"
#include "files/scenefile/ConvertedTree.h"
#include "host/OSGSystem/Group.h"
#include "host/OSGSystem/Names.h"
#include "host/OSGSystem/TreeFunctions.h"
#include "scene/EditScope.h"
#include "scene/SceneEdits.h"

#include <set>

namespace ptx::scene
{

namespace
{

osg::NodePtr makeCalloutNode(const model::Callout& callout, PartCores& cores)
{
    const osg::NodePtr node = osg::makeNodeFor(osg::Group::create());
    osg::setName(node, callout.name);
    std::vector<std::string> tags = callout.tags;
    osg::addAttributes(node, osg::AttributeOwner::Occurrence, osg::scenefile::converted::takeAttributes(tags));
    if (!tags.empty())
        osg::setTags(node, std::move(tags));
    for (const osg::GeometryPtr& core : cores.of(callout)) {
        const osg::NodePtr geometry = osg::makeNodeFor(core);
        osg::setName(geometry, callout.name);
        osg::addChild(node, geometry);
    }
    return node;
}

void hide(const osg::NodePtr& node)
{
    const osg::EditScope edit(node, osg::Node::ActiveFieldMask);
    node->setActive(false);
}

/// The views that show any of `callouts`.
ViewVisibility::Views viewsOf(const std::vector<model::Callout>& callouts)
{
    std::set<std::size_t> all;
    for (const model::Callout& callout : callouts)
        all.insert(callout.views.begin(), callout.views.end());
    return {all.begin(), all.end()};
}

} // namespace

osg::NodePtr makeCalloutsNode(const std::vector<model::Callout>& callouts, PartCores& cores, ViewVisibility& visibility,
                              std::size_t& nodes)
{
    const osg::NodePtr above = osg::makeNodeFor(osg::Group::create());
    osg::setName(above, "PMI");
    osg::setTags(above, {osg::scenefile::converted::PmiTag});
    hide(above);
    const ViewVisibility::Views shown = viewsOf(callouts);
    if (!shown.empty())
        visibility.addTo(above, shown, false);
    ++nodes;
    for (const model::Callout& callout : callouts) {
        const osg::NodePtr node = makeCalloutNode(callout, cores);
        if (callout.views != shown)
            visibility.addTo(node, callout.views, true);
        nodes += 1 + node->getNChildren();
        osg::addChild(above, node);
    }
    return above;
}

} // namespace ptx::scene
