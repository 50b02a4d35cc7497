// What each way of ending of the converter means to the job.

#include "converter/znPtxConverterJob.h"
#include "host/znKernel/znFileIOHelper.h"
#include "host/znKernel/znPtxHelper.h"
#include "host/znUtils/znFile.h"
#include "protocol/ExitCode.h"

#include <QFileSystemWatcher>

using protocol::ExitCode;

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
    unwatchTempFile();
    Q_EMIT progressChanged(0, tr("No external part files found. Retrying with inlined option."));
    m_isAssembly = false;
    updateProcessCommand();
    run();
}

void znPtxConverterJob::updateLegacyFile()
{
    unwatchTempFile();
    Q_EMIT progressChanged(0, tr("Updating Legacy Stylar File"));
    std::string convertedFile;
    const std::string command =
        znPtxHelper::createStylarConvertCommand(m_inputFile.toStdString(), convertedFile, m_outputDir.toStdString());
    auto* update = new znProcessJob(QString::fromUtf8(command.c_str()), nullptr);
    connect(update, &znAbstractJob::finished, [this, update, convertedFile] {
        if (znFile::exists(convertedFile, false, false))
            runOnLegacyFile(convertedFile);
        else
            znAbstractJob::finish();
        update->deleteLater();
    });
    update->run();
}

/// The command and the output come from the updated file, but the job goes on telling the caller's file as its input.
void znPtxConverterJob::runOnLegacyFile(const std::string& convertedFile)
{
    if (m_legacyFile != convertedFile)
        m_legacyFile = convertedFile;
    znFile::remove(m_tempFile.toStdString());
    const QString callersFile = m_inputFile;
    m_inputFile = QString::fromUtf8(convertedFile.c_str());
    updateProcessCommand();
    run();
    m_inputFile = callersFile;
}
