#pragma once

#include "files/scenefile/ReadSceneFile.h"

namespace zn
{
class Session;
} // namespace zn

namespace zn::loading
{

/// Whether scene file `file` is mapped, by the setting files.map of `session`: unless it says otherwise, when it lies
/// in the folder of the session, where nobody else cuts files short. Not without a session.
bool isMapped(Session* session, const QString& file);

/// How a scene file is read that may take `memory` bytes. The bytes of a mapped one are no memory of this process.
osg::scenefile::SceneFileReadOptions sceneFileOptions(bool isMapped, std::uint64_t memory);

/// The same for `file` by the settings of `session`; by the defaults without one.
osg::scenefile::SceneFileReadOptions sceneFileOptions(Session* session, const QString& file);

} // namespace zn::loading
