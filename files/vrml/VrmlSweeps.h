#pragma once

#include "files/vrml/VrmlNodes.h"
#include "files/vrml/VrmlSource.h"
#include "scene/Mesh.h"

namespace files::vrml
{

/// Polygons as a face set has them, each ended by -1.
struct Sweep {
    std::vector<osg::Vec3f> points;
    Ints corners;
};

/// The quadrangles of an elevation grid, row by row along z. Empty, with a warning, when heights are missing.
Sweep gridSweep(const Node& node, const Source& source);

/// The quadrangles and caps of an extrusion. Empty, with a warning, for less than two points of spine or section.
Sweep extrusionSweep(const Node& node, const Source& source);

} // namespace files::vrml
