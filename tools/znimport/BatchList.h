#pragma once

#include <QFile>
#include <QHash>
#include <QString>

#include <optional>

namespace znimport
{

/// How the import of a file ended.
struct BatchEnd {
    QString name; ///< as in BatchItem
    int exitCode = 0;
    double seconds = 0;
    qint64 bytes = 0; ///< of the file that was imported
    QString stamp;    ///< when it was changed, and with which options it was imported
};

/// The list of the files that a batch is through with, a line for each as soon as it has ended: a batch that is
/// begun again goes on where the one before was interrupted. The last line of a file counts; a line that was cut off
/// does not.
class BatchList
{
public:
    /// Reads what is in the file at `path` and opens it for more; see error().
    explicit BatchList(const QString& path);

    /// Why the list cannot be kept.
    std::optional<QString> error() const;
    /// How the import of the file `name` ended; null for one that has not.
    const BatchEnd* find(const QString& name) const;
    void add(const BatchEnd& end);

private:
    QFile m_file;
    QString m_failure; ///< why the first line that is missing could not be written; empty when all are there
    QHash<QString, BatchEnd> m_ends;
};

} // namespace znimport
