#include "standalone/reading/ChildReading.h"

#include "host/znKernel/znFileIO.h"
#include "tests/standalone/reading/ReaderChildren.h"
#include "tests/standalone/reading/ReadingTest.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTimer>

#include <iostream>

namespace
{

using files::ErrorCode;
using readerchildren::hasChildren;
using testing::HasSubstr;

class ChildReadingEndTest : public ReadingTest
{
protected:
    /// Reads a triangle by a script in place of the program.
    files::ReadResult readBy(const QByteArray& script)
    {
        return readByProgram(readerchildren::writeReader(path(QStringLiteral("reader")), script));
    }

    files::ReadResult readByProgram(const QString& program)
    {
        files::SceneReaders readers;
        readers.add({QStringLiteral("test"), {QStringLiteral("obj")}, [this, program](files::ReadTask& task) {
                         return zn::reading::readMesh(
                             m_session, task,
                             [this](files::ReadTask&) {
                                 ++m_readsHere;
                                 return osg::makeNodeFor(osg::Group::create());
                             },
                             program);
                     }});
        files::ReadResult result = readers.read(writeTriangle(QStringLiteral("t.obj")), {});
        if (result)
            m_roots.emplace_back(result.value());
        return result;
    }

    std::vector<osg::RefPtr<osg::NodePtr>> m_roots;
    int m_readsHere = 0;

    void TearDown() override
    {
        m_roots.clear();
        EXPECT_FALSE(hasChildren());
        ReadingTest::TearDown();
    }
};

TEST_F(ChildReadingEndTest, ACrashCostsTheFileAndSaysSo)
{
    const files::ReadResult result = readBy("kill -SEGV $$");
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().code, ErrorCode::ReaderFailed);
    EXPECT_THAT(result.error().toString().toStdString(), HasSubstr("signal 11"));
    EXPECT_EQ(result.error().file, path(QStringLiteral("t.obj")));
}

TEST_F(ChildReadingEndTest, TheLastWordsOfTheLogAreTheReason)
{
    const files::ReadResult result = readBy("echo 'Error: it was too hot' > \"$3.log\"; exit 12");
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().message, QStringLiteral("it was too hot"));
}

TEST_F(ChildReadingEndTest, AnEndWithoutAReportOrATreeIsAFailure)
{
    const files::ReadResult silent = readBy("exit 0");
    ASSERT_FALSE(silent);
    EXPECT_EQ(silent.error().code, ErrorCode::ReaderFailed);
    const files::ReadResult torn = readBy("echo nonsense > \"$3\"; echo nonsense > \"$3.notes\"; exit 0");
    ASSERT_FALSE(torn);
    EXPECT_EQ(torn.error().code, ErrorCode::ReaderFailed);
}

TEST_F(ChildReadingEndTest, WithoutTheProgramThisProcessReadsAndTheLogTellsOnce)
{
    EXPECT_TRUE(readByProgram({}));
    EXPECT_TRUE(readByProgram({}));
    EXPECT_EQ(m_readsHere, 2);
    EXPECT_THAT(m_log, testing::ElementsAre("ptxconvert is not installed: files are read by this process"));
}

TEST_F(ChildReadingEndTest, AProgramThatCannotBeStartedIsNamed)
{
    const files::ReadResult result = readByProgram(path(QStringLiteral("no program")));
    ASSERT_FALSE(result);
    EXPECT_THAT(result.error().toString().toStdString(), HasSubstr("no program cannot be started"));
    EXPECT_EQ(m_readsHere, 0);
}

TEST_F(ChildReadingEndTest, TheSettingReadsInThisProcess)
{
    m_session.settings().files.reading.set(zn::FileSettings::Reading::Process);
    EXPECT_TRUE(readBy("kill -SEGV $$"));
    EXPECT_EQ(m_readsHere, 1);
    EXPECT_TRUE(m_log.empty());
}

TEST_F(ChildReadingEndTest, LimitsOfTheConverterEndARead)
{
    m_session.settings().set(QStringLiteral("converter.options"),
                             QStringLiteral("limit.memory=8 limit.memory-per-mb=0 threads=1"));
    const files::ReadResult result = read(writeLargeObj(200'000));
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().code, ErrorCode::ReaderFailed);
    EXPECT_THAT(result.error().message.toStdString(), HasSubstr("more memory than its limit of 8 MB"));
}

TEST_F(ChildReadingEndTest, ACancelEndsTheReadOfALargeFileAtOnce)
{
    const QString file = writeLargeObj(1'000'000);
    QElapsedTimer sinceCancel;
    bool wasReading = false;
    QTimer::singleShot(300, [&] {
        wasReading = !readFolders().isEmpty() && hasChildren();
        sinceCancel.start();
        zn::reading::setCancelled(m_session, true);
    });
    const osg::NodePtr parent = addGroup(m_session.sceneRoot(), "parent");
    EXPECT_EQ(znFileIO::load({file, writeTriangle(QStringLiteral("next.obj"))}, parent, false, false, false), 0);
    EXPECT_TRUE(wasReading);
    EXPECT_LT(sinceCancel.elapsed(), 500);
    EXPECT_FALSE(hasChildren());
    EXPECT_EQ(readFolders(), QStringList());
    EXPECT_EQ(m_log,
              (std::vector<std::string>{(file + QStringLiteral(": the reading was cancelled")).toStdString(),
                                        path(QStringLiteral("next.obj: the reading was cancelled")).toStdString()}));
    zn::reading::setCancelled(m_session, false);
    EXPECT_NE(znFileIO::load({path(QStringLiteral("next.obj"))}, parent, false, false, false), 0);
}

TEST_F(ChildReadingEndTest, ACancelEndsWhatTheReaderHasStarted)
{
    const QString pid = path(QStringLiteral("pid"));
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        if (QFile(pid).size() > 0)
            zn::reading::setCancelled(m_session, true);
    });
    look.start(10);
    const files::ReadResult result = readBy("sleep 600 & echo $! > '" + QFile::encodeName(pid) + "'; wait");
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().code, ErrorCode::Cancelled);
    QFile file(pid);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString status = QStringLiteral("/proc/%1/cmdline").arg(QString::fromLatin1(file.readAll().trimmed()));
    QElapsedTimer clock;
    clock.start();
    const auto lives = [&status] {
        QFile words(status);
        return words.open(QIODevice::ReadOnly) && words.readAll().contains("sleep");
    };
    while (lives() && clock.elapsed() < 5000) {
    }
    EXPECT_FALSE(lives());
}

TEST_F(ChildReadingEndTest, ASmallFileCostsLittleMore)
{
    const QString file = writeTriangle(QStringLiteral("small.obj"));
    const auto least = [&](zn::FileSettings::Reading reading) {
        m_session.settings().files.reading.set(reading);
        return readerchildren::leastTime([&] {
            const files::ReadResult result = read(file);
            EXPECT_TRUE(result);
            m_roots.emplace_back(result ? result.value() : osg::NodePtr());
        });
    };
    m_session.settings().converter.server.set(false); // the price of a start
    const double here = least(zn::FileSettings::Reading::Process);
    const double there = least(zn::FileSettings::Reading::Child);
    std::cout << here << " ms of processor time here, " << there << " ms in a child\n";
#if !defined(__SANITIZE_ADDRESS__)
    EXPECT_LT(there - here, 60);
#endif
}

} // namespace
