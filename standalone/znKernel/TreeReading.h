#pragma once

#include "host/OSGSystem/Node.h"

#include <QString>

#include <optional>

class znStandaloneSession;

namespace zn
{

/// Reads one file with the readers and the settings of `session`. Nothing on failure; otherwise the root, which has no
/// parent and the count 0, or null when the reader found no fault with the file but no tree in it either. The log tells
/// what went wrong and what was left out.
std::optional<osg::NodePtr> readTree(znStandaloneSession& session, const QString& file);

} // namespace zn
