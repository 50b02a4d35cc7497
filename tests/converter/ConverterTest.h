#pragma once

#include "converter/znPtxConverterJob.h"
#include "standalone/znKernel/MixedAssemblies.h"
#include "tests/standalone/session/SessionTest.h"
#include "tests/standalone/znJobProcessing/ProcessTestJobs.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTranslator>

#include <algorithm>
#include <memory>

/// Answers the texts of one context, and nothing else, backwards while it lives.
class Reversing : public QTranslator
{
public:
    explicit Reversing(const char* context) : m_context(context) { QCoreApplication::installTranslator(this); }
    ~Reversing() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        QString result = QString::fromUtf8(text);
        std::reverse(result.begin(), result.end());
        return m_context == context ? result : QString();
    }

private:
    const QByteArray m_context;
};

/// A conversion whose inner values can be seen.
class SeenConverterJob : public znPtxConverterJob
{
public:
    using znPtxConverterJob::znPtxConverterJob;

    QString command() const { return m_command; }
    bool inputPresent() const { return m_inputPresent; }
};

/// Conversions whose converter and update tool are the scripted child. The content of a CAD file is the script of both.
class ConverterTest : public SessionTest
{
protected:
    ConverterTest()
    {
        set("converter.program", QString::fromUtf8(ZN_SCRIPTED_CHILD));
        set("converter.updateProgram", QString::fromUtf8(ZN_SCRIPTED_CHILD));
        EXPECT_TRUE(QDir().mkpath(outputFolder()));
    }
    ~ConverterTest() override { drainEvents(); }

    void set(const char* setting, const QString& value)
    {
        EXPECT_FALSE(m_session.settings().set(QString::fromLatin1(setting), value)) << setting;
    }
    void allowMixedAssemblies(bool allowed)
    {
        m_session.state<zn::kernel::MixedAssemblies>().canContain = [allowed](const QString&) { return allowed; };
    }

    QString outputFolder() const { return path(QStringLiteral("out put")); }
    QStringList outputs() const { return QDir(outputFolder()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }

    /// The script command `name` with the path of a file of the test's folder, as a whole line.
    QByteArray line(const QByteArray& name, const QString& file, const QByteArray& rest = {}) const
    {
        return name + " \"" + path(file).toUtf8() + "\" " + rest + "\n";
    }

    /// The conversion of a new file with this name and script.
    std::unique_ptr<SeenConverterJob> makeJob(const QString& name, const QByteArray& script) const
    {
        return std::make_unique<SeenConverterJob>(write(name, script), outputFolder(), nullptr);
    }
    std::unique_ptr<SeenConverterJob> makeStepJob(const QByteArray& script) const
    {
        return makeJob(QStringLiteral("part.stp"), script);
    }

    QStringList readLines(const QString& name) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }
    bool has(const QString& name) const { return QFileInfo::exists(path(name)); }
};

/// The signals of a conversion in the order in which they come. What the seed of the progress file may cause is left
/// out.
class ConversionLog
{
public:
    explicit ConversionLog(znPtxConverterJob& job) : m_job(job)
    {
        m_log.watch(job);
        QObject::connect(&job, &znAbstractJob::finished, &m_context, [this] { ++ends; });
        QObject::connect(&job, &znAbstractJob::progressChanged, &m_context,
                         [this](unsigned value, const QString& text) {
                             const QString line = QStringLiteral("%1 %2").arg(value).arg(text);
                             if (line != QStringLiteral("0 Unknown"))
                                 m_log.lines << line;
                         });
        QObject::connect(&job, &znPtxConverterJob::outputFileReady, &m_context, [this](const QString& file) {
            readyFiles << file;
            m_log.lines << QStringLiteral("ready");
        });
    }

    /// Runs the job until it has ended `count` times more, and gives all lines up to then.
    QStringList run(int count = 1)
    {
        const int before = ends;
        m_job.run();
        EXPECT_TRUE(waitUntil([&] { return ends == before + count; })) << lines().join(QLatin1Char('\n')).toStdString();
        drainEvents();
        EXPECT_EQ(ends, before + count);
        return lines();
    }

    const QStringList& lines() const { return m_log.lines; }

    QStringList readyFiles;
    int ends = 0;

private:
    znPtxConverterJob& m_job;
    SignalLog m_log;
    QObject m_context;
};

/// Short for the lists of expected lines.
inline QStringList texts(std::initializer_list<const char*> lines)
{
    QStringList result;
    for (const char* line : lines)
        result << QString::fromUtf8(line);
    return result;
}
