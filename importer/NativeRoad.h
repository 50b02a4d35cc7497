#pragma once

#include "host/znJobProcessing/znJobQueue.h"
#include "importer/ImportRoad.h"

/// A file that the host reads by itself goes through the file loader job.
class NativeRoad : public ImportRoad
{
    Q_OBJECT

public:
    /// `file` is the path that the host reads.
    explicit NativeRoad(const QString& file) : m_file(file) {}

    void start(znImportResult& result) override;
    /// A load that has begun is not interrupted.
    void cancel() override;

private:
    QString m_file;
    znJobQueue m_queue;
};
