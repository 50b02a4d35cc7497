#pragma once

#include "host/znJobProcessing/znJobQueue.h"
#include "importer/ElementDocuments.h"
#include "importer/ImportRoad.h"
#include "importer/TreeOptimization.h"

#include <QList>
#include <QPointer>

#include <memory>
#include <vector>

class znPLMXMLLoaderJob;
class znPtxConverterJob;

namespace importer
{

namespace plmxml
{
struct NormaliserOptions;
} // namespace plmxml

class NestedDocuments;
class PartImports;
class PreparedDocument;

/// A PLMXML document goes through its loader job, which brings in the part files, and its tree into the scene. What is
/// missing in the end makes the result partial.
///
/// The job is given the document as the loader reads it (PreparedDocument); names and messages tell the original.
///
/// The loader job itself cannot be aborted: a cancelled import ends the reading, or aborts the conversions, and what
/// came in until then is the result.
class PlmxmlRoad : public ImportRoad
{
    Q_OBJECT

public:
    /// The file of the request is the document.
    explicit PlmxmlRoad(const zn::ImportRequest& request);
    ~PlmxmlRoad() override;

    void start() override;
    Source source() const override { return Source::Document; }

private:
    void abortJobs() override;
    void follow(znPLMXMLLoaderJob& job);
    void followConversion(znPtxConverterJob* conversion);
    void abortUnwanted(znPtxConverterJob& conversion);
    void tellFoundParts();
    void directPartBegins(const QString& file);
    void directPartEnded(const QString& file, znCADFileTypes::JobState state);
    void jobEnded(znPLMXMLLoaderJob& job, const PartImports& parts);
    void complete(znPLMXMLLoaderJob& job, const PartImports& parts);
    void loaded(const PartImports& parts);
    QString whyWithoutTree(const znPLMXMLLoaderJob& job) const;
    void endWithout(const QString& reason);
    void read();
    bool prepare();
    void load();
    plmxml::NormaliserOptions options(bool wantsFacts);

    QString m_file;
    ElementDocuments m_elements;
    std::unique_ptr<PreparedDocument> m_document;
    std::size_t m_repeatedNodesLeft = std::size_t(1) << 22; ///< what further copies of part files may come to
    znJobQueue m_queue;
    std::unique_ptr<NestedDocuments> m_nested; ///< while the document is loaded
    TreeOptimization m_optimization;
    QList<QPointer<znPtxConverterJob>> m_conversions;
    int m_found = 0;
    int m_told = 0;                             ///< of those found
    std::vector<zn::MissingPart> m_failedLoads; ///< part files that the host could not read
    bool m_ended = false;
};

} // namespace importer
