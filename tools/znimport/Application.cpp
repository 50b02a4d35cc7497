#include "tools/znimport/Application.h"

#include "importer/MissingParts.h"
#include "importer/SceneText.h"
#include "importer/inventory/PartsListFile.h"
#include "protocol/Printable.h"
#include "tools/znimport/ChosenSettings.h"
#include "tools/znimport/Ending.h"
#include "tools/znimport/GlbOptions.h"
#include "tools/znimport/InputLinks.h"
#include "tools/znimport/OutputFiles.h"
#include "tools/znimport/StructureText.h"
#include "tools/znimport/VariantSelection.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTimer>

#include <cstdio>
#include <unistd.h>

namespace znimport
{

Application::Application(CommandLine commandLine)
    : m_commandLine(std::move(commandLine)), m_importer(m_session), m_display(stderr, isatty(STDERR_FILENO) == 1)
{
    connect(&m_importer, &zn::Importer::progressChanged, this,
            [this](unsigned percent, const QString& text) { m_display.show(percent, text); });
    connect(&m_importer, &zn::Importer::partsChanged, this,
            [this](const zn::PartCounts& counts, const QString& text) { m_display.showParts(counts, text); });
    connect(&m_importer, &zn::Importer::finished, this, &Application::importFinished);
    connect(&m_interrupt, &Interrupt::stopRequested, this, &Application::stop);
}

int Application::run()
{
    if (m_commandLine.clusterNodes > 0 && importer::cluster::SlurmAllocation::isWithinOne()) {
        complain(QStringLiteral("--nodes asks for a new allocation, but this is already one (job %1)")
                     .arg(qEnvironmentVariable("SLURM_JOB_ID")));
        return wrongUse;
    }
    if (const auto error = outputComplaint(m_commandLine)) {
        complain(*error);
        return wrongUse;
    }
    if (const auto error = readChoices(m_commandLine, m_choices)) {
        complain(*error);
        return wrongUse;
    }
    if (const auto error = applySettings(m_commandLine, m_session.settings())) {
        complain(*error);
        return wrongUse;
    }
    if (const auto error = levelComplaint(m_session)) {
        complain(*error);
        return wrongUse;
    }
    if (const auto error = folderComplaint(m_commandLine)) {
        fail(*error);
        return QFileInfo(QFileInfo(m_commandLine.reportFile).path()).isDir() ? writeReport(failed) : failed;
    }
    InputLinks links(m_commandLine.arguments, m_session.temporaryFolder());
    for (QString& file : m_commandLine.files)
        file = links.openable(file);
    if (m_commandLine.trace)
        m_trace.emplace([](const std::string& call) { protocol::print(stderr, call + '\n'); });
    QTimer::singleShot(0, this, &Application::begin);
    QCoreApplication::exec();
    m_cluster.reset();
    m_display.clear();
    if (m_interrupt.requested()) {
        m_clusterFolder.dropLogs();
        complain(QStringLiteral("interrupted; nothing was written"));
        return interrupted;
    }
    if (m_clusterFailed)
        return writeReport(failed);
    const int code = presentScene();
    return writeReport(m_interrupt.requested() ? interrupted : code);
}

int Application::presentScene()
{
    if (m_imported == 0)
        return failed;
    if (!applyVariant() || !choose())
        return failed;
    if (m_commandLine.variants)
        protocol::print(stdout, describeVariantSets(m_session));
    if (m_commandLine.tree)
        protocol::print(stdout, zn::describeScene(m_session.sceneRoot(), m_commandLine.treeAttributes));
    protocol::print(stdout, m_partFiles.toStdString());
    return writeOutputs() ? exitCode() : failed;
}

/// The parts list is made of all attributes; it has columns for those that are chosen.
bool Application::choose()
{
    const osg::NodePtr scene = m_session.sceneRoot();
    if (const auto error = select(scene, m_commandLine, m_choices)) {
        fail(*error);
        return false;
    }
    const bool isWritten = writePartsList();
    show(scene, m_commandLine); // what is drawn beside a part is none of its measures
    importer::inventory::applyAttributeChoice(scene, m_choices.attributes);
    return isWritten;
}

bool Application::writePartsList()
{
    using namespace importer::inventory;
    if (m_commandLine.bomFile.isEmpty())
        return true;
    std::vector<PartsListRow> rows = partsList(m_session.sceneRoot(), m_choices.levels);
    for (PartsListRow& row : rows)
        row.attributes = chosenOf(row.attributes, m_choices.attributes);
    const PartsListWritten written = importer::inventory::writePartsList(rows, m_choices.levels, m_commandLine.bomFile);
    for (const QString& warning : written.warnings)
        warn(warning);
    if (written.error)
        fail(*written.error);
    else
        m_report.addOutput(m_commandLine.bomFile);
    return !written.error;
}

int Application::writeReport(int code)
{
    if (m_commandLine.reportFile.isEmpty())
        return code;
    const auto error = m_report.write(m_commandLine.reportFile, m_session.sceneRoot(), code);
    if (!error)
        return code;
    complain(*error);
    return failed;
}

void Application::warn(const QString& text)
{
    complain(text);
    m_report.addWarning(text);
}

void Application::fail(const QString& text)
{
    complain(text);
    m_report.setError(text);
}

bool Application::applyVariant()
{
    if (!m_commandLine.variant)
        return true;
    const ChosenVariantSet result = chooseVariantSet(m_session, *m_commandLine.variant);
    for (const QString& warning : result.warnings)
        warn(warning);
    if (result.error)
        fail(*result.error);
    return !result.error;
}

void Application::begin()
{
    if (m_commandLine.cluster.isEmpty())
        return importNext();
    m_display.begin(m_commandLine.files.first());
    openCluster();
}

void Application::openCluster()
{
    m_cluster = std::make_unique<zn::ClusterImport>(m_session, m_clusterFolder);
    connect(m_cluster.get(), &zn::ClusterImport::progress, this,
            [this](const QString& text) { m_display.show(0, text); });
    connect(m_cluster.get(), &zn::ClusterImport::opened, this, [this](const QString& text) {
        m_display.clear();
        complain(text);
        importNext();
    });
    connect(m_cluster.get(), &zn::ClusterImport::conversionLost, this, [this](const QString& text) {
        m_display.clear();
        warn(text);
    });
    connect(m_cluster.get(), &zn::ClusterImport::refused, this, &Application::clusterEnded);
    connect(m_cluster.get(), &zn::ClusterImport::ended, this, &Application::clusterEnded);
    const QString written = m_commandLine.outputFile.isEmpty() ? QString() : QFileInfo(m_commandLine.outputFile).path();
    m_cluster->open({m_commandLine.clusterNodes, m_commandLine.partition,
                     written.isEmpty() ? QDir::currentPath() : written, m_commandLine.files});
}

void Application::clusterEnded(const QString& reason)
{
    m_display.clear();
    m_clusterFailed = true;
    fail(reason);
    if (m_importer.isRunning())
        m_importer.cancel();
    else
        QCoreApplication::quit();
}

void Application::importNext()
{
    if (m_next >= m_commandLine.files.size() || m_interrupt.requested() || m_clusterFailed)
        return QCoreApplication::quit();
    const QString file = m_commandLine.files.at(m_next++);
    m_display.begin(file);
    m_report.begin();
    m_importer.import({file, !m_commandLine.reportFile.isEmpty(), m_commandLine.preferred, m_commandLine.keptDocument,
                       m_commandLine.treeOnly || !m_commandLine.reportFile.isEmpty()});
}

void Application::importFinished(const zn::ImportResult& result)
{
    m_display.clear();
    if (!m_commandLine.reportFile.isEmpty())
        m_report.add(result);
    for (const QString& line : result.messages)
        if (line != result.error)
            complain(line);
    if (!result.error.isEmpty() && !result.cancelled)
        complain(result.error);
    for (const zn::MissingPart& part : result.missing)
        complain(QStringLiteral("missing: ") + describe(part));
    if (m_commandLine.treeOnly && result.document)
        m_partFiles += describePartFiles(*result.document);
    if (result.node)
        ++m_imported;
    if (result.state != znCADFileTypes::JobSucceeded)
        ++m_incomplete;
    importNext();
}

void Application::stop()
{
    m_cancelWriting = true;
    if (m_importer.isRunning() || !m_cluster)
        m_importer.cancel();
    else
        QCoreApplication::quit();
}

bool Application::writeOutputs()
{
    m_display.begin(m_commandLine.snapshotFile);
    const auto result = znimport::writeOutputs(
        m_commandLine, m_session,
        [this](unsigned percent) {
            m_display.show(percent, QStringLiteral("Drawing"));
            QCoreApplication::processEvents();
        },
        m_cancelWriting);
    m_display.clear();
    for (const QString& warning : result.warnings)
        warn(warning);
    if (result.error)
        fail(*result.error);
    for (const QString& file : result.files)
        m_report.addOutput(file);
    return !result.error;
}

int Application::exitCode() const
{
    return m_incomplete == 0 ? succeeded : partial;
}

} // namespace znimport
