#pragma once

#include <QString>

namespace zn::kernel
{

/// How many logs are kept from one session to the next; beyond that the oldest go.
inline constexpr int mostKeptLogs = 1000;

/// How many days a log is kept.
inline constexpr int keptLogDays = 30;

/// The user's own folder of logs that outlive their session: `znimport/logs` in $XDG_STATE_HOME, which is
/// `~/.local/state` unless it says otherwise.
QString keptLogsFolder();

/// Whether `file` lies in the temporary folder of the living session, and goes with it.
bool goesWithSession(const QString& file);

/// Copies the log of a failed conversion into `keptLogsFolder()`, which nobody but the user may enter. The first of a
/// session, and every hundredth, removes what is too old or too much there. Gives the path of the copy; nothing if
/// there is no such log or it cannot be copied.
QString keepLog(const QString& logFile);

} // namespace zn::kernel
