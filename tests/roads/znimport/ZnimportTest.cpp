#include "files/scenefile/SceneFile.h"
#include "scene/VariantTable.h"
#include "tests/gltf-validator/GltfValidator.h"
#include "tests/support/BookmarkScene.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

#include <csignal>

namespace
{

const char* const plateObj = "mtllib plate.mtl\no Plate\nusemtl Steel\n"
                             "v 0 0 0\nv 10 0 0\nv 10 5 0\nv 0 5 0\n"
                             "f 1 2 3 4\n";
const char* const plateMtl = "newmtl Steel\nKd 0.5 0.25 0.75\n";

struct Ending {
    int exitCode = -1;
    QString output;
    QString errors;
};

class ZnimportTest : public testing::Test
{
protected:
    QString path(const QString& name) const { return folder.filePath(name); }

    QString write(const QString& name, const QByteArray& content) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }

    QString plate() const
    {
        write(QStringLiteral("plate.mtl"), plateMtl);
        return write(QStringLiteral("plate.obj"), plateObj);
    }

    static Ending znimport(const QStringList& arguments,
                           const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment())
    {
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(QString::fromUtf8(ZNIMPORT), arguments);
        EXPECT_TRUE(process.waitForFinished(60000));
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                QString::fromUtf8(process.readAllStandardOutput()), QString::fromUtf8(process.readAllStandardError())};
    }

    static QString example(const char* name)
    {
        return QString::fromUtf8(EXAMPLE_MODELS) + QLatin1Char('/') + QString::fromUtf8(name);
    }

    static void expectValidGlb(const QString& file)
    {
        if (gltfvalidator::isInstalled()) {
            EXPECT_EQ(gltfvalidator::validate(file), gltfvalidator::Verdict());
        }
    }

    QTemporaryDir folder{QDir::tempPath() + QStringLiteral("/znimport äö XXXXXX")};
};

/// A scene of the parts "body" and "roof" with the set "Open Roof" of the group "Exterior", which hides the roof, and
/// the set "Plain".
bool writeSceneWithVariants(const QString& file)
{
    const osg::RefPtr<osg::NodePtr> root(osg::Node::create());
    for (const char* name : {"body", "roof"}) {
        const auto mesh = bookmarkscene::box({0, 0, 0}, {10, 10, 10});
        root->addChild(bookmarkscene::part(name, mesh, bookmarkscene::paint(name, {1, 0, 0})));
    }
    osg::VariantTable table;
    table.groups = {"Exterior"};
    table.sets = {{"Open Roof", "Exterior", "", {}, {}, {{{1}, "!Disable"}}}, {"Plain", "", "", {}, {}, {}}};
    root->addAttachment(osg::VariantAttachment::create(table));
    return static_cast<bool>(osg::scenefile::writeSceneFile(root, file));
}

TEST_F(ZnimportTest, VariantSetsAreListedAndAppliedAndStayInTheOutput)
{
    const QString scene = path(QStringLiteral("car.osb"));
    const QString saved = path(QStringLiteral("saved.osb"));
    ASSERT_TRUE(writeSceneWithVariants(scene));
    const Ending ending = znimport({scene, QStringLiteral("--variants"), QStringLiteral("--variant"),
                                    QStringLiteral("Open Roof"), QStringLiteral("-o"), saved});
    EXPECT_EQ(ending.exitCode, 0) << ending.errors.toStdString();
    EXPECT_EQ(ending.output, QStringLiteral("Open Roof [Exterior]\nPlain\n"));
    const files::Result<osg::NodePtr> read = osg::scenefile::readSceneFile(saved);
    ASSERT_TRUE(read);
    const osg::RefPtr<osg::NodePtr> root(read.value());
    ASSERT_TRUE(osg::VariantAttachment::of(root));
    EXPECT_EQ(osg::VariantAttachment::of(root)->table().sets[0].name, "Open Roof");
    const osg::NodePtr car = root->getChild(0);
    EXPECT_TRUE(car->getChild(0)->isActive());
    EXPECT_FALSE(car->getChild(1)->isActive());
}

TEST_F(ZnimportTest, AnUnknownVariantSetIsAFailureThatNamesTheKnownOnes)
{
    const QString scene = path(QStringLiteral("car.osb"));
    ASSERT_TRUE(writeSceneWithVariants(scene));
    const Ending ending = znimport({scene, QStringLiteral("--variant"), QStringLiteral("open roof")});
    EXPECT_EQ(ending.exitCode, 1);
    EXPECT_TRUE(ending.errors.endsWith(
        QStringLiteral("\nznimport: there is no variant set 'open roof'; the scene has 'Open Roof', 'Plain'\n")))
        << ending.errors.toStdString();
    const Ending none = znimport({plate(), QStringLiteral("--variant"), QStringLiteral("x")});
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_TRUE(none.errors.endsWith(QStringLiteral("\nznimport: there is no variant set 'x'; the scene has none\n")))
        << none.errors.toStdString();
}

TEST_F(ZnimportTest, HelpAndVersionEndWell)
{
    const Ending help = znimport({QStringLiteral("--help")});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_TRUE(help.output.contains(QStringLiteral("Usage: znimport")));
    const Ending version = znimport({QStringLiteral("--version")});
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_EQ(version.output, QStringLiteral("znimport " ZN_VERSION "\n"));
}

// The converter stays in its stage until the test has seen it: a real one may be through between two looks.
TEST_F(ZnimportTest, ProgressSpeaksTheLanguageOfTheUser)
{
    QByteArray script;
    for (int tries = 0; tries < 600; ++tries)
        script += "progress \"50 Tessellate\"\nwait 50\n";
    QProcessEnvironment german = QProcessEnvironment::systemEnvironment();
    german.insert(QStringLiteral("LANGUAGE"), QStringLiteral("de_DE"));
    german.insert(QStringLiteral("LC_ALL"), QStringLiteral("de_DE.UTF-8"));
    QProcess process;
    process.setProcessEnvironment(german);
    process.start(QString::fromUtf8(ZNIMPORT),
                  {write(QStringLiteral("part.stp"), script), QStringLiteral("--set"),
                   QStringLiteral("converter.program=") + QString::fromUtf8(ZN_SCRIPTED_CHILD)});
    process.setReadChannel(QProcess::StandardError);
    QString errors;
    while (!errors.contains(QRegularExpression(QStringLiteral("Tessell.*\n"))) && process.waitForReadyRead(30000))
        errors += QString::fromUtf8(process.readAllStandardError());
    kill(static_cast<pid_t>(process.processId()), SIGINT);
    ASSERT_TRUE(process.waitForFinished(30000));
    EXPECT_TRUE(errors.contains(QStringLiteral("Tessellieren"))) << errors.toStdString();
    EXPECT_FALSE(errors.contains(QStringLiteral("Tessellating"))) << errors.toStdString();
}

TEST_F(ZnimportTest, SettingsAreListedWithRangesAndDefaults)
{
    const Ending run = znimport({QStringLiteral("--help-settings")});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(run.output.contains(QStringLiteral("processes.most\n"))) << run.output.toStdString();
    EXPECT_TRUE(run.output.contains(QStringLiteral("a whole number from 0 to 1024; default: 0")));
}

TEST_F(ZnimportTest, WrongUseEndsWithTwoAndASentence)
{
    EXPECT_EQ(znimport({}).exitCode, 2);
    const Ending run = znimport({plate(), QStringLiteral("--set"), QStringLiteral("mesh.unit=wide")});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_TRUE(run.errors.contains(QStringLiteral("mesh.unit"))) << run.errors.toStdString();
    EXPECT_EQ(znimport({plate(), QStringLiteral("-o"), path(QStringLiteral("a.fbx"))}).exitCode, 2);
}

TEST_F(ZnimportTest, AnObjFileBecomesATreeAndAValidGlb)
{
    const QString glb = path(QStringLiteral("plate.glb"));
    const Ending run = znimport({plate(), QStringLiteral("--tree"), QStringLiteral("-o"), glb});
    EXPECT_EQ(run.exitCode, 0) << run.errors.toStdString();
    EXPECT_EQ(run.output, QStringLiteral("Scene [Group]\n"
                                         "  plate [Group]\n"
                                         "    Plate [Geometry], 2 triangles, material 'Steel'\n"));
    EXPECT_TRUE(run.errors.contains(QStringLiteral("plate.obj: Loading\n")));
    expectValidGlb(glb);
}

TEST_F(ZnimportTest, AMissingFileEndsWithOneAndNamesFileAndCause)
{
    const QString file = path(QStringLiteral("fehlt.obj"));
    const QString glb = path(QStringLiteral("out.glb"));
    const Ending run = znimport({file, QStringLiteral("-o"), glb});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.errors.contains(file + QStringLiteral(": the file does not exist")));
    EXPECT_FALSE(QFile::exists(glb));
}

TEST_F(ZnimportTest, OneOfTwoFilesIsAPartialImport)
{
    const Ending run = znimport({path(QStringLiteral("fehlt.obj")), plate(), QStringLiteral("--tree")});
    EXPECT_EQ(run.exitCode, 3);
    EXPECT_TRUE(run.output.contains(QStringLiteral("Plate [Geometry]")));
}

TEST_F(ZnimportTest, FoldersThatAreNotThereAreToldBeforeAnyWork)
{
    const QString input = path(QStringLiteral("not even this file.stp"));
    const QString none = path(QStringLiteral("none"));
    const std::pair<const char*, const char*> outputs[] = {
        {"-o", "/out.glb"}, {"--snapshot", "/out.png"}, {"--report", "/out.json"}, {"--bom", "/out.csv"}};
    for (const auto& [option, name] : outputs) {
        const QString output = none + QString::fromUtf8(name);
        const Ending run = znimport({input, QString::fromUtf8(option), output});
        EXPECT_EQ(run.exitCode, 1) << option;
        EXPECT_EQ(run.errors,
                  QStringLiteral("znimport: %1 cannot be written: there is no folder %2\n").arg(output, none))
            << option;
    }
    const Ending setting = znimport({input, QStringLiteral("--set"), QStringLiteral("files.temporaryFolder=") + none});
    EXPECT_EQ(setting.exitCode, 2);
    EXPECT_TRUE(setting.errors.contains(none + QStringLiteral(" is no folder that takes files")));
}

TEST_F(ZnimportTest, AFolderForTemporaryFilesThatIsNotThereIsASentence)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TMPDIR"), path(QStringLiteral("none")));
    const Ending run = znimport({plate()}, environment);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.errors.startsWith(QStringLiteral("znimport: the folder for temporary files, ") +
                                      path(QStringLiteral("none"))))
        << run.errors.toStdString();
}

TEST_F(ZnimportTest, AFolderThatCannotBeWrittenEndsWithOne)
{
    const Ending run = znimport({plate(), QStringLiteral("-o"), path(QStringLiteral("no/such/folder/out.glb"))});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.errors.contains(QStringLiteral("out.glb"))) << run.errors.toStdString();
}

TEST_F(ZnimportTest, AStepAssemblyBecomesAGlbASceneFileAndAPicture)
{
    const QString glb = path(QStringLiteral("flywheel.glb"));
    const QString osb = path(QStringLiteral("flywheel.osb"));
    const QString png = path(QStringLiteral("flywheel.png"));
    const Ending first =
        znimport({example("flywheel.step"), QStringLiteral("--tree"), QStringLiteral("-o"), glb,
                  QStringLiteral("--snapshot"), png, QStringLiteral("--size"), QStringLiteral("320x200")});
    ASSERT_EQ(first.exitCode, 0) << first.errors.toStdString();
    EXPECT_TRUE(first.output.contains(QString::fromUtf8("Lagerböck [Geometry]"))) << first.output.toStdString();
    EXPECT_TRUE(first.output.contains(QStringLiteral("left bearing [Transform3D], at -60 0 12\n")));
    expectValidGlb(glb);
    EXPECT_EQ(QImage(png).size(), QSize(320, 200));

    ASSERT_EQ(znimport({example("flywheel.step"), QStringLiteral("-o"), osb}).exitCode, 0);
    const Ending second = znimport({osb, QStringLiteral("--tree")});
    EXPECT_EQ(second.exitCode, 0) << second.errors.toStdString();
    EXPECT_EQ(second.output.count(QStringLiteral("bolt M10 [Geometry @1], 364 triangles")), 4);
}

TEST_F(ZnimportTest, ACadPathOfAnyLettersArrivesUnchanged)
{
    const QString file = path(QString::fromUtf8("a 'b' \"c\" $d; ü 零件.step"));
    ASSERT_TRUE(QFile::copy(example("flywheel.step"), file));
    const Ending run = znimport(
        {file, QStringLiteral("--tree"), QStringLiteral("--set"), QStringLiteral("optimize.sourceReferences=keep")});
    EXPECT_EQ(run.exitCode, 0) << run.errors.toStdString();
    EXPECT_TRUE(run.output.contains(QStringLiteral("file '") + file + QStringLiteral("'"))) << run.output.toStdString();
}

TEST_F(ZnimportTest, CtrlCEndsTheConverterWritesNothingAndGives130)
{
    const QString pidFile = path(QStringLiteral("pid"));
    const QString file = write(QStringLiteral("part.stp"), "pid \"" + pidFile.toUtf8() + "\"\nwait 60000\n");
    const QString glb = path(QStringLiteral("out.glb"));
    QProcess process;
    process.start(QString::fromUtf8(ZNIMPORT),
                  {file, QStringLiteral("-o"), glb, QStringLiteral("--set"),
                   QStringLiteral("converter.program=") + QString::fromUtf8(ZN_SCRIPTED_CHILD)});
    ASSERT_TRUE(process.waitForStarted());
    for (int tries = 0; tries < 600 && QFile(pidFile).size() == 0; ++tries)
        process.waitForReadyRead(50);
    QFile pid(pidFile);
    ASSERT_TRUE(pid.open(QIODevice::ReadOnly));
    const int child = pid.readAll().trimmed().toInt();
    ASSERT_GT(child, 0);

    ASSERT_EQ(kill(static_cast<pid_t>(process.processId()), SIGINT), 0);
    ASSERT_TRUE(process.waitForFinished(30000));
    EXPECT_EQ(process.exitCode(), 130);
    EXPECT_FALSE(QFile::exists(glb));
    EXPECT_NE(kill(child, 0), 0);
}

TEST_F(ZnimportTest, CtrlCWhileAPictureIsDrawnLeavesATrueReport)
{
    const QString glb = path(QStringLiteral("out.glb"));
    const QString picture = path(QStringLiteral("out.png"));
    const QString report = path(QStringLiteral("report.json"));
    QProcess process;
    process.start(QString::fromUtf8(ZNIMPORT),
                  {plate(), QStringLiteral("-o"), glb, QStringLiteral("--snapshot"), picture, QStringLiteral("--size"),
                   QStringLiteral("12000x5000"), QStringLiteral("--report"), report});
    ASSERT_TRUE(process.waitForStarted());
    for (int tries = 0; tries < 6000 && !QFile::exists(glb); ++tries)
        QThread::msleep(5);
    ASSERT_EQ(kill(static_cast<pid_t>(process.processId()), SIGINT), 0);
    ASSERT_TRUE(process.waitForFinished(60000));
    ASSERT_EQ(process.exitCode(), 130) << process.readAllStandardError().toStdString();
    EXPECT_FALSE(QFile::exists(picture));
    QFile file(report);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QJsonObject told = QJsonDocument::fromJson(file.readAll()).object();
    EXPECT_EQ(told[QStringLiteral("exitCode")].toInt(), 130);
    EXPECT_EQ(told[QStringLiteral("outputs")].toArray().size(), 1) << "the scene was written before";
}

} // namespace
