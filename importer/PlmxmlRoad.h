#pragma once

#include "host/znJobProcessing/znJobQueue.h"
#include "importer/ImportRoad.h"
#include "importer/TreeFinish.h"

#include <QList>
#include <QPointer>

class PartImports;
class znPLMXMLLoaderJob;
class znPtxConverterJob;

/// A PLMXML document goes through its loader job, which brings in the part files, and its tree into the scene. What is
/// missing in the end makes the result partial.
///
/// The loader job itself cannot be aborted: a cancelled import aborts the conversions, and ends without a tree.
class PlmxmlRoad : public ImportRoad
{
    Q_OBJECT

public:
    explicit PlmxmlRoad(const QString& file);

    void start(znImportResult& result) override;
    void cancel() override;

private:
    void followConversion(znPtxConverterJob* conversion);
    void loaded(znPLMXMLLoaderJob& job, const PartImports& parts);

    QString m_file;
    znJobQueue m_queue;
    TreeFinish m_finish;
    QList<QPointer<znPtxConverterJob>> m_conversions;
    bool m_loaded = false;
    znImportResult* m_result = nullptr;
};
