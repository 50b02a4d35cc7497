#pragma once

#include "tests/support/AssemblyBuilder.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>

/// Runs of the tool on an assembly in a folder of their own, with the installed converter.
class ClusterRun : public testing::Test
{
protected:
    struct Ending {
        int exitCode = -1;
        QByteArray output;
        QByteArray errors;
    };

    static QString text(const char* utf8) { return QString::fromUtf8(utf8); }
    QString path(const QString& name) const { return m_folder.filePath(name); }

    void makeAssembly(int parts, int references)
    {
        ASSERT_TRUE(QDir().mkpath(path(text("parts"))));
        const AssemblyPlan plan{parts, references};
        m_assembly = QString::fromStdString(plan.write(path(text("parts")).toStdString()));
        ASSERT_FALSE(m_assembly.isEmpty());
    }

    void start(QProcess& process, const QStringList& arguments) const
    {
        process.setWorkingDirectory(m_folder.path());
        process.setProcessEnvironment(m_environment);
        process.start(text(ZNIMPORT),
                      QStringList{m_assembly, text("--set"), text("converter.program=" ZN_PTXCONVERT)} + arguments);
    }

    static Ending ending(QProcess& process, int milliseconds = 600000)
    {
        EXPECT_TRUE(process.waitForFinished(milliseconds));
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1, process.readAllStandardOutput(),
                process.readAllStandardError()};
    }

    Ending run(const QStringList& arguments) const
    {
        QProcess process;
        start(process, arguments);
        return ending(process);
    }

    /// Reads standard error until it has `words`.
    static bool waitForWords(QProcess& process, const QByteArray& words, QByteArray& errors)
    {
        for (int tries = 0; tries < 1200 && !errors.contains(words); ++tries) {
            process.waitForReadyRead(50);
            errors += process.readAllStandardError();
        }
        return errors.contains(words);
    }

    static void interrupt(const QProcess& process) { ::kill(static_cast<pid_t>(process.processId()), SIGINT); }

    /// What a run leaves in its folder but the assembly.
    QStringList leftovers() const
    {
        QStringList names = QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
        names.removeAll(text("parts"));
        return names;
    }

    QTemporaryDir m_folder{QDir::tempPath() + QString::fromUtf8("/cluster äö XXXXXX")};
    QString m_assembly;
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
};
