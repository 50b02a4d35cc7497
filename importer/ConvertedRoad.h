#pragma once

#include "host/znJobProcessing/znJobQueue.h"
#include "importer/ImportRoad.h"
#include "importer/TreeFinish.h"

#include <QPointer>

class PartImports;
class znPtxConverterJob;
class znPtxLoaderJob;

/// A CAD file goes through the converter job, and its converted file through the loader job, which brings in the part
/// files of an assembly. What is missing in the end makes the result partial.
class ConvertedRoad : public ImportRoad
{
    Q_OBJECT

public:
    /// `file` is the path of the CAD file.
    explicit ConvertedRoad(const QString& file);

    void start(znImportResult& result) override;
    void cancel() override;

private:
    void converted(const QString& file);
    void conversionEnded(znCADFileTypes::JobState state);
    void load();
    void reportParts(const PartImports& parts);
    void loaded(znPtxLoaderJob& job, const PartImports& parts);
    void queueEmpty();

    QString m_file;
    znJobQueue m_queue;
    TreeFinish m_finish;
    QPointer<znPtxConverterJob> m_converter;
    QString m_convertedFile;
    znImportResult* m_result = nullptr;
};
