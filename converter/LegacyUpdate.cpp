#include "converter/LegacyUpdate.h"

#include "host/znJobProcessing/znProcessJob.h"
#include "host/znKernel/znPtxHelper.h"
#include "host/znUtils/znFile.h"

namespace conversion
{

void startLegacyUpdate(znProcessJob& job, const QString& inputFile, const QString& outputDir,
                       std::function<void(const std::string& updatedFile)> ended)
{
    std::string updatedFile;
    const std::string command =
        znPtxHelper::createStylarConvertCommand(inputFile.toStdString(), updatedFile, outputDir.toStdString());
    auto* update = new znProcessJob(QString::fromUtf8(command.c_str()), nullptr);
    QObject::connect(update, &znAbstractJob::finished, [update, updatedFile, ended = std::move(ended)] {
        ended(znFile::exists(updatedFile, false, false) ? updatedFile : std::string());
        update->deleteLater();
    });
    update->workFor(job);
    update->run();
}

} // namespace conversion
