#include "standalone/reading/ReaderProcess.h"

#include "host/znUtils/znLog.h"
#include "protocol/ExitCode.h"
#include "protocol/FileNames.h"
#include "protocol/Options.h"
#include "standalone/session/Session.h"
#include "standalone/znJobProcessing/ChildProcess.h"
#include "standalone/znKernel/ConverterCommand.h"
#include "standalone/znKernel/ConverterFailure.h"
#include "standalone/znUtils/InstalledProgram.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFileInfo>

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

/// Waits for a child while the events go on.
class Wait
{
public:
    Wait(ReadState& state, znJobs::ChildProcess& child) : m_state(state)
    {
        QObject::connect(&child, &QProcess::stateChanged, &m_loop, [this](QProcess::ProcessState now) {
            if (now == QProcess::NotRunning)
                m_loop.quit();
        });
        m_state.waits.push_back(&m_loop);
    }
    ~Wait() { m_state.waits.pop_back(); }
    Wait(const Wait&) = delete;
    Wait& operator=(const Wait&) = delete;

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

ReaderProcess::ReaderProcess(Session& session, const QString& program)
    : m_session(session), m_program(program),
      m_folder(std::make_unique<QTemporaryDir>(session.temporaryFolder() + QStringLiteral("/reading-XXXXXX")))
{
}

files::Expected<void> ReaderProcess::run(const Work& work)
{
    m_work = work;
    const ReadState& state = m_session.state<ReadState>();
    const files::Error cancelled = error(files::ErrorCode::Cancelled, Texts::tr("the reading was cancelled"));
    if (state.isCancelled)
        return cancelled;
    if (!m_folder->isValid())
        return error(files::ErrorCode::CannotCreate, m_folder->errorString());
    const files::Expected<int> code = exitCode();
    if (state.isCancelled)
        return cancelled;
    if (!code)
        return code.error();
    m_code = code.value();
    return {};
}

files::Expected<int> ReaderProcess::exitCode() const
{
    znJobs::ChildProcess child(nullptr);
    {
        Wait wait(m_session.state<ReadState>(), child);
        child.launch(kernel::joinCommand(command()));
        if (!child.waitForStarted(-1))
            return error(files::ErrorCode::ReaderFailed, Texts::tr("%1 cannot be started").arg(m_program));
        if (child.state() != QProcess::NotRunning)
            wait.untilQuit();
    }
    const std::optional<int> code = znJobs::readExitCode(child);
    child.endNow();
    if (!code)
        return error(files::ErrorCode::Cancelled, Texts::tr("the reading was cancelled"));
    return *code;
}

QStringList ReaderProcess::command() const
{
    QStringList words = {m_program, QLatin1String(m_work.option), m_work.input, output()};
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

files::Error ReaderProcess::error(files::ErrorCode code, const QString& message) const
{
    return {{message, m_work.input, {}}, code};
}

} // namespace zn::reading
