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
    explicit znOsbLoaderJob(const QString& file);
    ~znOsbLoaderJob() override;

    /// Null before the load and after a failure.
    osg::NodePtr& getLoadedNode() { return m_loadedNode; }

protected:
    void process() override;

    QString m_file;
    osg::NodePtr m_loadedNode;
    /// Set by a subclass around its call of `process`: the load then leaves `started` and `processingFinished` to it.
    bool m_holdFinish = false;

private:
    osg::RefPtr<osg::NodePtr> m_held;
};
