#include "standalone/reading/ReaderProcess.h"

#include "host/znUtils/znLog.h"
#include "protocol/ExitCode.h"
#include "protocol/FileNames.h"
#include "protocol/Options.h"
#include "standalone/reading/CopiedProcess.h"
#include "standalone/session/Session.h"
#include "standalone/znJobProcessing/ChildProcess.h"
#include "standalone/znKernel/ConverterCommand.h"
#include "standalone/znKernel/ConverterFailure.h"
#include "standalone/znKernel/ConverterServer.h"
#include "standalone/znUtils/InstalledProgram.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFileInfo>
#include <QSocketNotifier>

#include <optional>
#include <vector>

namespace zn::reading
{

namespace
{

/// What a session remembers of reads.
struct ReadState {
    bool isCancelled = false;
    bool hasToldMissingProgram = false;
    std::vector<QEventLoop*> waits; ///< for children; one may begin while another waits
};

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(ReaderProcess)
};

/// Waits while the events go on, until somebody ends it or reads are cancelled.
class Wait
{
public:
    explicit Wait(ReadState& state) : m_state(state) { m_state.waits.push_back(&m_loop); }
    ~Wait() { m_state.waits.pop_back(); }
    Wait(const Wait&) = delete;
    Wait& operator=(const Wait&) = delete;

    QEventLoop& loop() { return m_loop; }
    void untilQuit() { m_loop.exec(); }

private:
    ReadState& m_state;
    QEventLoop m_loop;
};

} // namespace

QString installedReader()
{
    const QString program = installedProgram(QStringLiteral("ptxconvert"));
    return QFileInfo(program).isAbsolute() ? program : QString();
}

bool readsInChild(Session& session, const QString& program)
{
    if (session.settings().files.reading == FileSettings::Reading::Process)
        return false;
    if (bool& hasTold = session.state<ReadState>().hasToldMissingProgram; program.isEmpty() && !hasTold) {
        hasTold = true;
        znLog::error(Texts::tr("ptxconvert is not installed: files are read by this process").toUtf8());
    }
    return !program.isEmpty();
}

void setCancelled(Session& session, bool isCancelled)
{
    ReadState& state = session.state<ReadState>();
    state.isCancelled = isCancelled;
    if (isCancelled)
        for (QEventLoop* wait : state.waits)
            wait->quit();
}

std::uint64_t memoryOfNextRead(Session& session, std::uint64_t memory)
{
    return memory / (session.state<ReadState>().waits.size() + 1);
}

ReaderProcess::ReaderProcess(Session& session, const QString& program)
    : m_session(session), m_program(program),
      m_folder(std::make_unique<QTemporaryDir>(session.temporaryFolder() + QStringLiteral("/reading-XXXXXX")))
{
}

files::Expected<void> ReaderProcess::run(const Work& work)
{
    m_work = work;
    const ReadState& state = m_session.state<ReadState>();
    if (state.isCancelled)
        return cancelled();
    if (!m_folder->isValid())
        return error(files::ErrorCode::CannotCreate, m_folder->errorString());
    const files::Expected<int> code = exitCode();
    if (state.isCancelled)
        return cancelled();
    if (!code)
        return code.error();
    m_code = code.value();
    return {};
}

/// The work begins anew where the server of copies goes away.
files::Expected<int> ReaderProcess::exitCode() const
{
    const std::optional<files::Expected<int>> code = codeOfCopy();
    return code ? *code : codeOfProgram();
}

/// Nothing where there is no copy, or none any more.
std::optional<files::Expected<int>> ReaderProcess::codeOfCopy() const
{
    if (!m_session.settings().converter.server)
        return std::nullopt;
    const QString socket = m_session.state<kernel::ConverterServers>().socketForRead(m_program);
    const std::unique_ptr<CopiedProcess> copy = CopiedProcess::start(socket, words());
    if (!copy)
        return std::nullopt;
    bool hasEnded = false;
    {
        Wait wait(m_session.state<ReadState>());
        const QSocketNotifier end(copy->descriptor(), QSocketNotifier::Read);
        QObject::connect(&end, &QSocketNotifier::activated, &wait.loop(), [&] {
            hasEnded = true;
            wait.loop().quit();
        });
        wait.untilQuit();
    }
    // A cancel, or the application quits, which ends all loops.
    if (!hasEnded) {
        copy->kill();
        return cancelled();
    }
    if (const std::optional<int> code = copy->exitCode())
        return *code;
    return std::nullopt;
}

files::Expected<int> ReaderProcess::codeOfProgram() const
{
    znJobs::ChildProcess child(nullptr);
    {
        Wait wait(m_session.state<ReadState>());
        QObject::connect(&child, &QProcess::stateChanged, &wait.loop(), [&wait](QProcess::ProcessState now) {
            if (now == QProcess::NotRunning)
                wait.loop().quit();
        });
        child.launch(kernel::joinCommand(QStringList(m_program) + words()));
        if (!child.waitForStarted(-1))
            return error(files::ErrorCode::ReaderFailed, Texts::tr("%1 cannot be started").arg(m_program));
        if (child.state() != QProcess::NotRunning)
            wait.untilQuit();
    }
    const std::optional<int> code = znJobs::readExitCode(child);
    child.endNow();
    if (!code)
        return cancelled();
    return *code;
}

/// What the program is given.
QStringList ReaderProcess::words() const
{
    QStringList words = {QLatin1String(m_work.option), m_work.input, output()};
    words += m_work.words;
    words += kernel::sandboxWords(m_session.settings().convert.sandbox);
    // The reader refuses by its own budget; what the process takes beside that ends it.
    constexpr std::uint64_t processItself = 256;
    words.append(QLatin1String(protocol::setting::MemoryLimit) + QLatin1Char('=') +
                 QString::number((m_work.memory >> 20) + processItself));
    const QString options = m_session.settings().converter.options;
    for (const QString& word : options.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        if (word.startsWith(QLatin1String("limit.")))
            words.append(word);
    return words;
}

bool ReaderProcess::hasSucceeded() const
{
    return m_code == protocol::ExitCode::Success;
}

files::Error ReaderProcess::failure() const
{
    const QString line = kernel::lastErrorOfLog(output() + QLatin1String(protocol::LogSuffix));
    QString reason = line.isEmpty() ? kernel::exitCodeMeaning(m_code) : line;
    if (hasSucceeded())
        reason = Texts::tr("what %1 made of it is not whole").arg(m_program);
    return error(files::ErrorCode::ReaderFailed, reason);
}

files::Error ReaderProcess::cancelled() const
{
    return error(files::ErrorCode::Cancelled, Texts::tr("the reading was cancelled"));
}

files::Error ReaderProcess::error(files::ErrorCode code, const QString& message) const
{
    return {{message, m_work.input, {}}, code};
}

} // namespace zn::reading
