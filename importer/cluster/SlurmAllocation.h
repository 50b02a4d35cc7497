#pragma once

#include "importer/cluster/SlurmText.h"

#include <QObject>

#include <memory>

class QProcess;

namespace importer::cluster
{

/// What is asked of the scheduler.
struct AllocationWish {
    int nodes = 0;     ///< 0 leaves it to the scheduler
    QString partition; ///< empty for the scheduler's own choice
    QStringList words; ///< further words of salloc
};

/// An allocation of Slurm for as long as this object holds it.
///
/// Where the environment names a job (SLURM_JOB_ID), that one is taken and left as it is in the end. Otherwise `salloc`
/// asks for one, and a shell that reads from this process runs in it: however this process ends, the shell's input
/// ends, with it `salloc`, and with that the allocation.
///
/// The variables by which srun would take over options of the surrounding job are taken out of this process's
/// environment.
class SlurmAllocation : public QObject
{
    Q_OBJECT

public:
    /// Holds none yet.
    explicit SlurmAllocation(QObject* parent = nullptr);
    /// Gives the allocation back.
    ~SlurmAllocation() override;

    /// Whether the environment names an allocation.
    static bool isWithinOne();

    /// Asks for the allocation; one of the signals `granted` and `refused` follows from the event loop.
    void acquire(const AllocationWish& wish);

    /// Gives the allocation, or the place in the queue, back. Returns when the scheduler has it, or after ten seconds.
    void release();

Q_SIGNALS:
    /// It has a place in the queue. What it waits for, in the scheduler's words.
    void waiting(const QString& text);
    /// It is there, and held until `release`.
    void granted(const Allocation& allocation);
    /// There is none, and why.
    void refused(const QString& reason);
    /// The scheduler took this node out of a granted allocation, since it failed.
    void nodeFailed(const QString& node);
    /// It ended before it was released: its time was over, or somebody cancelled it.
    void ended(const QString& reason);

private:
    void readOutput();
    void readErrors();
    void processEnded();

    std::unique_ptr<QProcess> m_process;
    QByteArray m_output;
    QByteArray m_errors;
    QString m_told;
    bool m_isBorrowed = false;
    bool m_isGranted = false;
};

} // namespace importer::cluster
