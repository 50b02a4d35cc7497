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
    visitParentsFirst(root, [&](const osg::NodePtr& node) {
        if (const osg::GeometryPtr geometry = geometryOf(node); geometry && known.insert(geometry->getContainerId()))
            found.push_back(geometry);
    });
    return found;
}

/// Those of `geometriesBelow` whose meshes have anything in `array`.
template <class T>
std::vector<osg::GeometryPtr> geometriesWith(const osg::NodePtr& root, osg::Buffer<T> osg::Mesh::*array)
{
    std::vector<osg::GeometryPtr> found = geometriesBelow(root);
    std::size_t kept = 0;
    for (std::size_t i = 0; i < found.size(); ++i) {
        if (i + NodeAccess::FarAhead < found.size())
            __builtin_prefetch(found[i + NodeAccess::FarAhead].get());
        if (i + NodeAccess::NearAhead < found.size())
            __builtin_prefetch(&(GeometryAccess::mesh(*found[i + NodeAccess::NearAhead]).*array));
        if (!(GeometryAccess::mesh(*found[i]).*array).empty())
            found[kept++] = found[i];
    }
    found.resize(kept);
    return found;
}

} // namespace osg
