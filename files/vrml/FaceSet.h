#pragma once

#include "files/vrml/VrmlSource.h"
#include "scene/Mesh.h"

#include <span>
#include <vector>

namespace files::vrml
{

/// What the corners or the faces of a set carry.
template <class T>
struct Carried {
    std::vector<T> values;               ///< empty for nothing
    std::span<const std::int32_t> index; ///< a value for each entry of the corners, or for each face; may be empty
    bool isPerCorner = true;
};

/// Polygons over common points. Outlines are flat and may be concave.
struct FaceSet {
    std::vector<osg::Vec3f> points;
    std::span<const std::int32_t> corners; ///< a negative number ends a face; it may miss after the last one
    Carried<osg::Vec3f> normals;
    Carried<osg::Color4f> colors;
    Carried<osg::Vec2f> texCoords;
    bool isCounterClockwise = true;
    float creaseAngle =
        0; ///< radians; where faces meet at a smaller angle they share a normal, unless normals are given
    std::size_t offset = 0; ///< in the source, for what is to be told
};

/// The triangles of a set. A face with a corner that is no point is left out; what is carried by indices that are no
/// values is left out as a whole: `source` gets a warning. Vertices count against the limits of its task.
osg::Mesh makeMesh(FaceSet set, const Source& source);

} // namespace files::vrml
