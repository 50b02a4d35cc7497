#pragma once

#include "host/HostExport.h"
#include "host/OSGSystem/Node.h"

/// Operations that make an imported tree smaller or simpler, without a change to what is seen. A null node is left
/// alone.
class ZN_HOST_EXPORT znOptimize
{
public:
    /// Dissolves the groups below `root` that neither transform, refer nor say anything: plain groups without a name
    /// and without attachments, inactive ones excepted. Their children take their places, in their order.
    static void cleanupGroupNodes(const osg::NodePtr& root);

    /// Makes triangles of all polygons, strips and fans at and below `root`, concave outlines included; their fronts
    /// stay where they are. In a geometry with faces, what they cover becomes one more face. What names a vertex that
    /// is not there is left out and told to the user.
    /// @param dropFlat triangles without area are taken away as well
    static void triangulate(const osg::NodePtr& root, bool dropFlat);

    /// Makes one geometry of those that are children of one node and have one material. Faces, exact surfaces and
    /// vertices come one after the other in the order of the children; the first child stays in its place and keeps its
    /// name, the others go.
    ///
    /// Only geometries of the same make are merged: what one has (normals, texture coordinates, colours, occlusion, an
    /// exact surface) all have. Those that `znNodeUtils::verifyIndexMap` would repair stay. Nodes with children or with
    /// attachments other than a name stay, as do inactive ones. Geometry that is used in several places is merged once
    /// for all of them if it has the same companions in each, and stays as it is otherwise.
    static void mergeGeometry(const osg::NodePtr& root);

    /// Drops the exact surfaces of all geometries at and below `root`; the meshes stay.
    static void removeNURBS(const osg::NodePtr& root);

    /// Takes away groups and transforms below `root` that have no children, and those that have none once these are
    /// gone. `root` itself, inactive nodes and nodes with tags stay.
    /// @param keepNamed nodes with a name stay as well
    static void removeEmptyGroups(const osg::NodePtr& root, bool keepNamed);

    /// Moves the transforms of the tree into its vertices, so that all transforms at and below `root` are the identity.
    /// Normals stay upright on their faces and unit vectors, and a mirrored mesh keeps its faces outward. Geometry that
    /// is used several times under the same placement stays shared; under different placements it becomes one geometry
    /// a placement. Meshes that change lose their exact surfaces. What has no vertices and depends on its place (a
    /// reference, a camera) gets a transform of its own.
    static void flushTransformationsKeepFaceNormals(const osg::NodePtr& root);

    /// Moves what the transforms above the geometry `node` scale, mirror or shear into the vertices below them; the
    /// transforms keep rotation and translation. References between them take it in and keep it. Geometry that is
    /// scaled alike in several places stays shared, in later calls as well. Meshes that change lose their exact
    /// surfaces.
    static void flushSelectedTransformationScales(const osg::NodePtr& node);
};
