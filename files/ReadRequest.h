#pragma once

#include "files/SceneReader.h"

#include <QStringList>

namespace files
{

/// Read options as words for another process, "name=value" each. All that decides what a mesh reader makes of a file is
/// in them, numbers exactly.
QStringList wordsOf(const ReadOptions& options);

/// Takes one such word into `options`. @return false when it is none
bool takeWord(ReadOptions& options, const QString& word);

} // namespace files
