#pragma once

#include "standalone/startup/BuiltInReaders.h"

/// Reads `path` as a session does that nobody gave further readers.
inline files::ReadResult readScene(const QString& path, const files::ReadOptions& options = {})
{
    return zn::startup::builtInReaders().read(path, options);
}
