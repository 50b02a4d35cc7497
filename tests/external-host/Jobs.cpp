// Jobs and their runs.
#include "JobRecord.h"

#include "host/znJobProcessing/znAbstractJob.h"
#include "host/znJobProcessing/znAbstractTimerJob.h"
#include "host/znJobProcessing/znOsbLoaderJob.h"
#include "host/znJobProcessing/znParallelJobManager.h"
#include "host/znJobProcessing/znProcessJob.h"
#include "host/znKernel/znFileIO.h"
#include "host/znKernel/znScenegraph.h"

#include <QTimer>
#include <QVariant>

#include <stdexcept>

znAbstractJob::znAbstractJob(QObject* parent) : QObject(parent), m_record(std::make_shared<znJobs::JobRecord>()) {}
znAbstractJob::~znAbstractJob() = default;

void znAbstractJob::abort() {}

bool znAbstractJob::isMechanorJob() const
{
    return false;
}

void znAbstractJob::finish()
{
    Q_EMIT finished(m_state);
}

znAbstractProcessingJob::znAbstractProcessingJob(QObject* parent) : znAbstractJob(parent) {}
znAbstractProcessingJob::~znAbstractProcessingJob() = default;

void znAbstractProcessingJob::createBaseConnections()
{
    connect(this, &znAbstractProcessingJob::processingFinished, this, [this] { finish(); });
}

void znAbstractProcessingJob::run()
{
    if (beginRun())
        work();
}

bool znAbstractProcessingJob::beginRun()
{
    if (!m_connectionsMade)
        createBaseConnections();
    m_connectionsMade = true;
    Q_EMIT starting();
    return true;
}

void znAbstractProcessingJob::work()
{
    try {
        process();
    } catch (const std::exception& error) {
        endWithException(QString::fromUtf8(error.what()));
    }
}

void znAbstractProcessingJob::endWithException(const QString& text)
{
    m_errorText = text;
    m_state = znCADFileTypes::JobFailed;
    finish();
}

znAbstractTimerJob::znAbstractTimerJob(int interval, QObject* parent) : znAbstractProcessingJob(parent)
{
    setProperty("interval", interval);
}
znAbstractTimerJob::~znAbstractTimerJob() = default;

void znAbstractTimerJob::run()
{
    if (beginRun())
        QTimer::singleShot(property("interval").toInt() / 1000, this, [this] { work(); });
}

unsigned int znParallelJobManager::getMaxNumProcesses() const
{
    return 1;
}

znParallelJobManager* znParallelJobManager::the()
{
    static znParallelJobManager manager;
    return &manager;
}

namespace znJobs
{
class ProcessRun
{
public:
    std::optional<int> exitCode;
};
} // namespace znJobs

znProcessJob::znProcessJob(QObject* parent) : znProcessJob(QString(), parent) {}
znProcessJob::znProcessJob(const QString& command, QObject* parent)
    : znAbstractJob(parent), m_process(new QProcess(this)), m_command(command),
      m_run(std::make_unique<znJobs::ProcessRun>())
{
}
znProcessJob::~znProcessJob()
{
    m_process->disconnect(this);
}

void znProcessJob::createBaseConnections()
{
    connect(m_process, &QProcess::started, this, &znAbstractJob::started);
    connect(m_process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            [this](int code, QProcess::ExitStatus status) {
                m_run->exitCode = code;
                const bool isDone = code == 0 && status == QProcess::NormalExit;
                m_state = isDone ? znCADFileTypes::JobSucceeded : znCADFileTypes::JobFailed;
                finish();
            });
    connect(m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart)
            return;
        m_state = znCADFileTypes::JobFailed;
        finish();
    });
}

void znProcessJob::run()
{
    if (!m_connectionsMade)
        createBaseConnections();
    m_connectionsMade = true;
    Q_EMIT starting();
    QStringList words = QProcess::splitCommand(m_command);
    m_run->exitCode.reset();
    m_state = znCADFileTypes::JobRunning;
    const QString program = words.isEmpty() ? QString() : words.takeFirst();
    m_process->start(program, words);
}

void znProcessJob::abort()
{
    m_process->kill();
}

/// This host starts no more than one job at a time, and ends none for another.
void znProcessJob::workFor(znProcessJob&) {}

void znProcessJob::finish()
{
    if (m_state == znCADFileTypes::JobFailed)
        m_errorText = getErrorDescription(getExitCode().value_or(-1));
    znAbstractJob::finish();
}

std::optional<int> znProcessJob::getExitCode() const
{
    return m_run->exitCode;
}

QString znProcessJob::getErrorDescription(int exitCode) const
{
    return QStringLiteral("the process ended with %1").arg(exitCode);
}

znOsbLoaderJob::znOsbLoaderJob(const QString& file) : znAbstractProcessingJob(nullptr), m_file(file) {}
znOsbLoaderJob::~znOsbLoaderJob() = default;

void znOsbLoaderJob::process()
{
    znFileIO::load({m_file}, osg::NodePtr(), znScenegraph::isEmpty(), false, false);
    if (!znFileIO::getLoadedGeometriesList().empty())
        m_loadedNode = znFileIO::getLoadedGeometriesList().front().getNode();
    m_held = m_loadedNode;
    m_state = m_loadedNode ? znCADFileTypes::JobSucceeded : znCADFileTypes::JobFailed;
    if (!m_holdFinish)
        Q_EMIT processingFinished();
}
