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
    /// Asks the jobs to end. `ended` follows as soon as they have.
    virtual void cancel() = 0;

Q_SIGNALS:
    /// `percent` is 0 when only the text tells something.
    void progressChanged(unsigned percent, const QString& text);
    /// The part files went on; `text` tells the counts in words.
    void partsChanged(const znPartCounts& counts, const QString& text);
    /// The result is complete. Comes once for each start, from the event loop.
    void ended();
};
