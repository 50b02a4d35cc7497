#pragma once

#include "files/References.h"

#include <QDir>
#include <QHash>
#include <QString>
#include <QStringList>

namespace importer::plmxml
{

/// Where a file was found.
enum class FoundBy {
    Nowhere,
    Location,    ///< as the document says
    LetterCase,  ///< but for capital and small letters
    BesideIt,    ///< a file of its name beside the document
    InItsFolder, ///< a file of its name in the folder that is called like the document
    SearchPath   ///< in one of the document's search paths
};

/// A file that a document names.
struct FoundFile {
    QString
        path; ///< absolute; where it would stand when there is none, and a path that is none for one that is refused
    FoundBy by = FoundBy::Nowhere;
    bool isRefused = false; ///< something is there, but no regular file that may be taken
    bool isClosed = false;  ///< it may not be taken, whether it is there or not
};

/// Stands behind the path of a file that may not be taken, so that nobody reads it.
inline constexpr char ClosedMark[] = "/refused by files.references";

/// `path` without that.
QString withoutClosedMark(const QString& path);

/// The location as a path: slashes, without percent escapes, without "file:", "." and ".."; a relative one stays
/// relative.
QString cleanLocation(const QString& location);

/// Finds the files that one document names. It gives regular files only, and touches none but to ask whether it is one.
class FileFinder
{
public:
    /// For `document`, whose search paths are `searchPaths` as it gives them.
    FileFinder(const QString& document, const QStringList& searchPaths, files::DocumentRules rules = {});

    /// `location` as cleanLocation gives it.
    FoundFile find(const QString& location);
    /// Whether a file of this absolute path may be taken.
    bool allows(const QString& path) const { return !m_rules.refusal(path); }

private:
    bool isTaken(const QString& path) const;
    QString inAnyCase(const QString& folder, const QString& path);
    const QHash<QString, QString>& entriesOf(const QString& folder);
    FoundFile findName(const QString& name);
    FoundFile nowhere(const QString& path) const;

    QDir m_folder;
    QString m_ownFolder;
    QStringList m_searchPaths;
    files::DocumentRules m_rules;
    QHash<QString, QHash<QString, QString>> m_entries; ///< of folders: names by their small letters
};

} // namespace importer::plmxml
