#pragma once

#include "host/znJobProcessing/znJobQueue.h"
#include "importer/ImportRoad.h"

#include <QPointer>

class znOsbLoaderJob;
class znPtxConverterJob;

/// A CAD file goes through the converter job, and its converted file through a loader job.
class ConvertedRoad : public ImportRoad
{
    Q_OBJECT

public:
    explicit ConvertedRoad(const QString& file);

    void start(znImportResult& result) override;
    void cancel() override;

private:
    void converted(const QString& file);
    void conversionEnded(znCADFileTypes::JobState state);
    void loaded(znOsbLoaderJob* job, znCADFileTypes::JobState state);
    void queueEmpty();

    QString m_file;
    znJobQueue m_queue;
    QPointer<znPtxConverterJob> m_converter;
    QString m_convertedFile;
    znImportResult* m_result = nullptr;
};
