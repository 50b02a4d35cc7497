#include "importer/cluster/znClusterImport.h"

#include "importer/cluster/ClusterProbe.h"
#include "importer/cluster/NodeLosses.h"
#include "standalone/startup/znStandaloneSession.h"
#include "standalone/znKernel/ConverterCommand.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>

#include <algorithm>

namespace
{

constexpr int mostProcesses = 1024; // as many as the setting takes
constexpr int queryMilliseconds = 5000;

QString nameOf(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

/// What a program of the scheduler prints; empty when it does not answer.
QByteArray answerOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    return process.waitForFinished(queryMilliseconds) ? process.readAllStandardOutput() : QByteArray();
}

} // namespace

znClusterImport::znClusterImport(znStandaloneSession& session, SharedFolder& folder, QObject* parent)
    : QObject(parent), m_session(session), m_folder(folder),
      m_stepName(QStringLiteral("znimport-%1").arg(QCoreApplication::applicationPid()))
{
    connect(&m_allocationHolder, &SlurmAllocation::waiting, this,
            [this](const QString& text) { Q_EMIT progress(tr("waiting for the cluster: %1").arg(text)); });
    connect(&m_allocationHolder, &SlurmAllocation::granted, this, &znClusterImport::granted);
    connect(&m_allocationHolder, &SlurmAllocation::nodeFailed, this, [this](const QString& node) {
        if (m_losses)
            m_losses->addNode(node);
    });
    connect(&m_allocationHolder, &SlurmAllocation::refused, this,
            [this](const QString& reason) { refuse(tr("no allocation of the cluster: %1").arg(reason)); });
    connect(&m_allocationHolder, &SlurmAllocation::ended, this,
            [this](const QString& reason) { Q_EMIT ended(tr("the allocation of the cluster ended: %1").arg(reason)); });
}

znClusterImport::~znClusterImport()
{
    close();
}

void znClusterImport::open(const znClusterWish& wish)
{
    m_wish = wish;
    const zn::Settings& settings = m_session.settings();
    m_mostProcesses = settings.integer(nameOf("processes.most"));
    const QString chosen = settings.text(nameOf("files.temporaryFolder"));
    if (const auto error = m_folder.make(chosen.isEmpty() ? wish.sharedFolder : chosen)) {
        QMetaObject::invokeMethod(
            this, [this, reason = *error] { refuse(reason); }, Qt::QueuedConnection);
        return;
    }
    Q_EMIT progress(tr("waiting for the cluster"));
    m_allocationHolder.acquire(
        {wish.nodes, wish.partition, QProcess::splitCommand(settings.text(nameOf("cluster.allocation")))});
}

void znClusterImport::granted(const znAllocation& allocation)
{
    m_allocation = allocation;
    Q_EMIT progress(tr("looking from each node whether the folders are shared"));
    const QString program = zn::converterProgram(m_session.settings().text(nameOf("converter.program")));
    m_probe = std::make_unique<ClusterProbe>(
        ClusterProbe::Question{allocation, m_stepName, m_folder.path(), m_wish.inputs, program});
    connect(m_probe.get(), &ClusterProbe::failed, this, &znClusterImport::refuse);
    connect(m_probe.get(), &ClusterProbe::passed, this, &znClusterImport::probed);
    m_probe->start();
}

void znClusterImport::refuse(const QString& reason)
{
    m_allocationHolder.release();
    Q_EMIT refused(reason);
}

void znClusterImport::probed()
{
    m_losses = std::make_unique<NodeLosses>(m_allocation.nodes);
    connect(m_losses.get(), &NodeLosses::conversionLost, this, &znClusterImport::conversionLost);
    connect(m_losses.get(), &NodeLosses::nodeFailed, this, &znClusterImport::nodeFailed);
    m_session.settings().set(nameOf("files.temporaryFolder"), m_folder.path());
    useNodes();
    Q_EMIT opened(
        tr("job %1 of the cluster: %2 nodes, %3 conversions at a time; the number inside one part may stand still")
            .arg(m_allocation.job)
            .arg(m_allocation.nodes.size())
            .arg(m_session.settings().integer(nameOf("processes.most"))));
}

/// A conversion that is asked to take more than a node has would wait for ever.
void znClusterImport::useNodes()
{
    zn::Settings& settings = m_session.settings();
    const auto set = [&settings](const char* name, int value) { settings.set(nameOf(name), QString::number(value)); };
    const QStringList& lost = m_losses->lost();
    settings.set(nameOf("converter.launcher"), slurm::launcherFor(m_allocation, m_stepName, lost));
    const int cores = *std::min_element(m_allocation.cores.begin(), m_allocation.cores.end());
    set("launcher.mostCores", std::clamp(cores, 1, settings.integer(nameOf("launcher.mostCores"))));
    if (const int memory = m_allocation.megabytesANode; memory > 0) {
        const int most = settings.integer(nameOf("launcher.mostMemory"));
        set("launcher.mostMemory", std::min(most > 0 ? most : memory, memory));
    }
    const int places = slurm::placesIn(m_allocation, settings.integer(nameOf("launcher.memory")), lost);
    const int bound = m_mostProcesses > 0 ? m_mostProcesses : mostProcesses;
    set("processes.most", std::clamp(places, 1, bound));
}

void znClusterImport::nodeFailed()
{
    if (!m_losses->left().isEmpty())
        return useNodes();
    Q_EMIT ended(tr("the allocation of the cluster ended: all of its nodes failed"));
}

void znClusterImport::close()
{
    blockSignals(true);
    m_probe.reset();
    m_losses.reset();
    if (m_allocation.isBorrowed)
        cancelSteps();
    m_allocationHolder.release();
}

/// Steps that did not end with the process that waited for them. With an allocation of its own they end with that.
void znClusterImport::cancelSteps()
{
    const QByteArray steps = answerOf(nameOf("squeue"), {nameOf("--steps"), nameOf("--noheader"), nameOf("--jobs"),
                                                         m_allocation.job, nameOf("--format=%i %j")});
    QStringList left;
    for (const QByteArray& line : steps.split('\n')) {
        const QStringList words = QString::fromUtf8(line).simplified().split(QLatin1Char(' '));
        if (words.size() == 2 && words[1] == m_stepName)
            left.append(words[0]);
    }
    if (!left.isEmpty())
        answerOf(nameOf("scancel"), left);
}
