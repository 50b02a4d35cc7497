#include "converter/znPtxConverterJob.h"

#include "host/znJobProcessing/znParallelJobManager.h"
#include "host/znKernel/znFileIOHelper.h"
#include "host/znKernel/znImportOptions.h"
#include "host/znKernel/znPreferences.h"
#include "host/znKernel/znPtxHelper.h"
#include "host/znUtils/znFile.h"
#include "import/getFromMessage.h"
#include "protocol/FileNames.h"

#include <QFileInfo>
#include <QFileSystemWatcher>

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
    m_watcher.reset();
    znFile::remove(m_tempFile.toStdString());
    if (m_state == znCADFileTypes::JobSucceeded)
        znFile::remove(logFile());
    znFile::remove(m_legacyFile);
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

void znPtxConverterJob::updateProcessCommand()
{
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
