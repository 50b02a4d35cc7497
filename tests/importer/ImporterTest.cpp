#include "importer/Importer.h"

#include "geometry/NormalRepair.h"
#include "host/OSGSystem/Names.h"
#include "importer/SceneText.h"
#include "standalone/startup/StandaloneSession.h"
#include "tests/support/LoadRecorder.h"

#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

namespace
{

const char* const plateObj = "o Plate\n"
                             "v 0 0 0\nv 10 0 0\nv 10 5 0\nv 0 5 0\n"
                             "f 1 2 3 4\n";

class ImporterTest : public testing::Test
{
protected:
    QString write(const QString& name, const QByteArray& content)
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }

    /// Imports and waits for the end.
    zn::ImportResult import(const QString& file)
    {
        QEventLoop loop;
        zn::ImportResult result;
        const auto connection = QObject::connect(&importer, &zn::Importer::finished, [&](const zn::ImportResult& end) {
            result = end;
            loop.quit();
        });
        QTimer::singleShot(30000, &loop, &QEventLoop::quit);
        importer.import({file});
        loop.exec();
        QObject::disconnect(connection);
        EXPECT_EQ(result.file, file);
        return result;
    }

    void useScriptedConverter()
    {
        const auto error =
            session.settings().set(QStringLiteral("converter.program"), QString::fromUtf8(ZN_SCRIPTED_CHILD));
        ASSERT_FALSE(error.has_value());
    }

    QTemporaryDir folder{QDir::tempPath() + QStringLiteral("/importer äö XXXXXX")};
    zn::StandaloneSession session;
    zn::Importer importer{session};
};

TEST_F(ImporterTest, ANativeFileLandsInTheSceneUnderItsName)
{
    const zn::ImportResult result = import(write(QStringLiteral("plate Ä.obj"), plateObj));
    EXPECT_EQ(result.state, znCADFileTypes::JobSucceeded);
    EXPECT_EQ(result.error, QString());
    ASSERT_TRUE(result.node);
    EXPECT_TRUE(result.node->getParent() == session.sceneRoot());
    EXPECT_EQ(zn::countScene(session.sceneRoot()).triangles, 2u);
}

TEST_F(ImporterTest, WrongNormalsAreCountedAndMendedOnRequest)
{
    // The first triangle is lit from below, the second in one corner, the third is right.
    const QString file = write(QStringLiteral("lit.obj"), "o Plate\nv 0 0 0\nv 10 0 0\nv 10 5 0\nv 0 5 0\n"
                                                          "vn 0 0 1\nvn 0 0 -1\n"
                                                          "f 1//2 2//2 3//2\nf 1//1 2//2 3//1\nf 1//1 3//1 4//1\n");
    const zn::ImportResult unasked = import(file);
    EXPECT_FALSE(unasked.wrongNormals);
    EXPECT_FALSE(session.settings().set(QStringLiteral("mesh.repairNormals"), QStringLiteral("on")));
    const zn::ImportResult mended = import(file);
    ASSERT_TRUE(mended.wrongNormals);
    EXPECT_EQ(*mended.wrongNormals, (geometry::WrongNormals{2, 1}));
    EXPECT_TRUE(mended.repairedNormals);
    EXPECT_EQ(geometry::wrongNormals(unasked.node.get()), (geometry::WrongNormals{2, 1}));
    EXPECT_EQ(geometry::wrongNormals(mended.node.get()), (geometry::WrongNormals{0, 0}));
}

TEST_F(ImporterTest, AFailureNamesTheFileAndTheCause)
{
    const QString file = folder.filePath(QStringLiteral("nowhere.obj"));
    const zn::ImportResult result = import(file);
    EXPECT_EQ(result.state, znCADFileTypes::JobFailed);
    EXPECT_FALSE(result.node);
    EXPECT_EQ(result.error, file + QStringLiteral(": the file does not exist"));
    EXPECT_EQ(session.sceneRoot()->getNChildren(), 0u);
}

TEST_F(ImporterTest, AnUnknownFormatIsRefusedWithItsFile)
{
    const QString file = write(QStringLiteral("notes.txt"), "hello");
    const zn::ImportResult result = import(file);
    EXPECT_EQ(result.state, znCADFileTypes::JobFailed);
    EXPECT_TRUE(result.error.startsWith(file)) << result.error.toStdString();
}

TEST_F(ImporterTest, FilesImportOneAfterTheOther)
{
    const QString file = write(QStringLiteral("plate.obj"), plateObj);
    import(file);
    import(file);
    EXPECT_EQ(session.sceneRoot()->getNChildren(), 2u);
}

TEST_F(ImporterTest, TheListOfLoadsIsEmptyWhenAnImportHasEnded)
{
    const LoadRecorder loads(session);
    std::size_t listed = 1;
    QObject::connect(&importer, &zn::Importer::finished,
                     [&listed] { listed = znFileIO::getLoadedGeometriesList().size(); });
    ASSERT_TRUE(import(write(QStringLiteral("plate.obj"), plateObj)).node);
    EXPECT_EQ(loads.requests().size(), 1u);
    EXPECT_EQ(listed, 0u);
}

TEST_F(ImporterTest, ASecondImportIsRefusedWhileOneRuns)
{
    const QString file = write(QStringLiteral("plate.obj"), plateObj);
    QSignalSpy ends(&importer, &zn::Importer::finished);
    importer.import({file});
    EXPECT_TRUE(importer.isRunning());
    importer.import({file});
    EXPECT_TRUE(ends.wait(30000));
    EXPECT_FALSE(ends.wait(300));
    EXPECT_EQ(ends.count(), 1);
}

TEST_F(ImporterTest, ACadFileGoesThroughTheConverterAndShowsItsProgress)
{
    // What the child converter "writes" is a scene file that a real import wrote before.
    import(write(QStringLiteral("plate.obj"), plateObj));
    useScriptedConverter();
    const zn::ImportResult failed =
        import(write(QStringLiteral("part.stp"), "log \"Error: the moon is full\"\nexit 7\n"));
    EXPECT_EQ(failed.state, znCADFileTypes::JobFailed);
    EXPECT_TRUE(failed.error.contains(QStringLiteral("part.stp: The file is damaged. the moon is full")))
        << failed.error.toStdString();
    EXPECT_TRUE(failed.error.contains(QStringLiteral(".log]"))) << failed.error.toStdString();
}

TEST_F(ImporterTest, AConverterThatCannotBeStartedIsToldSo)
{
    ASSERT_FALSE(session.settings().set(QStringLiteral("converter.program"), QStringLiteral("/nowhere/converter")));
    const zn::ImportResult result = import(write(QStringLiteral("part.stp"), "exit 0\n"));
    EXPECT_EQ(result.state, znCADFileTypes::JobFailed);
    EXPECT_TRUE(result.error.contains(QStringLiteral("could not be started"))) << result.error.toStdString();
}

TEST_F(ImporterTest, AConverterThatWritesNothingIsAFailure)
{
    useScriptedConverter();
    const zn::ImportResult result = import(write(QStringLiteral("part.stp"), "exit 0\n"));
    EXPECT_EQ(result.state, znCADFileTypes::JobFailed);
    EXPECT_FALSE(result.error.isEmpty());
}

TEST_F(ImporterTest, CancelEndsARunningConversion)
{
    useScriptedConverter();
    // Reports again and again: what comes before the job has seeded the progress file is lost.
    QByteArray script;
    for (int percent = 1; percent <= 200; ++percent)
        script += "wait 100\nprogress \"" + QByteArray::number(percent) + " Tessellate\"\n";
    QString stage;
    QObject::connect(&importer, &zn::Importer::progressChanged, &importer, [&](unsigned percent, const QString& text) {
        if (percent > 0) {
            stage = text;
            importer.cancel();
        }
    });
    const zn::ImportResult result = import(write(QStringLiteral("part.stp"), script));
    EXPECT_EQ(stage, QStringLiteral("Tessellating"));
    EXPECT_TRUE(result.cancelled);
    EXPECT_EQ(result.state, znCADFileTypes::JobFailed);
    EXPECT_FALSE(result.node);
}

TEST_F(ImporterTest, CancelEndsTheReadOfALargeFile)
{
    QByteArray text;
    for (int i = 0; i < 1'000'000; ++i)
        text += "v " + QByteArray::number(i) + " 0 0\nv 0 1 0\nv 0 0 1\nf -1 -2 -3\n";
    QElapsedTimer sinceCancel;
    QTimer::singleShot(500, &importer, [&] {
        importer.cancel();
        sinceCancel.start();
    });
    const zn::ImportResult result = import(write(QStringLiteral("large.obj"), text));
    EXPECT_LT(sinceCancel.elapsed(), 500);
    EXPECT_TRUE(result.cancelled);
    EXPECT_FALSE(result.node);
    EXPECT_EQ(session.sceneRoot()->getNChildren(), 0u);
    EXPECT_EQ(import(write(QStringLiteral("plate.obj"), plateObj)).state, znCADFileTypes::JobSucceeded);
}

TEST_F(ImporterTest, CancelBeforeALoadBeginsEndsIt)
{
    QSignalSpy ends(&importer, &zn::Importer::finished);
    importer.import({write(QStringLiteral("plate.obj"), plateObj)});
    importer.cancel();
    EXPECT_TRUE(ends.wait(30000));
    EXPECT_EQ(session.sceneRoot()->getNChildren(), 0u);
}

} // namespace
