#pragma once

#include "host/OSGSystem/Cast.h"
#include "scene/Mesh.h"
#include "scene/NodeWalk.h"

#include <unordered_set>

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
    std::unordered_set<std::uint32_t> known;
    for (const osg::NodePtr& node : parentsFirst(root))
        if (const osg::GeometryPtr geometry = geometryOf(node);
            geometry && known.insert(geometry->getContainerId()).second)
            found.push_back(geometry);
    return found;
}

} // namespace osg
