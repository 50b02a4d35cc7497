#pragma once

#include "host/OSGSystem/Node.h"
#include "importer/DocumentReading.h"
#include "importer/ImportResult.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace importer
{

class ElementDocuments;

/// A PLMXML document on its way to the loader. One that the loader would not read whole is written a second time, in
/// the loader's form, into the session's folder; what comes of it is given the names of the original again.
class PreparedDocument
{
public:
    /// Reads `file`, an absolute path, for a prepared document. While a child reads, the event loop runs (see
    /// `readDocument`).
    static files::Expected<ReadDocument> read(const QString& file, const plmxml::NormaliserOptions& options);

    /// Of `file`, with what was read of it; `elements` makes the files that stand in for elements of other documents.
    /// What was written stays as long as this lives.
    PreparedDocument(const QString& file, files::Expected<ReadDocument> outcome, const files::DocumentRules& rules,
                     ElementDocuments& elements);
    ~PreparedDocument();

    /// Why there is nothing to import, as when the reading was cancelled; nothing for a document that the loader can be
    /// given.
    const std::optional<QString>& refusal() const { return m_refusal; }
    /// What the loader is to read.
    const QString& path() const { return m_path; }
    /// A name for the original by which everybody knows what it is, whatever its own extension.
    QString nameForJobs() const;
    /// What the document holds; null for one that could not be read, and where nobody asked for the facts of one that
    /// is read as it stands.
    std::shared_ptr<const zn::DocumentStructure> facts() const { return m_document.hasAllFacts ? m_facts : nullptr; }
    /// What the import passes over, in sentences with the document's name.
    QStringList remarks() const;

    /// Gives the tree that the loader made the names and tags that its form has no place for.
    void complete(const osg::NodePtr& root) const;
    /// `line` of the log, about the original.
    QString aboutOriginal(QString line) const;
    /// Says of missing part files what the document calls them.
    void tellWhatWasAsked(std::vector<zn::MissingPart>& missing) const;

    /// Writes what the loader reads to `file`, for a look. Gives a sentence when that fails.
    std::optional<QString> keep(const QString& file) const;

private:
    QString m_file;
    QString m_path;
    std::optional<QString> m_refusal;
    plmxml::NormalisedDocument m_document;
    std::shared_ptr<const zn::DocumentStructure> m_facts;
    std::unique_ptr<QTemporaryDir> m_folder;
};

} // namespace importer
