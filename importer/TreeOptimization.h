#pragma once

#include "importer/ImportResult.h"

#include <QObject>

#include <vector>

class znJobQueue;

namespace importer
{

/// The last job of a road: cleans the imported tree and hangs it into the scene.
class TreeOptimization : public QObject
{
    Q_OBJECT

public:
    /// Queues the job for `tree`, which came from `file`. Somebody must hold the tree until `ended`.
    void start(znJobQueue& queue, const QString& file, const osg::NodePtr& tree, bool recordsSteps);

    /// Puts into `result`, which holds the tree, what the job has done: its steps, and why it failed. A tree that has
    /// not come into the scene is given up then.
    void tellOutcome(zn::ImportResult& result);

Q_SIGNALS:
    /// That of the job; `percent` is 0 when only the text tells something.
    void progressChanged(unsigned percent, const QString& text);
    /// The job has ended, however it did.
    void ended();

private:
    QString m_file;
    std::vector<zn::TreeStep> m_steps;
    bool m_hasSucceeded = false;
    QString m_error;
};

} // namespace importer
