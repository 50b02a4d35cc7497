#pragma once

#include "host/OSGSystem/Node.h"
#include "host/znJobProcessing/znAbstractTimerJob.h"
#include "host/znKernelServices/zndReferenceNode.h"
#include "import/ImportExport.h"

#include <QString>

/// Loads one scene file through the host and hangs it into the scene.
///
/// It goes below the target. Where that is gone, the selected node takes its place; where the place is a drawable, is
/// locked or lies in an asset that is not open for editing, the scene root does. A target that is a reference node is
/// filled with the content of the file, or refreshed when it names a smart file already.
///
/// The state ends as 1 when the host could not load the file (its log tells why), else as 0. A running load is not
/// interrupted by `abort`.
class ZN_IMPORT_EXPORT znFileLoaderJob : public znAbstractTimerJob
{
    Q_OBJECT

public:
    /// `file` is the path as the host shall read it. `target` is kept by its id: a node that goes before the run counts
    /// as none.
    znFileLoaderJob(const QString& file, const zndNode& target, QObject* parent);
    ~znFileLoaderJob() override;

    /// Handed on to the host's load when the file goes below a plain node; true at first. To be set before the run.
    void setLoadBehavior(bool behavior) { m_loadBehavior = behavior; }
    /// Makes a new smart reference to the file, unless the target is a reference. To be set before the run.
    void setImportAsSmartReference(bool smart) { m_importAsSmartReference = smart; }

    /// The path, as it was given.
    QString getFile() const { return m_file; }
    /// What was loaded; null before, after a failure, and for a file without content.
    osg::NodePtr getLoadedNode() const { return m_loadedNode; }

    /// Does nothing: a load that has begun runs to its end, and one that waits in a queue is ended by the queue's
    /// abortAllJobs() alone.
    void abort() override;

protected:
    /// Loads and places the file; signals come as znAbstractProcessingJob tells.
    void process() override;

private:
    void refresh(zndReferenceNode& reference);
    void fill(const osg::NodePtr& place);
    void createSmartReference(const osg::NodePtr& place);
    void load(const osg::NodePtr& place);

    QString m_file;
    osg::NodePtr m_loadedNode;
    zndNode m_target;
    bool m_loadBehavior = true;
    bool m_importAsSmartReference = false;
};
