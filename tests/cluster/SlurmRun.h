#pragma once

#include "tests/cluster/ClusterRun.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

/// Runs of the tool on a real Slurm, which runs on this machine alone.
class SlurmRun : public ClusterRun
{
protected:
    ~SlurmRun() override
    {
        if (m_isUp)
            cluster(text("stop"), {});
    }

    static int cluster(const QString& command, const QStringList& arguments, QByteArray* said = nullptr)
    {
        QProcess process;
        // The daemons live on, and would hold the pipes of this process.
        QTemporaryDir output;
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setStandardErrorFile(output.filePath(text("said")));
        process.start(text(SLURM_CLUSTER), QStringList{command, folder()} + arguments);
        EXPECT_TRUE(process.waitForFinished(120000));
        QFile file(output.filePath(text("said")));
        if (said && file.open(QIODevice::ReadOnly))
            *said = file.readAll();
        return process.exitCode();
    }

    /// Short, since it holds sockets.
    static QString folder() { return QStringLiteral("/tmp/zn-slurm-%1").arg(QCoreApplication::applicationPid()); }

    bool bringUp(const QStringList& arguments = {})
    {
        QByteArray said;
        const int code = cluster(text("start"), arguments, &said);
        m_isUp = code == 0;
        m_why = said.trimmed();
        EXPECT_TRUE(code == 0 || code == 77) << said.constData();
        m_environment.remove(text("SLURM_JOB_ID"));
        m_environment.insert(text("SLURM_CONF"), folder() + text("/slurm.conf"));
        return m_isUp;
    }

    QByteArray slurm(const QString& program, const QStringList& arguments) const
    {
        QProcess process;
        process.setProcessEnvironment(m_environment);
        process.start(program, arguments);
        EXPECT_TRUE(process.waitForFinished(30000));
        return process.readAllStandardOutput();
    }

    /// The steps that run; the allocation's own among them is none.
    int stepsRunning() const
    {
        return slurm(text("squeue"), {text("--steps"), text("--noheader"), text("--format=%j")}).count("znimport-");
    }
    bool waitForSteps(int count) const
    {
        return comes([&] { return stepsRunning() >= count; });
    }
    /// A job that was given back still completes for a moment, or until a node of it that died is given up.
    bool queueRunsEmpty() const
    {
        return comes([&] { return slurm(text("squeue"), {text("--noheader")}).isEmpty(); });
    }
    template <class Condition>
    static bool comes(const Condition& condition)
    {
        for (const QDeadlineTimer patience(120000); !patience.hasExpired(); QThread::msleep(20))
            if (condition())
                return true;
        return false;
    }

    static QStringList on(int nodes)
    {
        return {text("--tree"), text("--cluster"), text("slurm"), text("--nodes"), QString::number(nodes)};
    }

    void expectSameTrees(int parts, int references)
    {
        makeAssembly(parts, references);
        const Ending here = run({text("--tree")});
        ASSERT_EQ(here.exitCode, 0) << here.errors.constData();
        EXPECT_GT(here.output.count("box "), references - 1);
        for (const int nodes : {1, 2}) {
            const Ending there = run(on(nodes));
            EXPECT_EQ(there.exitCode, 0) << there.errors.constData();
            EXPECT_TRUE(there.output == here.output) << nodes << " nodes";
            EXPECT_TRUE(there.errors.contains(QByteArray::number(nodes) + " nodes, " + QByteArray::number(2 * nodes) +
                                              " conversions at a time"))
                << there.errors.constData();
        }
        EXPECT_EQ(leftovers(), QStringList());
        EXPECT_TRUE(queueRunsEmpty());
    }

    bool m_isUp = false;
    QByteArray m_why;
};
