// Outputs that do not fit: the run ends with 1 and says why, and what was there before is there still.

#include "tests/roads/znimport/ToolRun.h"
#include "tests/support/SmallDisk.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

class OutputsTest : public ToolRun
{
protected:
    QString triangle() const { return write("t.obj", "v 0 0 0\nv 2 0 0\nv 0 3 0\nf 1 2 3\n"); }

    static QByteArray contentOf(const QString& file)
    {
        QFile source(file);
        EXPECT_TRUE(source.open(QIODevice::ReadOnly));
        return source.readAll();
    }

    /// What a run that writes `output` over a former file does where files cannot grow beyond 40 bytes.
    void expectFormerKept(const char* output, const QStringList& arguments)
    {
        const QString former = write(output, "former");
        const QStringList before = QDir(path("")).entryList(QDir::Files | QDir::Hidden);
        Ending end;
        {
            const SmallDisk disk(40);
            // In this process: what a child hands over would not fit either.
            end = znimport(arguments + QStringList{text("--set"), text("files.reading=process")});
        }
        EXPECT_EQ(end.exitCode, 1) << end.errors.toStdString();
        EXPECT_TRUE(end.errors.contains(text("File too large"))) << end.errors.toStdString();
        EXPECT_EQ(contentOf(former), "former");
        EXPECT_EQ(QDir(path("")).entryList(QDir::Files | QDir::Hidden), before) << "something is left";
    }
};

TEST_F(OutputsTest, EachOutputThatDoesNotFitIsToldAndLeavesTheFormerFile)
{
    const QString input = triangle();
    expectFormerKept("r.json", {input, text("--report"), path("r.json")});
    expectFormerKept("s.png", {input, text("--snapshot"), path("s.png")});
    expectFormerKept("o.glb", {input, text("-o"), path("o.glb")});
    expectFormerKept("o.osb", {input, text("-o"), path("o.osb")});
    expectFormerKept("b.csv", {input, text("--bom"), path("b.csv")});
    expectFormerKept("b.json", {input, text("--bom"), path("b.json")});
}

TEST_F(OutputsTest, ANormalisedDocumentThatCannotBeKeptIsAFailure)
{
    const QString document = write("d.plmxml", "<PLMXML><ProductDef><InstanceGraph rootRefs='a'><Instance id='a' "
                                               "partRef='#p'/></InstanceGraph><Part id='p'/></ProductDef></PLMXML>");
    expectFormerKept("k.plmxml", {document, text("--tree-only"), text("--keep-normalised"), path("k.plmxml")});
}

TEST_F(OutputsTest, AListOfABatchThatCannotBeWrittenIsAFailure)
{
    QDir().mkpath(path("in"));
    QDir().mkpath(path("out"));
    write("in/t.xyz.obj", "v 0 0 0\n");
    write("out/znimport-batch.tsv", QByteArray(40, '#') + '\n');
    Ending end;
    {
        const SmallDisk disk(40);
        end = znimport({text("--batch"), path("in"), text("-o"), path("out")});
    }
    EXPECT_EQ(end.exitCode, 1) << end.errors.toStdString();
    EXPECT_TRUE(end.errors.contains(text("znimport-batch.tsv cannot be written"))) << end.errors.toStdString();
}

TEST_F(OutputsTest, ALinkStaysALinkInAllFormats)
{
    const QString input = triangle();
    for (const char* extension : {"glb", "osb"}) {
        const QString target = write("target", "former");
        const QString name = path("link.") + text(extension);
        ASSERT_TRUE(QFile::link(target, name));
        EXPECT_EQ(znimport({input, text("-o"), name}).exitCode, 0);
        EXPECT_TRUE(QFileInfo(name).isSymLink());
        EXPECT_NE(contentOf(target), "former") << extension;
    }
    const QString target = write("target", "former");
    for (const char* name : {"link.json", "link.png", "link.csv"})
        ASSERT_TRUE(QFile::link(target, path(name)));
    EXPECT_EQ(znimport({input, text("--report"), path("link.json")}).exitCode, 0);
    EXPECT_EQ(znimport({input, text("--snapshot"), path("link.png")}).exitCode, 0);
    EXPECT_EQ(znimport({input, text("--bom"), path("link.csv")}).exitCode, 0);
    for (const char* name : {"link.json", "link.png", "link.csv"})
        EXPECT_TRUE(QFileInfo(path(name)).isSymLink()) << name;
}

TEST_F(OutputsTest, AFileThatMayNotBeWrittenIsReplacedInNoFormat)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "root may write all files";
    const QString input = triangle();
    for (const char* name : {"o.glb", "o.osb"}) {
        const QString file = write(name, "former");
        QFile::setPermissions(file, QFileDevice::ReadOwner);
        EXPECT_EQ(znimport({input, text("-o"), file}).exitCode, 1);
        EXPECT_EQ(contentOf(file), "former");
    }
}

/// The name of the file has a byte that is no UTF-8, and the file names another one beside it.
TEST_F(OutputsTest, ANameThatIsNoTextOpensWithWhatLiesBesideIt)
{
    write("m.mtl", "newmtl steel\nNs 300\n");
    const QString input = write("t.obj", "mtllib m.mtl\nv 0 0 0\nv 2 0 0\nv 0 3 0\nusemtl steel\nf 1 2 3\n");
    const QByteArray strange = QFile::encodeName(path("")) + "/b\xff\xfe.obj";
    ASSERT_EQ(::rename(QFile::encodeName(input).constData(), strange.constData()), 0);
    QProcess shell;
    shell.start(text("/bin/sh"), {text("-c"), text("exec '%1' \"%2/$(printf 'b\\377\\376').obj\" --report '%3'")
                                                  .arg(text(ZNIMPORT), path(""), path("r.json"))});
    ASSERT_TRUE(shell.waitForFinished(60000));
    EXPECT_EQ(shell.exitCode(), 0) << shell.readAllStandardError().constData();
    EXPECT_FALSE(contentOf(path("r.json")).contains("m.mtl' is missing"));
    EXPECT_EQ(::unlink(strange.constData()), 0) << "the folder could not go with it";
}

} // namespace
