#pragma once

#include "importer/ImportResult.h"

#include <QObject>

class znJobQueue;

/// The last job of a road: cleans the imported tree and hangs it into the scene. Its steps are recorded in the result
/// where that wants them.
class TreeFinish : public QObject
{
    Q_OBJECT

public:
    /// Queues the job for `result.node`, which the result goes on holding. When the job does not succeed, the result
    /// tells why; a tree that has not come into the scene is given up then. `result` must live until the job has ended.
    void start(znJobQueue& queue, const QString& file, znImportResult& result);

Q_SIGNALS:
    /// That of the job; `percent` is 0 when only the text tells something.
    void progressChanged(unsigned percent, const QString& text);
};
