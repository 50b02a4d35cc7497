#pragma once

#include "host/OSGSystem/Cast.h"
#include "host/OSGSystem/Edit.h"
#include "standalone/OSGSystem/Mesh.h"
#include "standalone/geometry/NodeWalk.h"

#include <unordered_set>

namespace geometry
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

/// Gives `geometry` another mesh within an edit of its own.
inline void exchangeMesh(const osg::GeometryPtr& geometry, std::shared_ptr<const osg::Mesh> mesh)
{
    osg::beginEditCP(geometry, osg::GeometryBase::MeshFieldMask, 1);
    osg::GeometryAccess::setMesh(*geometry, std::move(mesh));
    osg::endEditCP(geometry, osg::GeometryBase::MeshFieldMask, 1);
}

} // namespace geometry
