#include "host/znJobProcessing/znManagedJobQueue.h"
#include "tests/converter/ConverterTest.h"

#include <QSignalSpy>
#include <QTimer>

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cerrno>
#include <vector>

using namespace znCADFileTypes;

namespace
{

constexpr int jobCount = 1000;

/// One way in which a conversion goes, and what it must come to.
struct Course {
    const char* file;
    QByteArray script;
    JobState state;
    QString text;
    int runs;
    QStringList left; ///< what follows the output's name in the names of the files that stay
    bool aborted = false;
};

struct Outcome {
    int starts = 0;
    int ends = 0;
    JobState state = JobWaiting;
    QString text;
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

class ConversionSoak : public ConverterTest
{
protected:
    ConversionSoak()
    {
        set("processes.most", QStringLiteral("4"));
        write(QStringLiteral("updated script"), "progress 20 Merge\noutput scene");
        queue.setDeleteFinishedOrFailedJobs(true);
    }

    /// The converter of an old file makes its mark there, by which the update tool knows that it is the second.
    QByteArray legacyScript(int index) const
    {
        const QString mark = QStringLiteral("mark %1").arg(index);
        const QByteArray when = line("if-exists", mark).trimmed() + ' ';
        return when + line("output-from", QStringLiteral("updated script")) + when + "exit 0\n" +
               line("write", mark, "x") + "exit 4";
    }

    Course course(int index) const
    {
        const QString log = QStringLiteral(".log");
        const QString damaged = QStringLiteral("The file is damaged. [log: its log]");
        switch (index % 8) {
        case 0:
            return {"stp", "progress 30 Merge\nlog well\noutput scene", JobSucceeded, {}, 1, {QString()}};
        case 1:
            return {"stp", "progress 30 Merge\nlog ill\nexit 7", JobFailed, damaged, 1, {log}};
        case 2:
            return {"stp", "if-external-parts exit 5\noutput scene", JobSucceeded, {}, 2, {QString()}};
        case 3:
            return {"stp", "exit 5", JobFailed, QStringLiteral("The file has no external parts."), 2, {}};
        case 4:
            return {"styl", legacyScript(index), JobSucceeded, {}, 2, {QString()}};
        case 5:
            return {"stp", "crash 11", JobFailed, QStringLiteral("The converter crashed (signal 11)."), 1, {}};
        case 6:
            return {"stp", "output scene\nexit 21", JobFailed, {}, 1, {QString()}};
        default:
            return {"stp", "wait 600000", JobFailed, {}, 1, {}, true}; // aborted: nobody needs to be told why
        }
    }

    void addJob(int index)
    {
        const Course way = course(index);
        const QString file = QStringLiteral("part %1.%2").arg(index).arg(QString::fromUtf8(way.file));
        znPtxConverterJob* const job = makeJob(file, way.script).release();
        Outcome& outcome = outcomes[static_cast<std::size_t>(index)];
        QObject::connect(job, &znAbstractJob::starting, [&outcome] { ++outcome.starts; });
        QObject::connect(job, &znAbstractJob::finished, [this, job, index, &outcome](JobState state) {
            ++outcome.ends;
            outcome.state = state;
            outcome.text =
                job->getErrorText().replace(job->getOutputFile() + QStringLiteral(".log"), QStringLiteral("its log"));
            for (const QString& ending : course(index).left)
                expectedFiles << QFileInfo(job->getOutputFile()).fileName() + ending;
        });
        if (way.aborted)
            QObject::connect(job, &znAbstractJob::started,
                             [job, index] { QTimer::singleShot(index % 5, job, &znAbstractJob::abort); });
        queue.addJob(job, static_cast<znJobPriority>(index % 4));
    }

    std::vector<Outcome> outcomes = std::vector<Outcome>(jobCount);
    QStringList expectedFiles;
    znManagedJobQueue queue{nullptr};
};

TEST_F(ConversionSoak, AThousandConversionsEndAsTheyShouldAndLeaveNothingElse)
{
    const qsizetype descriptors = openDescriptors();
    for (int index = 0; index < jobCount; ++index)
        addJob(index);
    QSignalSpy empty(&queue, &znJobQueue::jobQueueEmpty);
    queue.startProcessing();
    while (empty.isEmpty())
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    drainEvents();
    for (int index = 0; index < jobCount; ++index) {
        const Course way = course(index);
        const Outcome& outcome = outcomes[static_cast<std::size_t>(index)];
        EXPECT_EQ(outcome.starts, way.runs) << index;
        EXPECT_EQ(outcome.ends, 1) << index;
        EXPECT_EQ(outcome.state, way.state) << index;
        EXPECT_EQ(outcome.text, way.text) << index;
    }
    EXPECT_FALSE(hasChildProcesses());
    EXPECT_LE(openDescriptors(), descriptors + 4);
    expectedFiles.sort();
    QStringList left = outputs();
    left.sort();
    EXPECT_EQ(left, expectedFiles);
    EXPECT_EQ(left.size(), jobCount / 8 * 5);
}

} // namespace
