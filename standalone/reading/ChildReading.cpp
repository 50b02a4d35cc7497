#include "standalone/reading/ChildReading.h"

#include "files/ReadReport.h"
#include "files/ReadRequest.h"
#include "files/ReadTask.h"
#include "files/scenefile/SceneFile.h"
#include "host/znUtils/znLog.h"
#include "protocol/ExitCode.h"
#include "protocol/FileNames.h"
#include "protocol/Options.h"
#include "standalone/loading/SceneFilePolicy.h"
#include "standalone/session/Session.h"
#include "standalone/znJobProcessing/ChildProcess.h"
#include "standalone/znKernel/ConverterCommand.h"
#include "standalone/znKernel/ConverterFailure.h"
#include "standalone/znUtils/InstalledProgram.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

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
    Q_DECLARE_TR_FUNCTIONS(ChildReading)
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

class ChildRead
{
public:
    ChildRead(Session& session, files::ReadTask& task, const QString& program)
        : m_session(session), m_state(session.state<ReadState>()), m_task(task), m_program(program),
          m_folder(session.temporaryFolder() + QStringLiteral("/reading-XXXXXX"))
    {
    }

    osg::NodePtr read()
    {
        failIfCancelled();
        if (!m_folder.isValid())
            m_task.fail(files::ErrorCode::CannotCreate, m_folder.errorString());
        const int code = run();
        failIfCancelled();
        const std::optional<files::ReadReport> told = report();
        if (told)
            m_task.adoptWarnings(told->warnings);
        if (told && told->error)
            m_task.fail(*told->error);
        if (code != protocol::ExitCode::Success || !told)
            m_task.fail(files::ErrorCode::ReaderFailed, reasonOf(code));
        return tree();
    }

private:
    void failIfCancelled() const
    {
        if (m_state.isCancelled)
            m_task.fail(files::ErrorCode::Cancelled, Texts::tr("the reading was cancelled"));
    }

    /// @return the exit code
    int run()
    {
        znJobs::ChildProcess child(nullptr);
        {
            Wait wait(m_state, child);
            child.launch(zn::kernel::joinCommand(command()));
            if (!child.waitForStarted(-1))
                m_task.fail(files::ErrorCode::ReaderFailed, Texts::tr("%1 cannot be started").arg(m_program));
            if (child.state() != QProcess::NotRunning)
                wait.untilQuit();
        }
        const std::optional<int> code = znJobs::readExitCode(child);
        child.endNow();
        if (!code)
            m_task.fail(files::ErrorCode::Cancelled, Texts::tr("the reading was cancelled"));
        return *code;
    }

    QStringList command() const
    {
        QStringList words = {m_program, QLatin1String(protocol::option::ReadMesh), m_task.path(), output()};
        words += files::wordsOf(m_task.options());
        words += kernel::sandboxWords(m_session.settings().convert.sandbox);
        // The reader refuses by its own budget; what the process takes beside that ends it.
        constexpr std::uint64_t processItself = 256;
        words.append(QLatin1String(protocol::setting::MemoryLimit) + QLatin1Char('=') +
                     QString::number((m_task.options().limits.maxMemory >> 20) + processItself));
        const QString options = m_session.settings().converter.options;
        for (const QString& word : options.split(QLatin1Char(' '), Qt::SkipEmptyParts))
            if (word.startsWith(QLatin1String("limit.")))
                words.append(word);
        return words;
    }

    std::optional<files::ReadReport> report() const
    {
        constexpr qint64 most = 16 << 20;
        QFile file(output() + QLatin1String(files::ReadReport::suffix));
        if (!file.open(QIODevice::ReadOnly) || file.size() > most)
            return std::nullopt;
        return files::ReadReport::fromBytes(file.readAll());
    }

    QString reasonOf(int code) const
    {
        const QString line = kernel::lastErrorOfLog(output() + QLatin1String(protocol::LogSuffix));
        return line.isEmpty() ? kernel::exitCodeMeaning(code) : line;
    }

    osg::NodePtr tree()
    {
        const bool isMapped = loading::isMapped(&m_session, output());
        const files::Result<osg::NodePtr> result = osg::scenefile::readSceneFile(
            output(), loading::sceneFileOptions(isMapped, m_task.options().limits.maxMemory));
        if (!result)
            m_task.fail(result.error().code, result.error().message, result.error().place);
        return result.value();
    }

    QString output() const
    {
        return m_folder.filePath(QStringLiteral("scene") + QLatin1String(protocol::SceneFileSuffix));
    }

    Session& m_session;
    ReadState& m_state;
    files::ReadTask& m_task;
    QString m_program;
    QTemporaryDir m_folder;
};

} // namespace

QString installedReader()
{
    const QString program = installedProgram(QStringLiteral("ptxconvert"));
    return QFileInfo(program).isAbsolute() ? program : QString();
}

osg::NodePtr readMesh(Session& session, files::ReadTask& task, const files::ReadFunction& inProcess,
                      const QString& program)
{
    if (session.settings().files.reading == FileSettings::Reading::Process)
        return inProcess(task);
    if (!program.isEmpty())
        return ChildRead(session, task, program).read();
    if (bool& hasTold = session.state<ReadState>().hasToldMissingProgram; !hasTold) {
        hasTold = true;
        znLog::error(Texts::tr("ptxconvert is not installed: mesh files are read by this process").toUtf8());
    }
    return inProcess(task);
}

void setCancelled(Session& session, bool isCancelled)
{
    ReadState& state = session.state<ReadState>();
    state.isCancelled = isCancelled;
    if (isCancelled)
        for (QEventLoop* wait : state.waits)
            wait->quit();
}

} // namespace zn::reading
