#pragma once

#include "files/ReadTask.h"

namespace files::ply
{

/// PLY, as text and in both binary byte orders: one geometry below the root.
///
/// Faces and strips become triangles, edges become lines; where there is none of these, vertices are points. Normals,
/// texture coordinates and colours of vertices are read; colours are display colours. Left out: colours of faces and
/// elements of other names.
osg::NodePtr readPly(ReadTask& task);

} // namespace files::ply
