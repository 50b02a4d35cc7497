#pragma once

#include "host/znJobProcessing/znProcessJob.h"
#include "import/ImportExport.h"

#include <memory>
#include <set>
#include <string>

namespace conversion
{
class ConversionProgress;
}

/// Converts one CAD file into a scene file by running the external converter.
///
/// The command is built anew at each `starting`, so settings that change between a failed run and its retry count.
/// While the converter runs its progress file is followed and `progressChanged` carries percent and translated stage.
/// When it has ended, the exit code decides: the job ends, runs again with the parts inlined, or has an old Stylar file
/// updated first and runs on the result. `finished` follows the last of these runs.
///
/// The destructor ends a converter that still runs. Then it removes the progress file, the updated file, and after a
/// success the logs of all runs; after a failure they stay for the user to read. The output file stays. A job must not
/// be destroyed while an update process of it runs, unless through its queue.
///
/// The progress file lies beside the output from the moment that the command is made until the job is destroyed, so a
/// host can tell by it that the output's name is taken.
class ZN_IMPORT_EXPORT znPtxConverterJob : public znProcessJob
{
    Q_OBJECT

public:
    /// `outputDir` is where the scene file goes. When it is empty the preference "FileIO tmp path" says where; when the
    /// directory does not exist, the temporary directory takes its place.
    znPtxConverterJob(const QString& input, const QString& outputDir, QObject* parent);
    ~znPtxConverterJob() override;

    /// Whether the converter may leave parts in other files as references. Starts as what the file's name tells.
    void setIsAssemblyFile(bool isAssembly) { m_isAssembly = isAssembly; }
    /// Asks for one output with all parts inlined.
    void setConvertEntireAssembly(bool convertEntireAssembly) { m_convertEntireAssembly = convertEntireAssembly; }

    /// The CAD file, as it was given.
    QString getInputFile() const { return m_inputFile; }
    /// The scene file that the conversion writes; empty before the first `starting`.
    QString getOutputFile() const { return m_outputFile; }

    bool isMechanorJob() const override;

Q_SIGNALS:
    /// The conversion succeeded and `file` is its result. Comes before `finished`.
    void outputFileReady(const QString& file);

protected:
    void createBaseConnections() override;
    void finish() override;
    QString getErrorDescription(int exitCode) const override;

private Q_SLOTS:
    void watchTempFile();

private:
    void updateProcessCommand();
    bool wantsExternalParts() const;
    void giveOutputNameBack();
    void endProcess();
    void removeLogs() const;

    void createTmpFileWatcher();
    void reportProgress();

    bool handleFailedProcess(int exitCode);
    void retryInlined();
    void updateLegacyFile();
    void runOnLegacyFile(const std::string& convertedFile);
    std::string logFile() const;

    QString m_inputFile;
    QString m_outputFile;
    QString m_outputDir;
    QString m_tempFile;
    std::unique_ptr<conversion::ConversionProgress> m_progress;
    std::string m_legacyFile;
    bool m_isAssembly;
    bool m_convertEntireAssembly = false;
    int m_lastProgress = -1;
    std::set<std::string> m_formerLogs; ///< of the runs before the present one
};
