#pragma once

#include <QString>

/// Why the document at `file` gave no tree, for a person: one sentence with the file's name, and line and column where
/// the text is at fault. Reads the document by itself, since a failed load says no more than that it failed.
QString describeDocumentFault(const QString& file);
