#include "geometry/ExactSurfaces.h"

#include "geometry/ArrayRemoval.h"

void geometry::removeExactSurfaces(const osg::NodePtr& root)
{
    removeArray(root, &osg::Mesh::brep);
}
