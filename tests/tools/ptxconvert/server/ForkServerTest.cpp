#include "tools/ptxconvert/server/ForkServer.h"

#include <QByteArray>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace
{

void print(const std::string& text)
{
    (void)!::write(STDOUT_FILENO, text.data(), text.size());
}

int remembered = 0;

/// What a forked process of the test's server does.
int work(const std::vector<std::string>& arguments)
{
    const std::string& task = arguments.at(0);
    if (task == "tell") {
        char folder[4096];
        print(std::string(getcwd(folder, sizeof folder)) + '\n' + std::getenv("COLOUR") + '\n');
        print(std::string(std::getenv("SERVERS") ? "kept" : "cleared") + '\n');
        print(std::to_string(arguments.size()) + ' ' + arguments.back() + '\n');
        print(getpgrp() == getpid() ? "leader\n" : "member\n");
    } else if (task == "exit") {
        return std::stoi(arguments.at(1));
    } else if (task == "die") {
        std::raise(std::stoi(arguments.at(1)));
    } else if (task == "count") {
        print(std::to_string(++remembered));
    } else if (task == "wait") {
        std::signal(SIGTERM, [](int) { _exit(21); });
        print(std::to_string(getpid()) + '\n');
        sleep(60);
    } else if (task == "leave") {
        if (const pid_t child = fork(); child == 0)
            sleep(60);
        else
            print(std::to_string(child));
    }
    return 0;
}

/// One that waits for somebody to collect it is not.
bool isAlive(int process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray stat = file.readAll();
    return stat.mid(stat.lastIndexOf(')') + 2, 1) != "Z";
}

bool ends(int process)
{
    QElapsedTimer timer;
    timer.start();
    while (isAlive(process) && timer.elapsed() < 20000)
        QThread::msleep(5);
    return !isAlive(process);
}

class ForkServerTest : public testing::Test
{
protected:
    void SetUp() override
    {
        m_server = fork();
        if (m_server == 0) {
            setenv("SERVERS", "own", 1);
            _exit(ptxconvert::serve(m_socket.toStdString(), work));
        }
        QElapsedTimer timer;
        timer.start();
        while (!QFile::exists(m_socket) && timer.elapsed() < 20000)
            QThread::msleep(1);
    }
    void TearDown() override { stopServer(); }

    void stopServer()
    {
        if (m_server > 0) {
            kill(m_server, SIGKILL);
            waitpid(m_server, nullptr, 0);
        }
        m_server = 0;
    }

    /// Starts the launcher; without a server it would run the shell's "exit 77".
    void start(const QStringList& arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("COLOUR"), QStringLiteral("blue"));
        m_launcher.setProcessEnvironment(environment);
        m_launcher.setWorkingDirectory(m_folder.path());
        m_launcher.start(QStringLiteral(PTXLAUNCH), QStringList{m_socket, m_alone} + arguments);
        ASSERT_TRUE(m_launcher.waitForStarted());
    }

    QByteArray run(const QStringList& arguments)
    {
        start(arguments);
        EXPECT_TRUE(m_launcher.waitForFinished(30000));
        return m_launcher.readAllStandardOutput();
    }

    int startedProcess()
    {
        start({QStringLiteral("wait")});
        while (!m_launcher.canReadLine() && m_launcher.waitForReadyRead(30000)) {
        }
        return m_launcher.readLine().trimmed().toInt();
    }

    QString writeProgram(const QByteArray& script)
    {
        QFile file(m_folder.filePath(QStringLiteral("alone")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + script);
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return file.fileName();
    }

    QTemporaryDir m_folder{QDir::tempPath() + QString::fromUtf8("/fork server äö XXXXXX")};
    QString m_socket = m_folder.filePath(QStringLiteral("socket"));
    QString m_alone = writeProgram("echo alone \"$@\"; exit 77\n");
    pid_t m_server = 0;
    QProcess m_launcher;
};

} // namespace

TEST_F(ForkServerTest, AProcessHasFolderEnvironmentArgumentsAndStreamsOfItsLauncher)
{
    const QString folder = QDir(m_folder.path()).canonicalPath();
    EXPECT_EQ(run({QStringLiteral("tell"), QString(), QString::fromUtf8("ä b")}),
              folder.toUtf8() + "\nblue\ncleared\n3 ä b\nleader\n");
    EXPECT_EQ(m_launcher.exitCode(), 0);
}

TEST_F(ForkServerTest, TheLauncherEndsAsTheProcess)
{
    run({QStringLiteral("exit"), QStringLiteral("25")});
    EXPECT_EQ(m_launcher.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(m_launcher.exitCode(), 25);
    // Sanitizers handle those of faults.
    run({QStringLiteral("die"), QString::number(SIGKILL)});
    EXPECT_EQ(m_launcher.exitStatus(), QProcess::CrashExit);
    EXPECT_EQ(m_launcher.exitCode(), SIGKILL);
}

TEST_F(ForkServerTest, NothingOfAProcessIsSeenByTheNext)
{
    EXPECT_EQ(run({QStringLiteral("count")}), "1");
    EXPECT_EQ(run({QStringLiteral("count")}), "1");
}

TEST_F(ForkServerTest, ASignalReachesTheProcess)
{
    const int process = startedProcess();
    m_launcher.terminate();
    ASSERT_TRUE(m_launcher.waitForFinished(30000));
    EXPECT_EQ(m_launcher.exitCode(), 21);
    EXPECT_TRUE(ends(process));
}

TEST_F(ForkServerTest, AProcessDiesWithItsLauncher)
{
    const int process = startedProcess();
    ASSERT_GT(process, 0);
    m_launcher.kill();
    ASSERT_TRUE(m_launcher.waitForFinished(30000));
    EXPECT_TRUE(ends(process));
    EXPECT_EQ(run({QStringLiteral("count")}), "1") << "the server is as before";
}

TEST_F(ForkServerTest, WhatAProcessLeavesBehindDiesToo)
{
    const int left = run({QStringLiteral("leave")}).toInt();
    ASSERT_GT(left, 0);
    EXPECT_TRUE(ends(left));
}

TEST_F(ForkServerTest, ProcessesRunBesideEachOther)
{
    const int process = startedProcess();
    QProcess other;
    other.start(QStringLiteral(PTXLAUNCH), {m_socket, m_alone, QStringLiteral("exit"), QStringLiteral("3")});
    ASSERT_TRUE(other.waitForFinished(30000));
    EXPECT_EQ(other.exitCode(), 3);
    EXPECT_TRUE(isAlive(process));
    m_launcher.kill();
    m_launcher.waitForFinished();
}

TEST_F(ForkServerTest, WithoutAServerTheProgramItselfIsStarted)
{
    stopServer();
    EXPECT_EQ(run({QStringLiteral("exit"), QStringLiteral("3")}), "alone exit 3\n");
    EXPECT_EQ(m_launcher.exitCode(), 77);
}

TEST_F(ForkServerTest, WhenTheServerDiesTheProgramItselfIsStarted)
{
    const int process = startedProcess();
    stopServer();
    ASSERT_TRUE(m_launcher.waitForFinished(30000));
    EXPECT_EQ(m_launcher.exitCode(), 77);
    EXPECT_TRUE(ends(process));
}

TEST_F(ForkServerTest, ARequestThatIsTooLargeIsNotMade)
{
    EXPECT_TRUE(
        run({QStringLiteral("exit"), QString(100 * 1024, QLatin1Char('x')), QString(100 * 1024, QLatin1Char('y'))})
            .startsWith("alone exit xxx"));
    EXPECT_EQ(m_launcher.exitCode(), 77);
}

TEST_F(ForkServerTest, TheSocketIsForItsUserAlone)
{
    EXPECT_EQ(QFile::permissions(m_socket) &
                  (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther),
              QFile::Permissions());
}

TEST_F(ForkServerTest, APlaceThatIsTakenIsAnError)
{
    EXPECT_EQ(ptxconvert::serve(m_socket.toStdString(), work), EADDRINUSE);
    EXPECT_EQ(ptxconvert::serve(std::string(200, 'x'), work), ENAMETOOLONG);
}
