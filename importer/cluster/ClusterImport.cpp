#include "importer/cluster/ClusterImport.h"

#include "importer/cluster/ClusterProbe.h"
#include "importer/cluster/NodeLosses.h"
#include "standalone/startup/StandaloneSession.h"
#include "standalone/znKernel/ConverterCommand.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>

#include <algorithm>

using importer::cluster::Allocation;
using importer::cluster::ClusterProbe;
using importer::cluster::NodeLosses;
using importer::cluster::SharedFolder;
using importer::cluster::SlurmAllocation;

namespace zn
{

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

ClusterImport::ClusterImport(zn::StandaloneSession& session, SharedFolder& folder, QObject* parent)
    : QObject(parent), m_session(session), m_folder(folder),
      m_stepName(QStringLiteral("znimport-%1").arg(QCoreApplication::applicationPid()))
{
    connect(&m_allocationHolder, &SlurmAllocation::waiting, this,
            [this](const QString& text) { Q_EMIT progress(tr("waiting for the cluster: %1").arg(text)); });
    connect(&m_allocationHolder, &SlurmAllocation::granted, this, &ClusterImport::granted);
    connect(&m_allocationHolder, &SlurmAllocation::nodeFailed, this, [this](const QString& node) {
        if (m_losses)
            m_losses->addNode(node);
    });
    connect(&m_allocationHolder, &SlurmAllocation::refused, this,
            [this](const QString& reason) { refuse(tr("no allocation of the cluster: %1").arg(reason)); });
    connect(&m_allocationHolder, &SlurmAllocation::ended, this,
            [this](const QString& reason) { Q_EMIT ended(tr("the allocation of the cluster ended: %1").arg(reason)); });
}

ClusterImport::~ClusterImport()
{
    close();
}

void ClusterImport::open(const ClusterWish& wish)
{
    m_wish = wish;
    const Settings& settings = m_session.settings();
    m_mostProcesses = settings.processes.most;
    const QString chosen = settings.files.temporaryFolder;
    if (const auto error = m_folder.make(chosen.isEmpty() ? wish.sharedFolder : chosen)) {
        QMetaObject::invokeMethod(
            this, [this, reason = *error] { refuse(reason); }, Qt::QueuedConnection);
        return;
    }
    Q_EMIT progress(tr("waiting for the cluster"));
    const QStringList words = QProcess::splitCommand(settings.cluster.allocation.value());
    m_allocationHolder.acquire({wish.nodes, wish.partition, words});
}

void ClusterImport::granted(const Allocation& allocation)
{
    m_allocation = allocation;
    Q_EMIT progress(tr("looking from each node whether the folders are shared"));
    const QString program = kernel::converterProgram(m_session.settings().converter.program);
    m_probe = std::make_unique<ClusterProbe>(
        ClusterProbe::Question{allocation, m_stepName, m_folder.path(), m_wish.inputs, program});
    connect(m_probe.get(), &ClusterProbe::failed, this, &ClusterImport::refuse);
    connect(m_probe.get(), &ClusterProbe::passed, this, &ClusterImport::probed);
    m_probe->start();
}

void ClusterImport::refuse(const QString& reason)
{
    m_allocationHolder.release();
    Q_EMIT refused(reason);
}

void ClusterImport::probed()
{
    m_losses = std::make_unique<NodeLosses>(m_allocation.nodes);
    connect(m_losses.get(), &NodeLosses::conversionLost, this, &ClusterImport::conversionLost);
    connect(m_losses.get(), &NodeLosses::nodeFailed, this, &ClusterImport::nodeFailed);
    m_session.settings().files.temporaryFolder.set(m_folder.path());
    useNodes();
    Q_EMIT opened(
        tr("job %1 of the cluster: %2 nodes, %3 conversions at a time; the number inside one part may stand still")
            .arg(m_allocation.job)
            .arg(m_allocation.nodes.size())
            .arg(m_session.settings().processes.most.value()));
}

/// A conversion that is asked to take more than a node has would wait for ever.
void ClusterImport::useNodes()
{
    Settings& settings = m_session.settings();
    LauncherSettings& launcher = settings.launcher;
    const QStringList& lost = m_losses->lost();
    settings.converter.launcher.set(importer::cluster::launcherFor(m_allocation, m_stepName, lost));
    const int cores = *std::min_element(m_allocation.cores.begin(), m_allocation.cores.end());
    launcher.mostCores.set(std::clamp(cores, 1, launcher.mostCores.value()));
    if (const int memory = m_allocation.megabytesANode; memory > 0) {
        const int most = launcher.mostMemory;
        launcher.mostMemory.set(std::min(most > 0 ? most : memory, memory));
    }
    const int places = importer::cluster::placesIn(m_allocation, launcher.memory, lost);
    const int bound = m_mostProcesses > 0 ? m_mostProcesses : mostProcesses;
    settings.processes.most.set(std::clamp(places, 1, bound));
}

void ClusterImport::nodeFailed()
{
    if (!m_losses->left().isEmpty())
        return useNodes();
    Q_EMIT ended(tr("the allocation of the cluster ended: all of its nodes failed"));
}

void ClusterImport::close()
{
    blockSignals(true);
    m_probe.reset();
    m_losses.reset();
    if (m_allocation.isBorrowed)
        cancelSteps();
    m_allocationHolder.release();
}

/// Steps that did not end with the process that waited for them. With an allocation of its own they end with that.
void ClusterImport::cancelSteps()
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

} // namespace zn
