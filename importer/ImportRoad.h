#pragma once

#include "importer/ImportResult.h"
#include "importer/PartCounts.h"

#include <QObject>

#include <memory>

/// The jobs that bring one file into the scene.
class ImportRoad : public QObject
{
    Q_OBJECT

public:
    /// The road for a file of this name.
    static std::unique_ptr<ImportRoad> forFile(const QString& file);

    /// Begins; `ended` follows from the event loop. State, node, error and missing parts are written into `result`, which
    /// must live until then.
    virtual void start(znImportResult& result) = 0;
    virtual void cancel() = 0;

Q_SIGNALS:
    void progressChanged(unsigned percent, const QString& text);
    void partsChanged(const znPartCounts& counts, const QString& text);
    void ended();
};
