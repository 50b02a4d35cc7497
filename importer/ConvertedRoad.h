#pragma once

#include "host/znJobProcessing/znJobQueue.h"
#include "importer/ImportRoad.h"
#include "importer/TreeOptimization.h"

#include <QPointer>

class znPtxConverterJob;
class znPtxLoaderJob;

namespace importer
{

class PartImports;

/// A CAD file goes through the converter job, and its converted file through the loader job, which brings in the part
/// files of an assembly. What is missing in the end makes the result partial.
class ConvertedRoad : public ImportRoad
{
    Q_OBJECT

public:
    /// The file of the request is the CAD file.
    explicit ConvertedRoad(const zn::ImportRequest& request);

    void start() override;
    Source source() const override { return Source::CadFile; }

private:
    void abortJobs() override;
    void converted(const QString& file);
    void conversionEnded(znCADFileTypes::JobState state);
    void load();
    void reportParts(const PartImports& parts);
    void loaded(znPtxLoaderJob& job, const PartImports& parts);
    void queueEmpty();

    QString m_file;
    znJobQueue m_conversions; ///< keeps the job, and with it the name of its output, as long as that is in use
    znJobQueue m_queue;
    TreeOptimization m_optimization;
    QPointer<znPtxConverterJob> m_converter;
    QString m_convertedFile;
    bool m_loads = false; ///< the conversion has ended and was not the last job
};

} // namespace importer
