#pragma once

#include <QString>

namespace zn::kernel
{

/// What this exit code of the converter means, in one sentence.
QString exitCodeMeaning(int exitCode);

/// The last line of the converter's log that tells an error, without the mark before it; empty when there is none.
QString lastErrorOfLog(const QString& logFile);

/// Copies a log out of the temporary folder of the session, which goes, into one that stays. Gives the path of the
/// copy, of the log itself when it lies elsewhere, or nothing when it cannot be copied.
QString keptLog(const QString& logFile, const QString& temporaryFolder);

} // namespace zn::kernel
