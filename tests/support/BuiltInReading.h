#pragma once

#include "standalone/startup/BuiltInReaders.h"

/// Reads `path` as a session does that nobody gave further readers.
inline formats::ReadResult readScene(const QString& path, const formats::ReadOptions& options = {})
{
    return zn::builtInReaders().read(path, options);
}
