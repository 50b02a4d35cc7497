#pragma once

#include "host/OSGSystem/Node.h"

#include <QString>

#include <optional>

namespace zn
{
class Session;
} // namespace zn

namespace zn::loading
{

/// Reads one file with the settings of `session` and its readers: its state `files::SceneReaders`, which is filled
/// when the session starts, and to which a host adds its own. Nothing on failure; otherwise the root, which has no
/// parent and the count 0, or null when the reader found no fault with the file but no tree in it either. The log
/// tells what went wrong and what was left out.
std::optional<osg::NodePtr> readTree(Session& session, const QString& file);

} // namespace zn::loading
