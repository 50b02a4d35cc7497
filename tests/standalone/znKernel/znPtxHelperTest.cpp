#include "host/znKernel/znPtxHelper.h"

#include "host/znJobProcessing/znJobQueue.h"
#include "host/znJobProcessing/znProcessJob.h"
#include "scene/Tags.h"
#include "tests/standalone/session/SessionTest.h"
#include "tests/support/QtPrinters.h"

#include <QFileInfo>
#include <QProcess>
#include <QSignalSpy>

namespace
{

class znPtxHelperTest : public SessionTest
{
protected:
    void set(const char* name, const QString& value)
    {
        ASSERT_FALSE(m_session.settings().set(QString::fromUtf8(name), value)) << name;
    }

    /// The words of the command for `name` in the test's folder, and the file that it makes.
    std::pair<QStringList, QString> command(const QString& name, bool externalParts)
    {
        const auto [line, output] =
            znPtxHelper::createProcessCommand(path(name).toStdString(), externalParts, "/ausgabe Ü");
        return {QProcess::splitCommand(QString::fromStdString(line)), QString::fromStdString(output)};
    }
};

TEST_F(znPtxHelperTest, TheConverterOfAllFormatsIsGivenFlagOptionsAndFiles)
{
    set("converter.program", QStringLiteral("/opt/my \"own\" converter"));
    set("converter.options", QStringLiteral("mesh.deviation=0.5  mesh.angle=9"));
    const auto [words, output] = command(QStringLiteral("größe $x; \"y\" 轴.STP"), true);
    EXPECT_TRUE(output.startsWith(QString::fromUtf8("/ausgabe Ü/größe $x; \"y\" 轴-"))) << output.toStdString();
    EXPECT_TRUE(output.endsWith(QStringLiteral(".osb")));
    EXPECT_EQ(words,
              QStringList({QStringLiteral("/opt/my \"own\" converter"), QStringLiteral("--external-parts"),
                           QStringLiteral("--set"), QStringLiteral("mesh.deviation=0.5"), QStringLiteral("--set"),
                           QStringLiteral("mesh.angle=9"), path(QString::fromUtf8("größe $x; \"y\" 轴.STP")), output}));
}

TEST_F(znPtxHelperTest, TheConverterIsGivenTheLevelOfDetailThatIsNotTheFinest)
{
    EXPECT_FALSE(command(QStringLiteral("a.jt"), false).first.join(QLatin1Char(' ')).contains(QLatin1String("mesh")));
    set("mesh.level", QStringLiteral("2"));
    set("converter.options", QStringLiteral("mesh.level=1"));
    EXPECT_EQ(command(QStringLiteral("a.jt"), false).first.mid(1, 4),
              QStringList({QStringLiteral("--set"), QStringLiteral("mesh.level=2"), QStringLiteral("--set"),
                           QStringLiteral("mesh.level=1")}));
}

TEST_F(znPtxHelperTest, TheConverterIsToldWhenAnnotationsAreNotWanted)
{
    EXPECT_FALSE(command(QStringLiteral("a.stp"), false).first.contains(QLatin1String("convert.pmi=1")));
    set("convert.pmi", QStringLiteral("off"));
    set("converter.options", QStringLiteral("convert.pmi=1"));
    EXPECT_EQ(command(QStringLiteral("a.stp"), false).first.mid(1, 4),
              QStringList({QStringLiteral("--set"), QStringLiteral("convert.pmi=0"), QStringLiteral("--set"),
                           QStringLiteral("convert.pmi=1")}));
}

TEST_F(znPtxHelperTest, TheConverterIsToldWhenAutomaticViewsAreWanted)
{
    EXPECT_FALSE(command(QStringLiteral("a.stp"), false).first.join(QLatin1Char(' ')).contains(QLatin1String("views")));
    set("convert.automatic-views", QStringLiteral("on"));
    set("converter.options", QStringLiteral("convert.automatic-views=0"));
    EXPECT_EQ(command(QStringLiteral("a.stp"), false).first.mid(1, 4),
              QStringList({QStringLiteral("--set"), QStringLiteral("convert.automatic-views=1"),
                           QStringLiteral("--set"), QStringLiteral("convert.automatic-views=0")}));
}

TEST_F(znPtxHelperTest, TheConverterIsToldWhenTextureCoordinatesOfSurfacesAreWanted)
{
    EXPECT_FALSE(
        command(QStringLiteral("a.stp"), false).first.join(QLatin1Char(' ')).contains(QLatin1String("convert.uv")));
    set("convert.uv", QStringLiteral("surface"));
    EXPECT_EQ(command(QStringLiteral("a.stp"), false).first.mid(1, 2),
              QStringList({QStringLiteral("--set"), QStringLiteral("convert.uv=1")}));
}

/// Whichever starts last of those that run one at a time has nobody beside it.
TEST_F(znPtxHelperTest, AConverterBesideOthersIsGivenOneCore)
{
    set("processes.most", QStringLiteral("1"));
    set("converter.options", QStringLiteral("mesh.angle=9"));
    znJobQueue queue;
    QSignalSpy empty(&queue, &znJobQueue::jobQueueEmpty);
    QObject jobs;
    QList<QStringList> settings;
    for (int k = 0; k < 2; ++k) {
        auto* const job = new znProcessJob(QStringLiteral("true"), &jobs);
        QObject::connect(job, &znAbstractJob::starting,
                         [&] { settings.append(command(QStringLiteral("a.stp"), false).first.mid(1, 4)); });
        queue.addJob(job);
    }
    queue.startProcessing();
    ASSERT_TRUE(!empty.isEmpty() || empty.wait(60000));
    ASSERT_EQ(settings.size(), 2);
    EXPECT_EQ(settings[0], QStringList({QStringLiteral("--set"), QStringLiteral("threads=1"), QStringLiteral("--set"),
                                        QStringLiteral("mesh.angle=9")}));
    EXPECT_EQ(settings[1].mid(0, 2), QStringList({QStringLiteral("--set"), QStringLiteral("mesh.angle=9")}));
}

TEST_F(znPtxHelperTest, FilesOfOneNameFromTwoFoldersDoNotMeet)
{
    const std::string one = znPtxHelper::createProcessCommand("/a/part.stp", false, "/out").second;
    const std::string two = znPtxHelper::createProcessCommand("/b/part.stp", false, "/out").second;
    EXPECT_NE(one, two);
    EXPECT_EQ(one, znPtxHelper::createProcessCommand("/a/part.stp", true, "/out").second);
}

TEST_F(znPtxHelperTest, AFormatMayHaveAConverterOfItsOwn)
{
    set("converter.program", QStringLiteral("/opt/common"));
    set("converter.options", QStringLiteral("mesh.angle=9"));
    set("converter.Step.program", QStringLiteral("/opt/step converter"));
    const auto [words, output] = command(QStringLiteral("a.stp"), true);
    EXPECT_EQ(words, QStringList({QStringLiteral("/opt/step converter"), QStringLiteral("--external-parts"),
                                  path(QStringLiteral("a.stp")), output}));
    EXPECT_EQ(command(QStringLiteral("a.stp"), false).first,
              QStringList({QStringLiteral("/opt/step converter"), path(QStringLiteral("a.stp")), output}));
    EXPECT_EQ(command(QStringLiteral("a.igs"), false).first.first(), QStringLiteral("/opt/common"));
}

TEST_F(znPtxHelperTest, TheArgumentsOfAnotherConverterFollowItsTemplate)
{
    set("converter.Step.program", QStringLiteral("/opt/other"));
    set("converter.Step.arguments",
        QStringLiteral("-q \"two words\" {external:--tree} {inlined:--flat} --to={output} {unknown} {input}"));
    const QString input = path(QStringLiteral("{output}.stp"));
    const auto [words, output] = command(QStringLiteral("{output}.stp"), false);
    EXPECT_EQ(words, QStringList({QStringLiteral("/opt/other"), QStringLiteral("-q"), QStringLiteral("two words"),
                                  QStringLiteral("--flat"), QStringLiteral("--to=") + output,
                                  QStringLiteral("{unknown}"), input}));
    EXPECT_EQ(command(QStringLiteral("{output}.stp"), true).first.at(3), QStringLiteral("--tree"));
}

TEST_F(znPtxHelperTest, TheUpdateToolIsGivenOldAndNewFile)
{
    set("converter.updateProgram", QStringLiteral("/opt/update tool"));
    std::string converted;
    const std::string plain = znPtxHelper::createStylarConvertCommand("/cars/alt ä.styl", converted, "/out");
    const QString output = QString::fromStdString(converted);
    EXPECT_TRUE(output.startsWith(QString::fromUtf8("/out/alt ä-"))) << converted;
    EXPECT_TRUE(output.endsWith(QStringLiteral("-updated.styl"))) << converted;
    EXPECT_EQ(QProcess::splitCommand(QString::fromStdString(plain)),
              QStringList({QStringLiteral("/opt/update tool"), QString::fromUtf8("/cars/alt ä.styl"), output}));

    set("converter.updateArguments", QStringLiteral("--into {output} --from {input}"));
    const std::string turned = znPtxHelper::createStylarConvertCommand("/cars/alt ä.styl", converted, "/out");
    EXPECT_EQ(
        QProcess::splitCommand(QString::fromStdString(turned)),
        QStringList({QStringLiteral("/opt/update tool"), QStringLiteral("--into"), QString::fromStdString(converted),
                     QStringLiteral("--from"), QString::fromUtf8("/cars/alt ä.styl")}));
}

TEST_F(znPtxHelperTest, WithoutAnUpdateToolThereIsNoCommandAndNoFile)
{
    std::string converted;
    EXPECT_EQ(znPtxHelper::createStylarConvertCommand("/cars/old.styl", converted, "/out"), "");
    EXPECT_EQ(converted, "");
}

TEST_F(znPtxHelperTest, ExitCodesAreTold)
{
    const std::string noLog = path(QStringLiteral("none.log")).toStdString();
    const auto told = [&](int code) { return znPtxHelper::getProcessErrorDescription(code, noLog).toStdString(); };
    EXPECT_EQ(told(6), "The converter has no reader for this format.");
    EXPECT_EQ(told(21), "The conversion was cancelled.");
    EXPECT_EQ(told(25), "There is nothing to import in the file.");
    EXPECT_EQ(told(77), "The converter ended with the exit code 77.");
    EXPECT_EQ(told(128 + 11), "The converter crashed (signal 11).");
    EXPECT_EQ(told(128 + 15), "The converter was asked to stop.");
}

TEST_F(znPtxHelperTest, TheLastErrorOfTheLogIsTheReasonAndTheLogIsNamed)
{
    const QString log =
        write(QStringLiteral("größe.log"), "Error: first\nNote: more\n  Error: no shape in #12 ä\nend\n");
    EXPECT_EQ(znPtxHelper::getProcessErrorDescription(25, log.toStdString()).toStdString(),
              "There is nothing to import in the file. no shape in #12 ä [log: " + log.toStdString() + "]");
}

TEST_F(znPtxHelperTest, ATreeIsConvertedUntilTheMarkIsTakenAway)
{
    const osg::NodePtr tree = addGroup(m_session.sceneRoot(), "tree");
    EXPECT_FALSE(znPtxHelper::isConvertedPtxTree(tree));
    EXPECT_FALSE(znPtxHelper::isConvertedPtxTree({}));
    osg::setTags(tree, {"ptx::format=STEP", "ptx::converted", "mine"});
    EXPECT_TRUE(znPtxHelper::isConvertedPtxTree(tree));
    znPtxHelper::removePtxTag(tree);
    EXPECT_FALSE(znPtxHelper::isConvertedPtxTree(tree));
    EXPECT_THAT(osg::tagsOf(tree), testing::ElementsAre("ptx::format=STEP", "mine"));
    znPtxHelper::removePtxTag(tree);
    znPtxHelper::removePtxTag({});
    EXPECT_EQ(osg::tagsOf(tree).size(), 2u);
}

} // namespace
