#pragma once

#include "importer/cluster/SharedFolder.h"
#include "importer/cluster/SlurmAllocation.h"

#include <QObject>

#include <memory>

namespace zn
{
class StandaloneSession;
} // namespace zn

namespace importer::cluster
{
class ClusterProbe;
class NodeLosses;
} // namespace importer::cluster

namespace zn
{

/// What an import wants of a cluster.
struct ClusterWish {
    int nodes = 0;        ///< 0 leaves it to the scheduler
    QString partition;    ///< empty for the scheduler's own choice
    QString sharedFolder; ///< where a folder for converted files is made, unless the settings name one
    QStringList inputs;   ///< files that the nodes must see
};

/// Has the conversions of a session's imports run as steps of one allocation of Slurm.
///
/// `open` gets the allocation, looks from each node whether the folders are shared, and then sets the session's
/// settings `converter.launcher`, `launcher.mostCores`, `launcher.mostMemory`, `processes.most` and
/// `files.temporaryFolder`. How many conversions run at a time follows from the allocation; a smaller `processes.most`
/// that was set before stays.
///
/// The object must outlive the session's end of imports, not the session; `close` gives the allocation back.
class ClusterImport : public QObject
{
    Q_OBJECT

public:
    /// `folder` takes the converted files; it must outlive the session, whose scene stands on them.
    ClusterImport(zn::StandaloneSession& session, importer::cluster::SharedFolder& folder, QObject* parent = nullptr);
    /// As `close`.
    ~ClusterImport() override;

    /// Begins; `opened` or `refused` follows from the event loop.
    void open(const ClusterWish& wish);

    /// Ends what still runs and gives the allocation back, or the place in the queue. Nothing is emitted after it.
    void close();

Q_SIGNALS:
    /// How far the opening is.
    void progress(const QString& text);
    /// Conversions that start from now on run on the cluster; `text` tells on how much of it.
    void opened(const QString& text);
    /// There is no cluster for this import, and why; nothing is held.
    void refused(const QString& reason);
    /// A node failed; which conversion that met, and what becomes of it.
    void conversionLost(const QString& text);
    /// Nothing of the allocation is left, and why: whatever still waits cannot run.
    void ended(const QString& reason);

private:
    void granted(const importer::cluster::Allocation& allocation);
    void probed();
    void useNodes();
    void nodeFailed();
    void cancelSteps();
    void refuse(const QString& reason);

    zn::StandaloneSession& m_session;
    importer::cluster::SharedFolder& m_folder;
    importer::cluster::SlurmAllocation m_allocationHolder;
    ClusterWish m_wish;
    importer::cluster::Allocation m_allocation;
    QString m_stepName;
    int m_mostProcesses = 0; ///< by the settings; 0 sets no bound
    std::unique_ptr<importer::cluster::ClusterProbe> m_probe;
    std::unique_ptr<importer::cluster::NodeLosses> m_losses;
};

} // namespace zn
