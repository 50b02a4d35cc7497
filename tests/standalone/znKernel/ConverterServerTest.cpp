#include "standalone/znKernel/ConverterServer.h"

#include "host/znKernel/znPtxHelper.h"
#include "standalone/znUtils/InstalledProgram.h"
#include "tests/standalone/session/SessionTest.h"
#include "tests/support/QtPrinters.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QThread>

namespace
{

using zn::kernel::ConverterServer;
using zn::kernel::ConverterServers;

class ConverterServerTest : public SessionTest
{
protected:
    static QStringList commandFor(const char* input)
    {
        return QProcess::splitCommand(
            QString::fromStdString(znPtxHelper::createProcessCommand(input, true, "/").first));
    }

    static bool isCopied(const char* input)
    {
        return QFileInfo(commandFor(input).first()).fileName() == QLatin1String("ptxlaunch");
    }

    static void makeTheFirst()
    {
        for (int i = 0; i < ConverterServer::FirstPieces; ++i)
            EXPECT_FALSE(isCopied("/a.stp")) << i;
    }

    bool socketComes() const
    {
        QElapsedTimer timer;
        timer.start();
        while (!QFile::exists(m_socket) && timer.elapsed() < 30000)
            QThread::msleep(5);
        return QFile::exists(m_socket);
    }

    QString m_socket = m_session.temporaryFolder() + QStringLiteral("/converter");
};

TEST_F(ConverterServerTest, AfterTheFirstFewConversionsTheRestAreCopies)
{
    makeTheFirst();
    const QStringList command = commandFor("/a.stp");
    ASSERT_GT(command.size(), 4);
    EXPECT_EQ(QFileInfo(command[0]).fileName(), QStringLiteral("ptxlaunch"));
    EXPECT_EQ(command[1], m_socket);
    EXPECT_EQ(command[2], zn::installedProgram(QStringLiteral("ptxconvert")));
    EXPECT_EQ(command[command.size() - 2], QStringLiteral("/a.stp"));
    EXPECT_TRUE(isCopied("/b.IGES"));
    EXPECT_TRUE(isCopied("/b.brp"));
    EXPECT_TRUE(socketComes());
}

TEST_F(ConverterServerTest, FormatsThatLoadNothingAreNeverCopiedAndDoNotCount)
{
    for (int i = 0; i < 10; ++i)
        EXPECT_FALSE(isCopied("/a.jt"));
    makeTheFirst();
    EXPECT_FALSE(isCopied("/a.stl"));
    EXPECT_FALSE(QFile::exists(m_socket));
}

TEST_F(ConverterServerTest, TheSettingTurnsItOff)
{
    ASSERT_FALSE(m_session.settings().set(QStringLiteral("converter.server"), QStringLiteral("off")));
    for (int i = 0; i < 10; ++i)
        EXPECT_FALSE(isCopied("/a.stp"));
}

TEST_F(ConverterServerTest, OtherProgramsAndLaunchersStartEachByItself)
{
    ASSERT_FALSE(m_session.settings().set(QStringLiteral("converter.launcher"), QStringLiteral("nice")));
    for (int i = 0; i < 10; ++i)
        EXPECT_FALSE(isCopied("/a.stp"));
    ASSERT_FALSE(m_session.settings().set(QStringLiteral("converter.launcher"), QString()));
    ASSERT_FALSE(m_session.settings().set(QStringLiteral("converter.program"), QStringLiteral("/opt/own")));
    for (int i = 0; i < 10; ++i)
        EXPECT_FALSE(isCopied("/a.stp"));
}

/// Whether a process has this word on its command line.
bool isServed(const QString& socket)
{
    const QDir processes(QStringLiteral("/proc"));
    for (const QString& name : processes.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile line(processes.filePath(name) + QStringLiteral("/cmdline"));
        if (line.open(QIODevice::ReadOnly) && line.readAll().split('\0').contains(socket.toUtf8()))
            return true;
    }
    return false;
}

TEST(ConverterServerEnd, ItGoesWithTheSession)
{
    QString socket;
    {
        zn::StandaloneSession session;
        socket = session.temporaryFolder() + QStringLiteral("/converter");
        auto& server = session.state<ConverterServers>();
        for (int i = 0; i <= ConverterServer::FirstPieces; ++i)
            server.wordsForConversion(zn::installedProgram(QStringLiteral("ptxconvert")), QStringLiteral("/a.stp"));
        QElapsedTimer timer;
        for (timer.start(); !isServed(socket) && timer.elapsed() < 30000;)
            QThread::msleep(5);
        EXPECT_TRUE(isServed(socket));
    }
    EXPECT_FALSE(isServed(socket));
    EXPECT_FALSE(QFileInfo::exists(socket));
}

} // namespace
