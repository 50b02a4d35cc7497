#include "geometry/VertexColors.h"

#include "geometry/ArrayRemoval.h"

void geometry::removeVertexColors(const osg::NodePtr& root)
{
    removeArray(root, &osg::Mesh::colors);
}
