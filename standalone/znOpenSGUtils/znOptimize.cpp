#include "host/znOpenSGUtils/znOptimize.h"

#include "geometry/ExactSurfaces.h"
#include "geometry/GeometryMerging.h"
#include "geometry/GroupCleaning.h"
#include "geometry/TransformFlushing.h"
#include "geometry/TreeTriangulation.h"
#include "standalone/session/Session.h"
#include "standalone/znOpenSGUtils/GeometryMessages.h"
#include "standalone/znUtils/CallTrace.h"

namespace
{

/// Geometries of one session that scales went into, so that parts which are used many times stay shared.
struct FlushedScales {
    geometry::BakedGeometry geometries;
};

} // namespace

void znOptimize::cleanupGroupNodes(const osg::NodePtr& root)
{
    const zn::TracedCall call("znOptimize::cleanupGroupNodes", root);
    geometry::cleanupGroupNodes(root);
}

void znOptimize::removeEmptyGroups(const osg::NodePtr& root, bool keepNamed)
{
    const zn::TracedCall call("znOptimize::removeEmptyGroups", root, keepNamed);
    geometry::removeEmptyGroups(root, keepNamed);
}

void znOptimize::flushTransformationsKeepFaceNormals(const osg::NodePtr& root)
{
    const zn::TracedCall call("znOptimize::flushTransformationsKeepFaceNormals", root);
    geometry::flushTransformations(root);
}

void znOptimize::flushSelectedTransformationScales(const osg::NodePtr& node)
{
    const zn::TracedCall call("znOptimize::flushSelectedTransformationScales", node);
    geometry::flushScalesAbove(node, zn::Session::require().state<FlushedScales>().geometries);
}

void znOptimize::triangulate(const osg::NodePtr& root, bool dropFlat)
{
    const zn::TracedCall call("znOptimize::triangulate", root, dropFlat);
    zn::nodes::tell(geometry::triangulate(root, dropFlat));
}

void znOptimize::mergeGeometry(const osg::NodePtr& root)
{
    const zn::TracedCall call("znOptimize::mergeGeometry", root);
    geometry::mergeGeometry(root);
}

void znOptimize::removeNURBS(const osg::NodePtr& root)
{
    const zn::TracedCall call("znOptimize::removeNURBS", root);
    geometry::removeExactSurfaces(root);
}
