// A file over which the CAD kernel never ends.

#include "tests/roads/BrepText.h"
#include "tests/roads/znimport/ToolRun.h"

#include <QElapsedTimer>
#include <QProcessEnvironment>

namespace
{

class LoopingFileRun : public ToolRun
{
protected:
    LoopingFileRun()
    {
        for (const char* folder : {"tmp", "out"})
            QDir().mkpath(path(folder));
    }

    /// The index of a curve is no number that an index can have: the kernel reads on to an end that it does not find.
    static QByteArray loopingText()
    {
        const QByteArray curve = "\n1  1 0 0 6\n";
        QByteArray text(RectangleBrep);
        EXPECT_EQ(text.count(curve), 1);
        return text.replace(curve, "\n1  1e300 0 0 6\n");
    }

    Ending znimportWithin(const QString& limit, const QStringList& arguments) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(text("TMPDIR"), path("tmp"));
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(text(ZNIMPORT), arguments + QStringList{text("--set"), text("converter.options=") + limit});
        EXPECT_TRUE(process.waitForFinished(60000));
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                QString::fromUtf8(process.readAllStandardOutput()), QString::fromUtf8(process.readAllStandardError())};
    }

    QStringList left(const char* folder) const
    {
        return QDir(path(folder)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
};

} // namespace

TEST_F(LoopingFileRun, EndsSoonWithASentenceThatNamesTheFileAndLeavesNothing)
{
    const QString file = write("loop.brep", loopingText());
    QElapsedTimer clock;
    clock.start();
    const Ending ending =
        znimportWithin(text("limit.work=1 limit.work-per-mb=0"), {file, text("-o"), path("out/loop.glb")});
    EXPECT_EQ(ending.exitCode, 1);
    EXPECT_LT(clock.elapsed(), 15000) << "less than the limit that holds unless one is set";
    EXPECT_TRUE(ending.errors.contains(file)) << ending.errors.toStdString();
    EXPECT_TRUE(ending.errors.contains(text("the processor worked for 1 s without progress")))
        << ending.errors.toStdString();
    EXPECT_EQ(left("tmp"), QStringList());
    EXPECT_EQ(left("out"), QStringList());
}

/// Without a limit of work it is that of time.
TEST_F(LoopingFileRun, IsOneThatNeverEnds)
{
    const QString file = write("loop.brep", loopingText());
    const Ending ending =
        znimportWithin(text("limit.work=0 limit.work-per-mb=0 limit.time=3 limit.time-per-mb=0"), {file});
    EXPECT_EQ(ending.exitCode, 1);
    EXPECT_TRUE(ending.errors.contains(text("longer than its limit of 3 s"))) << ending.errors.toStdString();
    EXPECT_EQ(left("tmp"), QStringList());
}

TEST_F(LoopingFileRun, CostsAnotherFileNothing)
{
    const QString file = write("loop.brep", loopingText());
    const QString sound = write("sound.brep", RectangleBrep);
    const Ending ending = znimportWithin(text("limit.work=1"), {file, sound, text("-o"), path("out/both.glb")});
    EXPECT_EQ(ending.exitCode, 3) << ending.errors.toStdString();
    EXPECT_EQ(left("out"), QStringList{text("both.glb")});
    EXPECT_EQ(left("tmp"), QStringList());
}
