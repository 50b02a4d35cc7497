#include "converter/znPtxConverterJob.h"

#include "converter/ConversionProgress.h"
#include "converter/LegacyUpdate.h"
#include "converter/StageLabels.h"
#include "host/znJobProcessing/znParallelJobManager.h"
#include "host/znKernel/znFileIOHelper.h"
#include "host/znKernel/znImportOptions.h"
#include "host/znKernel/znPreferences.h"
#include "host/znKernel/znPtxHelper.h"
#include "host/znUtils/znFile.h"
#include "import/getFromMessage.h"
#include "protocol/ExitCode.h"
#include "protocol/FileNames.h"

#include <QFileInfo>
#include <QPointer>

using protocol::ExitCode;

znPtxConverterJob::znPtxConverterJob(const QString& input, const QString& outputDir, QObject* parent)
    : znProcessJob(parent), m_inputFile(input), m_outputDir(outputDir),
      m_isAssembly(znFileIOHelper::isAssemblyFile(input))
{
    if (m_outputDir.isEmpty())
        getFromMessage<QString>(znPreferences::getData(), "FileIO tmp path", m_outputDir);
    if (m_outputDir.isEmpty() || !znFile::exists(m_outputDir.toStdString(), false, false))
        m_outputDir = QString::fromStdString(znFile::getTmpDir());
    createTmpFileWatcher();
}

znPtxConverterJob::~znPtxConverterJob()
{
    endProcess();
    m_progress.reset();
    znFile::remove(m_tempFile.toStdString());
    if (m_state == znCADFileTypes::JobSucceeded)
        removeLogs();
    znFile::remove(m_legacyFile);
}

/// Nobody is left who could write a file anew that the destructor removes, and nobody hears of it: the job is past it.
void znPtxConverterJob::endProcess()
{
    if (!m_process)
        return;
    m_process->blockSignals(true);
    m_process->close();
}

void znPtxConverterJob::removeLogs() const
{
    znFile::remove(logFile());
    for (const std::string& log : m_formerLogs)
        znFile::remove(log);
}

bool znPtxConverterJob::isMechanorJob() const
{
    return znFileIOHelper::isBrantelMechanorFile(m_inputFile);
}

void znPtxConverterJob::createBaseConnections()
{
    if (m_connectionsMade)
        return;
    connect(this, &znAbstractJob::starting, this, &znPtxConverterJob::updateProcessCommand);
    znProcessJob::createBaseConnections();
    m_connectionsMade = true;
}

bool znPtxConverterJob::wantsExternalParts() const
{
    const auto type = znFileIOHelper::getFileTypeByFileName(m_inputFile);
    const znImportOptions options(znCADFileTypes::fileTypeName(type), false, true);
    const bool inlineAll = znParallelJobManager::the()->getMaxNumProcesses() < 2 && options.getImportReferencedFiles();
    return m_isAssembly && !m_convertEntireAssembly && !inlineAll;
}

/// The progress file stands for the output's name, which is free once it is gone: the next command may have it again.
void znPtxConverterJob::giveOutputNameBack()
{
    if (m_outputFile.isEmpty())
        return;
    znFile::remove(m_tempFile.toStdString());
    m_formerLogs.insert(logFile());
}

void znPtxConverterJob::updateProcessCommand()
{
    giveOutputNameBack();
    const auto [command, outputFile] =
        znPtxHelper::createProcessCommand(m_inputFile.toStdString(), wantsExternalParts(), m_outputDir.toStdString());
    m_command = QString::fromUtf8(command.c_str());
    m_outputFile = QString::fromUtf8(outputFile.c_str());
    m_tempFile = m_outputFile + QLatin1String(protocol::ProgressSuffix);
    m_inputPresent = QFileInfo(m_inputFile).exists();
}

std::string znPtxConverterJob::logFile() const
{
    return (m_outputFile + QLatin1String(protocol::LogSuffix)).toStdString();
}

void znPtxConverterJob::createTmpFileWatcher()
{
    m_progress = std::make_unique<conversion::ConversionProgress>([this] { reportProgress(); });
    connect(this, &znAbstractJob::started, this, &znPtxConverterJob::watchTempFile);
    connect(this, &znAbstractJob::finished, [this] {
        if (m_progress)
            m_progress->release(m_tempFile);
    });
}

void znPtxConverterJob::watchTempFile()
{
    m_progress->watch(m_tempFile);
}

void znPtxConverterJob::reportProgress()
{
    const conversion::Progress progress = conversion::readProgress(m_tempFile);
    if (progress.value < 0 || progress.value == m_lastProgress)
        return;
    // A slot may run an event loop in which this job ends and is deleted.
    const QPointer<znPtxConverterJob> self(this);
    Q_EMIT progressChanged(static_cast<unsigned>(progress.value), znStageLabels::translated(progress.stage));
    if (self)
        m_lastProgress = progress.value;
}

QString znPtxConverterJob::getErrorDescription(int exitCode) const
{
    return znPtxHelper::getProcessErrorDescription(exitCode, logFile());
}

void znPtxConverterJob::finish()
{
    if (m_state != znCADFileTypes::JobFailed) {
        if (znFile::exists(m_outputFile.toStdString(), false, false))
            Q_EMIT outputFileReady(m_outputFile);
        return znAbstractJob::finish();
    }
    const int exitCode = getExitCode().value_or(znPtxHelper::CouldNotStart);
    if (exitCode == ExitCode::Cancelled)
        return znAbstractJob::finish();
    if (exitCode == ExitCode::NothingToImport && znFileIOHelper::canContainMixedAssemblies(m_inputFile))
        return znAbstractJob::finish();
    if (!handleFailedProcess(exitCode)) {
        m_errorText = getErrorDescription(exitCode);
        return znAbstractJob::finish();
    }
    if (znFileIOHelper::canContainMixedAssemblies(m_inputFile)) {
        m_state = znCADFileTypes::JobSucceeded;
        Q_EMIT outputFileReady(m_outputFile);
        znAbstractJob::finish();
    }
}

bool znPtxConverterJob::handleFailedProcess(int exitCode)
{
    const bool noParts = exitCode == ExitCode::NoExternalParts || exitCode == ExitCode::NoExternalPartsEither;
    if (m_isAssembly && noParts) {
        if (!znFileIOHelper::canContainMixedAssemblies(m_inputFile))
            retryInlined();
        return true;
    }
    if (exitCode == ExitCode::OldStylarFile && znFileIOHelper::isStylarFile(m_inputFile)) {
        updateLegacyFile();
        return true;
    }
    return false;
}

void znPtxConverterJob::retryInlined()
{
    m_progress->unwatch(m_tempFile);
    Q_EMIT progressChanged(0, tr("No external part files found. Retrying with inlined option."));
    m_isAssembly = false;
    updateProcessCommand();
    run();
}

void znPtxConverterJob::updateLegacyFile()
{
    m_progress->unwatch(m_tempFile);
    Q_EMIT progressChanged(0, tr("Updating Legacy Stylar File"));
    conversion::startLegacyUpdate(*this, m_inputFile, m_outputDir, [this](const std::string& updatedFile) {
        if (updatedFile.empty())
            znAbstractJob::finish();
        else
            runOnLegacyFile(updatedFile);
    });
}

/// The command and the output come from the updated file, but the job goes on telling the caller's file as its input.
void znPtxConverterJob::runOnLegacyFile(const std::string& convertedFile)
{
    if (m_legacyFile != convertedFile) {
        if (!m_legacyFile.empty())
            znFile::remove(m_legacyFile);
        m_legacyFile = convertedFile;
    }
    const QString callersFile = m_inputFile;
    m_inputFile = QString::fromUtf8(convertedFile.c_str());
    updateProcessCommand();
    run();
    m_inputFile = callersFile;
}
