#include "standalone/znKernel/LauncherFailure.h"

#include "host/znJobProcessing/znProcessJob.h"
#include "protocol/ExitCode.h"
#include "standalone/session/Session.h"

#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>

#include <algorithm>

namespace zn::kernel
{

namespace
{

using protocol::ExitCode;

struct LauncherWords {
    QString text;
};

bool isOurConverter(const QString& word)
{
    return QFileInfo(word).fileName() == QLatin1String("ptxconvert");
}

/// Whether `ptxconvert` ends like this, by itself or by a signal.
bool isCodeOfOurs(int exitCode)
{
    constexpr ExitCode codes[] = {ExitCode::Success,         ExitCode::WrongUse,    ExitCode::InputUnreadable,
                                  ExitCode::NoExternalParts, ExitCode::Unsupported, ExitCode::Damaged,
                                  ExitCode::OutputFailed,    ExitCode::MemoryLimit, ExitCode::TimeLimit,
                                  ExitCode::StallLimit,      ExitCode::Cancelled,   ExitCode::NothingToImport};
    return protocol::signalOf(exitCode) ||
           std::any_of(std::begin(codes), std::end(codes), [exitCode](ExitCode code) { return exitCode == code; });
}

/// What ssh says without its name.
const char* const sshWords = "kex_exchange_identification: |Host key verification failed|Connection closed by |"
                             "Connection reset by |Connection to \\S+ (?:closed by remote host|timed out)|"
                             "\\S+@\\S+: Permission denied|client_loop: ";

/// The last line of `output` in which the program tells an error of its own. srun also tells how a program ended that
/// it ran, which is none.
QString ownError(const QString& program, const QByteArray& output)
{
    static const QRegularExpression programsEnd(QStringLiteral("tasks? \\S+: Exited with exit code"));
    const QString name = QRegularExpression::escape(program) + QStringLiteral(": ");
    const bool isSsh = program == QLatin1String("ssh");
    const QRegularExpression own(
        QStringLiteral("^(?:%1)").arg(isSsh ? name + QLatin1Char('|') + QLatin1String(sshWords) : name));
    QString found;
    for (const QString& line : QString::fromUtf8(output).split(QLatin1Char('\n')))
        if (line.contains(own) && !line.contains(programsEnd))
            found = line.trimmed();
    return found;
}

QString lastLine(const QByteArray& output)
{
    const QStringList lines = QString::fromUtf8(output).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    return lines.isEmpty() ? QString() : lines.last().trimmed();
}

} // namespace

znJobs::LossVerdict judgeLaunch(const znProcessJob& job, const QString& command, const QByteArray& output)
{
    Session* const session = Session::current();
    const std::optional<int> exitCode = job.getExitCode();
    const QStringList words = QProcess::splitCommand(command);
    const QStringList launcher =
        session ? QProcess::splitCommand(session->settings().converter.launcher.value()) : words;
    if (!session || !exitCode || launcher.isEmpty() || words.value(0) != launcher.first())
        return {};
    QString error = ownError(QFileInfo(launcher.first()).fileName(), output);
    const bool isOurs = std::any_of(words.begin(), words.end(), isOurConverter);
    const bool failed =
        isOurs ? !isCodeOfOurs(*exitCode) : exitCode == ExitCode::NoExternalPartsEither && !error.isEmpty();
    if (!failed)
        return {};
    session->state<LauncherWords>().text = error.isEmpty() ? lastLine(output) : error;
    return {true, std::nullopt, znJobs::launcherExitCode};
}

QString wordsOfFailedLauncher()
{
    return Session::require().state<LauncherWords>().text;
}

} // namespace zn::kernel
