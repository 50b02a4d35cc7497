// A folder of files, each imported for itself.

#include "tests/roads/znimport/ToolRun.h"

#include <QDateTime>
#include <QFileInfo>

namespace
{

const QByteArray triangle = "v 0 0 0\nv 2 0 0\nv 0 3 0\nf 1 2 3\n";

class BatchRun : public ToolRun
{
protected:
    BatchRun()
    {
        QDir().mkpath(path("in/sub"));
        write("in/a.obj", triangle);
        write("in/sub/ä b.obj", triangle);
        write("in/broken.stl", "nothing of a mesh");
        write("in/notes.txt", "notes");
    }

    Ending batch(const QStringList& more = {}) const
    {
        return znimport(QStringList{text("--batch"), path("in"), text("-o"), path("out")} + more);
    }
};

} // namespace

TEST_F(BatchRun, WritesAGlbForEachFileAndTellsOfThoseThatFail)
{
    const Ending ending = batch();
    EXPECT_EQ(ending.exitCode, 3) << ending.errors.toStdString();
    EXPECT_TRUE(QFileInfo::exists(path("out/a.glb")));
    EXPECT_TRUE(QFileInfo::exists(path("out/sub/ä b.glb")));
    EXPECT_FALSE(QFileInfo::exists(path("out/broken.glb")));
    EXPECT_TRUE(ending.output.contains(text("2 of 3 files imported, 0 of them in part, 0 done before")));
    EXPECT_TRUE(ending.errors.contains(text("broken.stl"))) << ending.errors.toStdString();
    EXPECT_TRUE(ending.errors.contains(text("1 files of ") + path("in") + text(" are of no format")));
}

TEST_F(BatchRun, GoesOnWhereItWas)
{
    batch();
    const QDateTime first = QFileInfo(path("out/a.glb")).lastModified();
    write("in/sub/ä b.obj", triangle + "v 1 1 1\n");
    const Ending again = batch();
    EXPECT_EQ(again.exitCode, 3);
    EXPECT_TRUE(again.output.contains(text("2 of 3 files imported, 0 of them in part, 1 done before")))
        << again.output.toStdString();
    EXPECT_EQ(QFileInfo(path("out/a.glb")).lastModified(), first);
    EXPECT_TRUE(batch({text("--unit"), text("mm")}).output.contains(text(" 0 done before"))) << "other options";
    QFile::remove(path("out/a.glb"));
    EXPECT_TRUE(batch({text("--unit"), text("mm")}).output.contains(text(" 1 done before"))) << "its output is gone";
}

TEST_F(BatchRun, OfNothingButFailuresFails)
{
    QFile::remove(path("in/a.obj"));
    QFile::remove(path("in/sub/ä b.obj"));
    EXPECT_EQ(batch().exitCode, 1);
    QFile::remove(path("in/broken.stl"));
    const Ending nothing = batch();
    EXPECT_EQ(nothing.exitCode, 1);
    EXPECT_TRUE(nothing.errors.contains(text("holds no file that can be imported")));
}
