// Signals that ask the program to stop, before it has begun and several at once.

#include "tests/roads/znimport/ToolRun.h"

#include <QProcessEnvironment>
#include <QThread>

#include <csignal>
#include <unistd.h>

namespace
{

/// A run in a process group of its own, for which signals wait from the start: it blocks them, until it takes them.
class RunWithSignals : public QProcess
{
public:
    explicit RunWithSignals(const std::vector<int>& waiting = {}) : m_waiting(waiting) {}

protected:
    void setupChildProcess() override
    {
        ::setpgid(0, 0);
        sigset_t blocked;
        ::sigemptyset(&blocked);
        for (const int signal : m_waiting)
            ::sigaddset(&blocked, signal);
        ::sigprocmask(SIG_BLOCK, &blocked, nullptr);
        for (const int signal : m_waiting)
            ::raise(signal);
    }

private:
    std::vector<int> m_waiting;
};

class InterruptRun : public ToolRun
{
protected:
    InterruptRun()
    {
        for (const char* folder : {"tmp", "in", "out"})
            QDir().mkpath(path(folder));
        write("in/plate.obj", "v 0 0 0\nv 2 0 0\nv 0 3 0\nf 1 2 3\n");
    }

    /// What the folder for temporary files holds is to go with every end.
    void start(QProcess& process, const QStringList& arguments, const char* variable = nullptr,
               const QByteArray& value = {}) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(text("TMPDIR"), path("tmp"));
        if (variable)
            environment.insert(text(variable), QString::fromUtf8(value));
        process.setProcessEnvironment(environment);
        process.start(text(ZNIMPORT), arguments);
    }

    Ending end(QProcess& process) const
    {
        EXPECT_TRUE(process.waitForFinished(60000));
        EXPECT_EQ(left("tmp"), QStringList());
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                QString::fromUtf8(process.readAllStandardOutput()), QString::fromUtf8(process.readAllStandardError())};
    }

    QStringList left(const char* folder) const
    {
        return QDir(path(folder)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    QStringList importOfPlate() const { return {path("in/plate.obj"), text("-o"), path("out/plate.glb")}; }

    void waitFor(const QString& file) const
    {
        for (int tries = 0; tries < 6000 && QFile(file).size() == 0; ++tries)
            QThread::msleep(5);
    }
};

} // namespace

TEST_F(InterruptRun, ASignalThatWaitedForTheProgramEndsItAsALaterOne)
{
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        RunWithSignals process({signal});
        start(process, importOfPlate());
        const Ending ending = end(process);
        EXPECT_EQ(ending.exitCode, 130) << signal;
        EXPECT_EQ(ending.errors, text("znimport: interrupted; nothing was written\n"));
        EXPECT_EQ(left("out"), QStringList());
    }
}

TEST_F(InterruptRun, ABatchEndsSoToo)
{
    RunWithSignals process({SIGTERM});
    start(process, {text("--batch"), path("in"), text("-o"), path("out")});
    EXPECT_EQ(end(process).exitCode, 130);
}

/// The converter tells its version, and has no end with the cube.
TEST_F(InterruptRun, ASelfCheckEndsSoTooAndTellsOfNoFault)
{
    RunWithSignals process({SIGTERM});
    const QByteArray asked = QFile::encodeName(path("asked"));
    start(process, withScriptedChild({text("--self-check")}), "ZN_CHILD_SCRIPT",
          "if-exists \"" + asked + "\" wait 60000\nwrite \"" + asked + "\" yes\n");
    const Ending ending = end(process);
    EXPECT_EQ(ending.exitCode, 130);
    EXPECT_EQ(ending.errors, text("znimport: interrupted\n"));
    EXPECT_TRUE(ending.output.contains(text("sandbox"))) << ending.output.toStdString();
    EXPECT_FALSE(ending.output.contains(text("cube"))) << ending.output.toStdString();
}

TEST_F(InterruptRun, SignalsOfSeveralKindsAreOneRequest)
{
    RunWithSignals process({SIGINT, SIGTERM, SIGHUP});
    start(process, importOfPlate());
    const Ending ending = end(process);
    EXPECT_EQ(ending.exitCode, 130);
    EXPECT_EQ(ending.errors, text("znimport: interrupted; nothing was written\n"));
}

/// The terminal tells the runs of a batch, and so does the batch.
TEST_F(InterruptRun, CtrlCAtABatchLetsItsRunsCleanUp)
{
    const QString pid = path("pid");
    write("in/part.stp", "pid \"" + pid.toUtf8() + "\"\nwait 60000\n");
    RunWithSignals process;
    start(process, withScriptedChild({text("--batch"), path("in"), text("-o"), path("out")}));
    waitFor(pid);
    ASSERT_EQ(::kill(static_cast<pid_t>(-process.processId()), SIGINT), 0);
    EXPECT_EQ(end(process).exitCode, 130);
}

/// Its runs would take a second SIGTERM for one that cannot wait.
TEST_F(InterruptRun, ABatchTellsItsRunsOnce)
{
    const QString pid = path("pid");
    write("in/part.stp", "ignore-stop\npid \"" + pid.toUtf8() + "\"\nwait 60000\n");
    RunWithSignals process;
    start(process, withScriptedChild({text("--batch"), path("in"), text("-o"), path("out")}));
    waitFor(pid);
    for (const int signal : {SIGINT, SIGTERM}) {
        ASSERT_EQ(::kill(static_cast<pid_t>(process.processId()), signal), 0);
        QThread::msleep(200);
    }
    EXPECT_EQ(end(process).exitCode, 130);
}

TEST_F(InterruptRun, TheSecondSignalOfAKindEndsTheProgramAtOnce)
{
    const QString pid = path("pid");
    RunWithSignals process;
    start(process, withScriptedChild({write("part.stp", "ignore-stop\npid \"" + pid.toUtf8() + "\"\nwait 60000\n")}));
    waitFor(pid);
    for (int tries = 0; tries < 200 && !process.waitForFinished(10); ++tries)
        ::kill(static_cast<pid_t>(process.processId()), SIGINT);
    ASSERT_EQ(process.state(), QProcess::NotRunning);
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 130);
    EXPECT_FALSE(process.readAllStandardError().contains("nothing was written")) << "it did not wait for the converter";
}

#ifdef EARLY_SIGNAL
TEST_F(InterruptRun, TheProgramTakesSignalsBeforeAllOtherWork)
{
    const QTemporaryDir plain(QDir::tempPath() + text("/znimport-early-XXXXXX"));
    ASSERT_FALSE(plain.path().contains(text(" "))) << "the loader takes it for the end of a path";
    const QString library = plain.filePath(text("early.so"));
    ASSERT_TRUE(QFile::link(text(EARLY_SIGNAL), library));
    QProcess process;
    start(process, importOfPlate(), "LD_PRELOAD", library.toUtf8());
    const Ending ending = end(process);
    EXPECT_EQ(ending.exitCode, 130);
    EXPECT_EQ(ending.errors, text("znimport: interrupted; nothing was written\n"));
}
#endif
