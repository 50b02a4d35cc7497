#pragma once

#include "files/ReadTask.h"

namespace files::vrml
{

/// VRML97, plain or packed by gzip.
///
/// Groups and transforms become nodes that bear their DEF names, shapes become geometries; what is used several times
/// shares its core. A file that a file takes in is read with it, once. Behaviour, lights, sound and texts are left out.
osg::NodePtr readVrml(ReadTask& task);

} // namespace files::vrml
