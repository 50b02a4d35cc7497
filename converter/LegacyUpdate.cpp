#include "converter/LegacyUpdate.h"

#include "host/znJobProcessing/znProcessJob.h"
#include "host/znKernel/znPtxHelper.h"
#include "host/znUtils/znFile.h"

#include <memory>
#include <utility>

namespace conversion
{

namespace
{

/// The file that an update writes; it goes unless somebody takes it.
class UpdatedFile
{
public:
    explicit UpdatedFile(std::string path) : m_path(std::move(path)) {}
    UpdatedFile(const UpdatedFile&) = delete;
    UpdatedFile& operator=(const UpdatedFile&) = delete;
    ~UpdatedFile()
    {
        if (!m_path.empty())
            znFile::remove(m_path);
    }

    /// The path, for the caller to remove; empty if the update has written nothing.
    std::string take() { return znFile::exists(m_path, false, false) ? std::exchange(m_path, {}) : std::string(); }

private:
    std::string m_path;
};

} // namespace

void startLegacyUpdate(znProcessJob& job, const QString& inputFile, const QString& outputDir,
                       std::function<void(const std::string& updatedFile)> ended)
{
    std::string updatedFile;
    const std::string command =
        znPtxHelper::createStylarConvertCommand(inputFile.toStdString(), updatedFile, outputDir.toStdString());
    auto* update = new znProcessJob(QString::fromUtf8(command.c_str()), nullptr);
    // The connection owns the file, so that it goes with an update that was destroyed before its end: the process has
    // ended by then.
    const auto file = std::make_shared<UpdatedFile>(updatedFile);
    QObject::connect(update, &znAbstractJob::finished, [update, file, ended = std::move(ended)] {
        ended(file->take());
        update->deleteLater();
    });
    update->workFor(job);
    update->run();
}

} // namespace conversion
