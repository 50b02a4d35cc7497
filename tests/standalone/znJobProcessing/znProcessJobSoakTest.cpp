#include "host/znJobProcessing/znManagedJobQueue.h"
#include "standalone/znJobProcessing/ProcessLimit.h"
#include "tests/standalone/znJobProcessing/ProcessTestJobs.h"

#include <QSignalSpy>
#include <QTimer>

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cerrno>
#include <memory>
#include <random>
#include <vector>

using namespace znCADFileTypes;

namespace
{

constexpr int jobCount = 1000;

/// What is known of one job when all is over.
struct Outcome {
    JobState expected = JobFailed;
    bool destroyed = false; ///< by the test, while it runs: no finished()
    int ends = 0;
    JobState state = JobWaiting;
};

qsizetype openDescriptors()
{
    return QDir(QStringLiteral("/proc/self/fd"))
        .entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System)
        .size();
}

bool hasChildProcesses()
{
    siginfo_t info;
    return ::waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) != -1 || errno != ECHILD;
}

} // namespace

/// Makes jobs whose endings are drawn by lot, the same in every run of the test.
class ProcessJobSoak : public ::testing::Test
{
protected:
    ProcessJobSoak()
    {
        znJobs::setProcessLimitProvider([] { return 6U; });
        kept.startProcessing();
        kept.addJob(new ScriptedJob(QStringLiteral("exit 0"), &jobs)); // opens what stays open
        waitUntil([&] { return !keptEmpty.isEmpty(); });
        keptEmpty.clear();
        kept.stopProcessing();
        deleting.setDeleteFinishedOrFailedJobs(true);
    }
    ~ProcessJobSoak() override { znJobs::setProcessLimitProvider({}); }

    unsigned draw(unsigned bound) { return static_cast<unsigned>(lots() % bound); }

    ScriptedJob* makeJob(int index)
    {
        const unsigned lot = draw(100);
        if (lot < 25) {
            return plain(index, QStringLiteral("exit 0"), JobSucceeded);
        }
        if (lot < 40) {
            return plain(index, QStringLiteral("exit %1").arg(1 + draw(255)), JobFailed);
        }
        if (lot < 50) {
            const int numbers[] = {SIGILL, SIGTRAP, SIGABRT, SIGKILL, SIGSEGV, SIGTERM};
            return plain(index, QStringLiteral("crash %1").arg(numbers[draw(6)]), JobFailed);
        }
        if (lot < 56) {
            return plain(index, QStringLiteral("flood-stderr 300000"), JobSucceeded);
        }
        if (lot < 62) {
            return leavingGrandchild(index);
        }
        return lot < 76 ? stopped(index, lot) : odd(index, lot);
    }

    ScriptedJob* plain(int index, const QString& script, JobState expected)
    {
        outcomes[index].expected = expected;
        return new ScriptedJob(script, &jobs);
    }

    ScriptedJob* leavingGrandchild(int index)
    {
        const QString file = QStringLiteral("grandchild %1").arg(index);
        pidFiles << file;
        return plain(index, folder.command(QStringLiteral("grandchild 600000"), file), JobSucceeded);
    }

    /// Aborted a moment after its start.
    ScriptedJob* stopped(int index, unsigned lot)
    {
        const QString manner = lot < 64   ? QStringLiteral("ignore-stop;")
                               : lot < 70 ? QStringLiteral("exit-on-stop 21;")
                                          : QString();
        ScriptedJob* const job = plain(index, manner + QStringLiteral("wait 600000"), JobFailed);
        const int delay = static_cast<int>(draw(8));
        QObject::connect(job, &znAbstractJob::started,
                         [job, delay] { QTimer::singleShot(delay, job, &znProcessJob::abort); });
        return job;
    }

    ScriptedJob* odd(int index, unsigned lot)
    {
        ScriptedJob* const job = plain(index, QStringLiteral("wait 600000"), JobFailed);
        if (lot < 82) {
            job->setCommand(QStringLiteral("/no/such/program"));
        } else if (lot < 88) {
            abortedUnstarted.emplace_back(job);
        } else if (lot < 94) {
            outcomes[index].destroyed = true;
            QObject::connect(job, &znAbstractJob::started,
                             [job] { QTimer::singleShot(1, job, [job] { delete job; }); });
        } else {
            outcomes[index].expected = JobSucceeded;
            job->setScript(QStringLiteral("exit 5"));
            job->onFinish = [](ScriptedJob& self) {
                self.setScript(QStringLiteral("exit 0"));
                self.getExitCode() == 5 ? self.run() : self.endRun();
            };
        }
        return job;
    }

    void fillQueues()
    {
        for (int index = 0; index < jobCount; ++index) {
            ScriptedJob* const job = makeJob(index);
            QObject::connect(job, &znAbstractJob::finished, [this, index](JobState state) {
                ++outcomes[index].ends;
                outcomes[index].state = state;
            });
            (index % 2 == 0 ? kept : deleting).addJob(job, static_cast<znJobPriority>(draw(4)));
        }
        for (const QPointer<ScriptedJob>& job : abortedUnstarted) {
            job->abort();
        }
    }

    void runQueues()
    {
        kept.startProcessing();
        deleting.startProcessing();
        while (keptEmpty.isEmpty() || deletingEmpty.isEmpty()) {
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        }
        drainEvents();
    }

    std::mt19937 lots{20240229};
    std::vector<Outcome> outcomes = std::vector<Outcome>(jobCount);
    std::vector<QPointer<ScriptedJob>> abortedUnstarted;
    QStringList pidFiles;
    TestFolder folder;
    QObject jobs;
    znManagedJobQueue kept{nullptr};
    znManagedJobQueue deleting{nullptr};
    QSignalSpy keptEmpty{&kept, &znJobQueue::jobQueueEmpty};
    QSignalSpy deletingEmpty{&deleting, &znJobQueue::jobQueueEmpty};
};

TEST_F(ProcessJobSoak, AThousandRandomEndingsLeaveNothingBehind)
{
    const qsizetype descriptors = openDescriptors();
    fillQueues();
    runQueues();
    for (int index = 0; index < jobCount; ++index) {
        const Outcome& outcome = outcomes[index];
        EXPECT_EQ(outcome.ends, outcome.destroyed ? 0 : 1) << index;
        EXPECT_EQ(outcome.state, outcome.destroyed ? JobWaiting : outcome.expected) << index;
    }
    EXPECT_EQ(keptEmpty.size(), 1);
    EXPECT_EQ(deletingEmpty.size(), 1);
    EXPECT_EQ(openDescriptors(), descriptors);
    EXPECT_FALSE(hasChildProcesses());
    pidFiles.sort();
    EXPECT_EQ(folder.files(), pidFiles);
    for (const QString& file : pidFiles) {
        EXPECT_TRUE(waitUntil([&] { return hasEnded(folder.read(file).toLongLong()); })) << file.toStdString();
    }
    EXPECT_GT(pidFiles.size(), 20);
    EXPECT_GT(abortedUnstarted.size(), 20U);
}
