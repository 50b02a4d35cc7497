#pragma once

#include "files/ReadTask.h"

namespace files::ply
{

/// PLY, as text and in both binary byte orders: one geometry below the root, or one for each picture.
///
/// Faces and strips become triangles, edges become lines; where there is none of these, vertices are points. Normals,
/// texture coordinates and colours of vertices are read; colours are display colours. Texture coordinates of corners
/// make vertices of their own; pictures of comments "TextureFile NAME" are the base colour, each of a geometry of its
/// own. Left out: colours of faces, those of vertices that bear a picture, and elements of other names.
osg::NodePtr readPly(ReadTask& task);

} // namespace files::ply
