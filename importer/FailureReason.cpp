#include "importer/FailureReason.h"

#include "converter/znPtxConverterJob.h"
#include "protocol/FileNames.h"
#include "standalone/znKernel/KeptLogs.h"

#include <QCoreApplication>

namespace importer
{

namespace
{

/// Where the texts of this file stand.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(importer::FailureReason)
};

} // namespace

QString failureReason(const znPtxConverterJob& conversion)
{
    if (conversion.getState() == znCADFileTypes::JobSucceeded)
        return Texts::tr("the converter ended well but wrote no scene file");
    const QString text = conversion.getErrorText();
    if (text.isEmpty())
        return Texts::tr("the conversion failed");
    const QString log = conversion.getOutputFile() + QLatin1String(protocol::LogSuffix);
    const QString kept = zn::kernel::goesWithSession(log) ? zn::kernel::keepLog(log) : QString();
    return kept.isEmpty() ? text : text + QStringLiteral(" [log: %1]").arg(kept);
}

} // namespace importer
