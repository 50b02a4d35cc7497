// Conversions that are copies of one converter give what conversions that start by themselves give.

#include "tests/roads/znimport/ToolRun.h"

namespace
{

class CopiedConverterTest : public ToolRun
{
protected:
    /// A product structure with as many copies of the example as parts.
    QString writeParts(int count) const
    {
        QByteArray parts;
        QByteArray instances;
        QByteArray ids;
        for (int i = 0; i < count; ++i) {
            const QByteArray number = QByteArray::number(i);
            EXPECT_TRUE(QFile::copy(text(EXAMPLE_MODELS "/plate.stp"), path(("part" + number + ".stp").constData())));
            instances += "<ProductInstance id=\"i" + number + "\" partRef=\"#p" + number + "\"/>";
            parts += "<ProductRevisionView id=\"p" + number + "\" name=\"part " + number + "\"><Representation id=\"r" +
                     number + "\" format=\"STEP\" location=\"part" + number + ".stp\"/></ProductRevisionView>";
            ids += " i" + number;
        }
        return write("parts.plmxml",
                     "<PLMXML xmlns=\"http://www.plmxml.org/Schemas/PLMXMLSchema\" schemaVersion=\"6\"><ProductDef "
                     "id=\"d\"><InstanceGraph id=\"g\" rootRefs=\"a\">" +
                         instances + parts + "<ProductRevisionView id=\"a\" instanceRefs=\"" + ids.trimmed() +
                         "\"/></InstanceGraph></ProductDef></PLMXML>");
    }

    QByteArray glb(const QString& document, const char* server) const
    {
        const Ending run = znimport({document, text("--jobs"), text("2"), text("--set"),
                                     text("converter.server=") + text(server), text("-o"), path("out.glb")});
        EXPECT_EQ(run.exitCode, 0) << run.errors.toStdString();
        QFile file(path("out.glb"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
};

} // namespace

TEST_F(CopiedConverterTest, TheSceneIsTheSame)
{
    const QString document = writeParts(6);
    const QByteArray alone = glb(document, "off");
    EXPECT_GT(alone.size(), 10000);
    EXPECT_EQ(glb(document, "on"), alone);
}

TEST_F(CopiedConverterTest, AFileThatCannotBeReadIsToldInTheSameWords)
{
    const QString document = writeParts(6);
    write("part5.stp", "ISO-10303-21;\nHEADER;\nrubbish");
    QString words;
    for (const char* server : {"off", "on"}) {
        const Ending run = znimport({document, text("--jobs"), text("1"), text("--set"),
                                     text("converter.server=") + text(server), text("-o"), path("out.glb")});
        EXPECT_EQ(run.exitCode, 3) << run.errors.toStdString();
        const int start = run.errors.indexOf(text("missing: "));
        ASSERT_GE(start, 0);
        // The names of logs differ.
        const QString missing = run.errors.mid(start).section(text(" [log:"), 0, 0);
        EXPECT_TRUE(missing.contains(text("part5.stp"))) << missing.toStdString();
        EXPECT_EQ(words.isEmpty() ? missing : words, missing);
        words = missing;
    }
}
