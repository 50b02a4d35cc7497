#pragma once

#include "files/References.h"
#include "files/SceneReader.h"

#include <QStringList>

namespace files
{

/// Read options as words for another process, "name=value" each. All that decides what a mesh reader makes of a file is
/// in them, numbers exactly.
QStringList wordsOf(const ReadOptions& options);

/// The same of the rules for documents.
QStringList wordsOf(const DocumentRules& rules);

///@{
/// Takes one such word. @return false when it is none
bool takeWord(ReadOptions& options, const QString& word);
bool takeWord(DocumentRules& rules, const QString& word);
///@}

} // namespace files
