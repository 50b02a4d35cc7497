#pragma once

#include <QByteArray>

class znProcessJob;

namespace znJobs
{

/// What the last process of `job` wrote to its standard output and standard error, the last 64 KiB of it: for the log.
QByteArray processOutput(const znProcessJob& job);

} // namespace znJobs
