#pragma once

#include "host/znJobProcessing/znProcessJob.h"
#include "tests/standalone/znJobProcessing/TestJobs.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <signal.h>

#include <functional>

/// `text` as one word of a command line.
inline QString quoted(QString text)
{
    return QLatin1Char('"') + text.replace(QLatin1Char('"'), QStringLiteral("\"\"\"")) + QLatin1Char('"');
}

/// The command line of a child that does what `script` says; see tests/support/ScriptedChild.cpp.
inline QString scripted(const QString& script)
{
    return quoted(QString::fromUtf8(ZN_SCRIPTED_CHILD)) + QStringLiteral(" --script ") + quoted(script);
}

/// A process job whose finish() can be replaced.
class ScriptedJob : public znProcessJob
{
public:
    explicit ScriptedJob(const QString& script, QObject* parent = nullptr) : znProcessJob(scripted(script), parent) {}

    void setCommand(const QString& command) { m_command = command; }
    void setScript(const QString& script) { m_command = scripted(script); }
    qint64 processId() const { return m_process->processId(); }

    /// The usual end of a run.
    void endRun() { znProcessJob::finish(); }

    /// What a finish() with rules of its own ends with.
    void endRunPlainly() { znAbstractJob::finish(); }

    std::function<void(ScriptedJob&)> onFinish;

protected:
    void finish() override { onFinish ? onFinish(*this) : endRun(); }
};

/// A folder whose name is none of the easy ones, and the files in it.
class TestFolder
{
public:
    QString path(const QString& name) const { return m_folder.filePath(name); }
    bool has(const QString& name) const { return QFileInfo::exists(path(name)); }

    QString read(const QString& name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    void write(const QString& name) const
    {
        QFile file(path(name));
        file.open(QIODevice::WriteOnly);
    }

    /// The script command `name`, a blank, and the path of `file` as one word.
    QString command(const QString& name, const QString& file) const
    {
        return name + QStringLiteral(" \"") + path(file) + QLatin1Char('"');
    }

    QStringList files() const { return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden); }

private:
    QTemporaryDir m_folder{QDir::tempPath() + QString::fromUtf8("/jobs \xc3\xa4\xc3\xb6\xc3\xbc XXXXXX")};
};

/// Whether the process has ended, reaped or not.
inline bool hasEnded(qint64 pid)
{
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!stat.open(QIODevice::ReadOnly)) {
        return true;
    }
    const QByteArray line = stat.readAll();
    return line.mid(line.lastIndexOf(')')).startsWith(") Z");
}
