#pragma once

#include "scene/GeometryWalk.h"
#include "scene/SceneEdits.h"

#include <memory>
#include <utility>

namespace geometry
{

/// Takes one array away from the meshes of all geometries at and below `root`.
template <class T>
void removeArray(const osg::NodePtr& root, osg::Buffer<T> osg::Mesh::*array)
{
    for (const osg::GeometryPtr& geometry : osg::geometriesWith(root, array)) {
        osg::Mesh mesh = osg::GeometryAccess::mesh(*geometry);
        mesh.*array = {};
        osg::exchangeMesh(geometry, std::make_shared<const osg::Mesh>(std::move(mesh)));
    }
}

} // namespace geometry
