#include "bench/assembly/AssemblyRun.h"

#include "host/znJobProcessing/znJobQueue.h"
#include "importer/SceneText.h"
#include "loader/znPtxLoaderJob.h"
#include "standalone/startup/StandaloneSession.h"

#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileInfo>

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>

namespace
{

/// Watches what the process has open and how late ends of conversions are noticed.
class Watch
{
public:
    Watch(AssemblyRun& run, znPtxLoaderJob& job) : m_run(run)
    {
        QObject::connect(&job, &znPtxLoaderJob::childPtxConverterJobCreated, &m_context,
                         [this](znPtxConverterJob* child) { follow(child); });
    }

    double lateSeconds() const { return m_late; }

private:
    void follow(znPtxConverterJob* child)
    {
        ++m_run.conversions;
        QObject::connect(child, &znAbstractJob::started, &m_context, [this] { countOpen(); });
        QObject::connect(child, &znAbstractJob::finished, &m_context, [this, child] {
            // The output is the last thing that the converter writes.
            const QDateTime written = QFileInfo(child->getOutputFile()).lastModified();
            m_late += std::max<double>(0, double(written.msecsTo(QDateTime::currentDateTime()))) / 1000;
        });
    }

    void countOpen()
    {
        int descriptors = 0;
        int watchers = 0;
        const QDir folder(QStringLiteral("/proc/self/fd"));
        for (const QString& name : folder.entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System)) {
            char target[64] = {};
            const ssize_t length = ::readlink(folder.filePath(name).toUtf8().constData(), target, sizeof target - 1);
            watchers += length > 0 && QByteArray(target) == "anon_inode:inotify" ? 1 : 0;
            ++descriptors;
        }
        m_run.descriptors = std::max(m_run.descriptors, descriptors);
        m_run.watchers = std::max(m_run.watchers, watchers);
    }

    AssemblyRun& m_run;
    double m_late = 0;
    QObject m_context;
};

double peakMebibytes()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_maxrss) / 1024;
}

double residentMebibytes()
{
    std::ifstream file("/proc/self/statm");
    double total = 0;
    double resident = 0;
    file >> total >> resident;
    return resident * double(::sysconf(_SC_PAGESIZE)) / (1 << 20);
}

QString convert(const QString& file)
{
    znPtxConverterJob converter(file, QString(), nullptr);
    QEventLoop loop;
    QObject::connect(&converter, &znAbstractJob::finished, &loop, &QEventLoop::quit);
    converter.run();
    loop.exec();
    return converter.getState() == znCADFileTypes::JobSucceeded ? converter.getOutputFile() : QString();
}

} // namespace

AssemblyRun runAssembly(const QString& file, int processes)
{
    AssemblyRun run;
    zn::StandaloneSession session;
    session.settings().set(QStringLiteral("converter.program"), QString::fromUtf8(ZN_PTXCONVERT));
    session.settings().set(QStringLiteral("processes.most"), QString::number(processes));
    run.startMebibytes = residentMebibytes();
    QElapsedTimer clock;
    clock.start();
    {
        znPtxLoaderJob job(convert(file), file);
        const Watch watch(run, job);
        job.run();
        run.seconds = double(clock.nsecsElapsed()) / 1e9;
        run.waitShare = watch.lateSeconds() / (run.seconds * processes);
        run.succeeded = job.getState() == znCADFileTypes::JobSucceeded;
        const zn::SceneCounts counts = zn::countScene(job.getLoadedNode());
        run.geometries = counts.geometries;
        run.placedGeometries = counts.placedGeometries;
    }
    run.peakMebibytes = peakMebibytes();
    return run;
}
