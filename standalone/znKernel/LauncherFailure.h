#pragma once

#include "standalone/znJobProcessing/LostProcess.h"

namespace zn::kernel
{

/// Tells a launcher that failed itself from a failure of what it launched, for command lines that begin with the
/// launcher of the settings: a loss with `znJobs::launcherExitCode`, or none.
///
/// Behind `ptxconvert` an exit code that it never ends with is the launcher's. Other converters may end with -1, which
/// arrives as the 255 of a launcher that could not reach its machine: there the launcher's own words on its output
/// decide, lines that begin with its name as programs' errors do. Nothing said, nothing judged.
znJobs::LossVerdict judgeLaunch(const znProcessJob& job, const QString& command, const QByteArray& output);

/// What the launcher said that failed last; empty if it said nothing.
QString wordsOfFailedLauncher();

} // namespace zn::kernel
