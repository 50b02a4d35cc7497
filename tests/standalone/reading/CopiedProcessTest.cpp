// From the fourth read of a session on, copies of one process that has loaded the readers do the work.

#include "standalone/znKernel/ConverterServer.h"
#include "tests/standalone/reading/ReadingTest.h"
#include "tests/standalone/reading/SameTree.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <QTimer>

#include <csignal>

namespace
{

using files::ErrorCode;
using zn::kernel::ConverterServer;

/// What /proc tells of a process; empty where it is gone.
QByteArray told(int process, const char* of)
{
    QFile file(QStringLiteral("/proc/%1/%2").arg(process).arg(QLatin1String(of)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The processes that `parent` has started and not collected.
std::vector<int> childrenOf(int parent)
{
    std::vector<int> children;
    for (const QString& name : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QByteArray stat = told(name.toInt(), "stat");
        const QList<QByteArray> words = stat.mid(stat.lastIndexOf(')') + 1).simplified().split(' ');
        if (words.size() > 1 && words[1].toInt() == parent && words[0] != "Z")
            children.push_back(name.toInt());
    }
    return children;
}

class CopiedProcessTest : public ReadingTest
{
protected:
    /// The server of this session, once it takes requests; 0 without one.
    int server() const
    {
        QElapsedTimer timer;
        timer.start();
        while (!QFile::exists(m_socket) && timer.elapsed() < 30000)
            QThread::msleep(5);
        for (const int child : childrenOf(static_cast<int>(::getpid())))
            if (told(child, "cmdline").split('\0').contains("--serve-reads"))
                return child;
        return 0;
    }

    /// So many reads that the next one is done by a copy.
    void makeTheFirst()
    {
        const QString file = writeTriangle(QStringLiteral("first.obj"));
        for (int i = 0; i <= ConverterServer::FirstPieces; ++i)
            keep(read(file));
    }

    const osg::RefPtr<osg::NodePtr>& keep(const files::ReadResult& result)
    {
        EXPECT_TRUE(result) << result.error().toString().toStdString();
        return m_roots.emplace_back(result ? result.value() : osg::NodePtr());
    }

    const QString m_socket = m_session.temporaryFolder() + QStringLiteral("/reader");
    std::vector<osg::RefPtr<osg::NodePtr>> m_roots;

    void TearDown() override
    {
        m_roots.clear();
        ReadingTest::TearDown();
    }
};

TEST_F(CopiedProcessTest, TheFirstFewReadsStartByThemselves)
{
    const QString file = writeTriangle(QStringLiteral("first.obj"));
    for (int i = 0; i < ConverterServer::FirstPieces; ++i)
        keep(read(file));
    EXPECT_TRUE(childrenOf(static_cast<int>(::getpid())).empty());
    keep(read(file));
    EXPECT_NE(server(), 0);
}

TEST_F(CopiedProcessTest, ACopyGivesTheSameTree)
{
    makeTheFirst();
    ASSERT_NE(server(), 0);
    bool hasSeenCopy = false;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] { hasSeenCopy |= !childrenOf(server()).empty(); });
    look.start(1);
    const QString file = writeLargeObj(20'000);
    const osg::RefPtr<osg::NodePtr> copied = keep(read(file));
    EXPECT_TRUE(hasSeenCopy);
    m_session.settings().converter.server.set(false);
    EXPECT_GT(SameTree().compare(keep(read(file)), copied, "/"), 1u);
    EXPECT_TRUE(childrenOf(server()).empty());
}

TEST_F(CopiedProcessTest, TheSettingTurnsItOff)
{
    m_session.settings().converter.server.set(false);
    makeTheFirst();
    EXPECT_TRUE(childrenOf(static_cast<int>(::getpid())).empty());
}

TEST_F(CopiedProcessTest, ACancelEndsACopy)
{
    makeTheFirst();
    const int serving = server();
    ASSERT_NE(serving, 0);
    const QString file = writeLargeObj(1'000'000);
    bool wasReading = false;
    QElapsedTimer sinceCancel;
    QTimer::singleShot(300, [&] {
        wasReading = !childrenOf(serving).empty();
        sinceCancel.start();
        zn::reading::setCancelled(m_session, true);
    });
    const files::ReadResult result = read(file);
    EXPECT_LT(sinceCancel.elapsed(), 500);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().code, ErrorCode::Cancelled);
    EXPECT_TRUE(wasReading);
    EXPECT_TRUE(childrenOf(serving).empty()) << "it is gone before the read is over";
}

TEST_F(CopiedProcessTest, AnApplicationThatQuitsDoesNotWaitForACopy)
{
    makeTheFirst();
    const int serving = server();
    ASSERT_NE(serving, 0);
    const QString file = writeLargeObj(1'000'000);
    QElapsedTimer sinceQuit;
    QTimer::singleShot(0, [&] {
        QTimer::singleShot(300, [&] {
            sinceQuit.start();
            QCoreApplication::quit();
        });
        const files::ReadResult result = read(file);
        EXPECT_LT(sinceQuit.elapsed(), 500);
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error().code, ErrorCode::Cancelled);
    });
    QCoreApplication::exec();
    EXPECT_TRUE(sinceQuit.isValid());
    EXPECT_TRUE(childrenOf(serving).empty());
}

TEST_F(CopiedProcessTest, LimitsEndACopyAndNoOther)
{
    makeTheFirst();
    ASSERT_NE(server(), 0);
    m_session.settings().set(QStringLiteral("converter.options"),
                             QStringLiteral("limit.memory=8 limit.memory-per-mb=0"));
    const files::ReadResult result = read(writeLargeObj(200'000));
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().code, ErrorCode::ReaderFailed);
    EXPECT_THAT(result.error().message.toStdString(), testing::HasSubstr("more memory than its limit of 8 MB"));
    m_session.settings().set(QStringLiteral("converter.options"), QString());
    keep(read(path(QStringLiteral("first.obj"))));
}

TEST_F(CopiedProcessTest, WhereTheServerDiesReadsStartByThemselves)
{
    makeTheFirst();
    const int serving = server();
    ASSERT_NE(serving, 0);
    ASSERT_EQ(::kill(serving, SIGKILL), 0);
    keep(read(path(QStringLiteral("first.obj"))));
}

TEST_F(CopiedProcessTest, TheSignalThatEndsACopyIsTold)
{
    makeTheFirst();
    const int serving = server();
    ASSERT_NE(serving, 0);
    const QString file = writeLargeObj(200'000);
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        for (const int copy : childrenOf(serving))
            ::kill(copy, SIGKILL);
    });
    look.start(1);
    const files::ReadResult result = read(file);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().code, ErrorCode::ReaderFailed);
    EXPECT_THAT(result.error().message.toStdString(), testing::HasSubstr("signal 9"));
}

TEST_F(CopiedProcessTest, WhereTheServerDiesDuringAReadItBeginsAnew)
{
    makeTheFirst();
    const int serving = server();
    ASSERT_NE(serving, 0);
    const QString file = writeLargeObj(100'000);
    bool wasReading = false;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        if (wasReading || childrenOf(serving).empty())
            return;
        wasReading = true;
        ::kill(serving, SIGKILL);
    });
    look.start(1);
    keep(read(file));
    EXPECT_TRUE(wasReading);
}

TEST_F(CopiedProcessTest, ReadsAtTheSameTimeShareTheMemory)
{
    constexpr std::uint64_t all = 900;
    EXPECT_EQ(zn::reading::memoryOfNextRead(m_session, all), all);
    std::uint64_t meanwhile = 0;
    QTimer::singleShot(0, [&] { meanwhile = zn::reading::memoryOfNextRead(m_session, all); });
    keep(read(writeTriangle(QStringLiteral("t.obj"))));
    EXPECT_EQ(meanwhile, all / 2);
    EXPECT_EQ(zn::reading::memoryOfNextRead(m_session, all), all);
}

} // namespace
