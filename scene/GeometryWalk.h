#pragma once

#include "host/OSGSystem/Cast.h"
#include "scene/IdSet.h"
#include "scene/Mesh.h"
#include "scene/NodeWalk.h"

namespace osg
{

/// The geometry of `node`, null when its core is none.
inline osg::GeometryPtr geometryOf(const osg::NodePtr& node)
{
    return node && node->getCore() ? osg::fcCast<osg::Geometry>(node->getCore()) : osg::GeometryPtr();
}

/// The geometries at and below `root`, each once, in the order of their first use.
inline std::vector<osg::GeometryPtr> geometriesBelow(const osg::NodePtr& root)
{
    std::vector<osg::GeometryPtr> found;
    IdSet known;
    (void)visitParentsFirst(root, [&](const osg::NodePtr& node) {
        if (const osg::GeometryPtr geometry = geometryOf(node); geometry && known.insert(geometry->getContainerId()))
            found.push_back(geometry);
    });
    return found;
}

} // namespace osg
