#pragma once

#include "host/OSGSystem/Node.h"
#include "host/znJobProcessing/znAbstractProcessingJob.h"

#include <QString>

/// Loads one converted scene file.
///
/// The state ends as 1 when it cannot be loaded, with the reason as error text, else as 0. The job holds a reference on
/// the loaded node until it dies: whoever wants to keep the node takes one of its own in a slot of `finished`.
class ZN_HOST_EXPORT znOsbLoaderJob : public znAbstractProcessingJob
{
    Q_OBJECT

public:
    /// `file` is the path of the scene file. It is opened by the run, not before. The job has no parent.
    explicit znOsbLoaderJob(const QString& file);
    ~znOsbLoaderJob() override;

    /// Null before the load and after a failure.
    osg::NodePtr& getLoadedNode() { return m_loadedNode; }

protected:
    /// Reads the file in one go, without an event; what was left out of it goes to the log of the host.
    void process() override;

    /// The path that the next run reads.
    QString m_file;
    /// What getLoadedNode() gives.
    osg::NodePtr m_loadedNode;
    /// Set by a subclass around its call of `process`: the load then leaves `started` and `processingFinished` to it.
    bool m_holdFinish = false;

private:
    osg::RefPtr<osg::NodePtr> m_held;
};
