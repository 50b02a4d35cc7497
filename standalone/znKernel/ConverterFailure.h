#pragma once

#include <QString>

namespace zn::kernel
{

/// What this exit code of the converter means, in one sentence.
QString exitCodeMeaning(int exitCode);

/// The last line of the converter's log that tells an error, without the mark before it; empty when there is none.
QString lastErrorOfLog(const QString& logFile);

} // namespace zn::kernel
