#include "tests/loader/LoaderTest.h"

#include <unistd.h>

using namespace znCADFileTypes;

namespace
{

constexpr int partCount = 1000;

/// What the process has open: descriptors in all, and notification instances among them.
struct OpenFiles {
    int descriptors = 0;
    int watchers = 0;

    static OpenFiles now()
    {
        OpenFiles open;
        const QDir folder(QStringLiteral("/proc/self/fd"));
        for (const QString& name : folder.entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System)) {
            ++open.descriptors;
            char target[64] = {};
            const QByteArray link = folder.filePath(name).toUtf8();
            const ssize_t length = ::readlink(link.constData(), target, sizeof target - 1);
            open.watchers += length > 0 && QByteArray(target) == "anon_inode:inotify" ? 1 : 0;
        }
        return open;
    }
};

class LoaderSoak : public LoaderTest
{
};

TEST_F(LoaderSoak, AThousandWaitingConversionsHoldNoDescriptorsAndLeaveNothing)
{
    for (int i = 0; i < partCount; ++i) {
        const QString file =
            i == 0 ? writePart(QStringLiteral("0.stp"), {"head"})
                   : write(QStringLiteral("%1.stp").arg(i), line("output-from", QStringLiteral("made/0.stp")));
        refer("part", file);
        refer("part again", file);
    }
    const auto job = makeLoader();
    const OpenFiles before = OpenFiles::now();
    OpenFiles most;
    int made = 0;
    int alive = 0;
    int mostEnded = 0;
    QObject::connect(job.get(), &znPtxLoaderJob::childPtxConverterJobCreated, [&](znPtxConverterJob* child) {
        ++made;
        ++alive;
        QObject::connect(child, &QObject::destroyed, [&] { --alive; });
        QObject::connect(child, &znAbstractJob::started, [&] {
            const OpenFiles open = OpenFiles::now();
            most = {std::max(most.descriptors, open.descriptors), std::max(most.watchers, open.watchers)};
        });
    });
    int ended = 0;
    QObject::connect(job.get(), &znPtxLoaderJob::childPtxImportFinished,
                     [&](const QString&) { mostEnded = std::max(mostEnded, alive - (made - ++ended)); });
    job->run();
    EXPECT_EQ(job->getState(), JobSucceeded);
    EXPECT_EQ(made, partCount);
    EXPECT_EQ(alive, 0);
    EXPECT_LE(mostEnded, 8) << "ended children that were still there";
    EXPECT_GE(most.watchers, 1);
    EXPECT_LE(most.watchers, before.watchers + 4) << "two running conversions, and two that have just ended";
    EXPECT_LE(most.descriptors, before.descriptors + 40);
    EXPECT_LE(OpenFiles::now().descriptors, before.descriptors + 4);
    for (unsigned i = 0; i < 2 * partCount; ++i)
        ASSERT_EQ(namesBelow(*job, i).size(), 1u) << i;
}

} // namespace
