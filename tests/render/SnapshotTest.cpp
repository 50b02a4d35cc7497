#include "tests/render/RenderTest.h"
#include "tests/support/SmallDisk.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <thread>

namespace render
{

namespace
{

class Snapshot : public RenderTest
{
protected:
    static osg::NodePtr cube() { return nodeOf(box({4, -30, 52}, {14, -20, 62}), material({0.8f, 0.1f, 0.1f})); }

    static SnapshotError errorOf(const osg::NodePtr& root, const SnapshotOptions& options)
    {
        const SnapshotResult result = renderSnapshot(root, options);
        EXPECT_TRUE(result.image.isNull());
        return result.error;
    }

    static void expectBadOption(const SnapshotOptions& options, const char* message)
    {
        const Root root = cube();
        const SnapshotError error = errorOf(root, options);
        EXPECT_EQ(error.fault, SnapshotFault::BadOptions);
        EXPECT_EQ(error.message.toStdString(), message);
    }

    /// Everything that can differ between two runs is at work.
    static SnapshotOptions fullOptions()
    {
        SnapshotOptions options;
        options.width = 230;
        options.height = 150;
        return options;
    }
};

} // namespace

TEST_F(Snapshot, ASceneWithoutRootIsAnErrorWithItsCause)
{
    const SnapshotError error = errorOf(osg::NodePtr(), plainOptions());
    EXPECT_EQ(error.fault, SnapshotFault::NothingToDraw);
    EXPECT_EQ(error.message.toStdString(), "There is nothing to draw: the scene has no root");
}

TEST_F(Snapshot, ASceneWithoutGeometryIsAnErrorWithItsCause)
{
    const Root empty = group({group({}), group({})});
    const osg::NodePtr hidden = cube();
    const Root inactive = group({hidden});
    hidden->setActive(false);
    for (const Root& root : {empty, inactive}) {
        const SnapshotError error = errorOf(root, plainOptions());
        EXPECT_EQ(error.fault, SnapshotFault::NothingToDraw);
        EXPECT_EQ(error.message.toStdString(),
                  "There is nothing to draw: the scene has no active geometry with triangles, lines or points");
    }
}

TEST_F(Snapshot, ASceneThatHasNoPlaceIsAnErrorWithItsCause)
{
    osg::Matrix nowhere;
    nowhere[5] = std::numeric_limits<float>::quiet_NaN();
    const Root root = placed(nowhere, cube());
    EXPECT_EQ(errorOf(root, plainOptions()).message.toStdString(),
              "There is nothing to draw: no geometry has a transform with finite values");
}

TEST_F(Snapshot, OptionsOutOfRangeAreErrorsWithTheirCause)
{
    SnapshotOptions options = plainOptions();
    options.width = 0;
    expectBadOption(options, "A picture of 0x100 pixels is not possible: each side must be from 1 to 16384, and there "
                             "may be 100000000 pixels at most");
    options = plainOptions();
    options.limits.maxPixels = 19999;
    expectBadOption(options,
                    "A picture of 200x100 pixels is not possible: each side must be from 1 to 16384, and there "
                    "may be 19999 pixels at most");
    options = plainOptions();
    options.samples = 17;
    expectBadOption(options, "The samples of a pixel must be from 1 to 16 each way");
    options = plainOptions();
    options.ambientSamples = -1;
    expectBadOption(options, "The ambient samples of a pixel must be from 0 to 4096");
    options = plainOptions();
    options.margin = 0.5f;
    expectBadOption(options, "The margin must be from 0 to below 0.5");
    options = plainOptions();
    options.threads = -2;
    expectBadOption(options, "The number of threads must not be negative");
}

TEST_F(Snapshot, MoreGeometriesThanTheLimitAreAnError)
{
    SnapshotOptions options = plainOptions();
    options.limits.maxParts = 2;
    const Root root = group({cube(), cube(), cube()});
    EXPECT_EQ(errorOf(root, options).message.toStdString(), "The scene has more than 2 geometries to draw");
}

TEST_F(Snapshot, TheSmallestPictureHasOnePixel)
{
    SnapshotOptions options = fullOptions();
    options.width = 1;
    options.height = 1;
    const Root root = cube();
    EXPECT_EQ(draw(root, options).size(), QSize(1, 1));
}

TEST_F(Snapshot, TheBackdropIsAGradientOfItsTwoColors)
{
    SnapshotOptions options = plainOptions();
    options.backdrop = {{0.2f, 0.4f, 0.6f}, {0.6f, 0.4f, 0}, false};
    const Root root = cube();
    const QImage image = draw(root, options);
    EXPECT_EQ(image.pixel(0, 0), qRgb(52, 102, 152));
    EXPECT_EQ(image.pixel(199, 49), qRgb(101, 102, 77));
    EXPECT_EQ(image.pixel(0, 99), qRgb(152, 102, 1));
}

TEST_F(Snapshot, PicturesOfOneSceneAreEqualForAnyNumberOfThreads)
{
    SnapshotOptions options = fullOptions();
    options.threads = 1;
    const Root root = group({cube(), placed(osg::translationMatrix({3, 4, 5}), cube()),
                             nodeOf(wall(-40, 6), material({0.2f, 0.3f, 0.9f}, 0.4f))});
    const QImage first = draw(root, options);
    EXPECT_EQ(draw(root, options), first);
    options.threads = 3;
    EXPECT_EQ(draw(root, options), first);
}

TEST_F(Snapshot, ProgressRisesFromNothingToAllOnTheCallingThread)
{
    SnapshotOptions options = fullOptions();
    options.threads = 2;
    std::vector<double> reports;
    bool isElsewhere = false;
    const std::thread::id here = std::this_thread::get_id();
    options.progress = [&](double done) {
        reports.push_back(done);
        isElsewhere = isElsewhere || std::this_thread::get_id() != here;
    };
    const Root root = cube();
    draw(root, options);
    ASSERT_GE(reports.size(), 3u);
    EXPECT_EQ(reports.front(), 0);
    EXPECT_EQ(reports.back(), 1);
    EXPECT_TRUE(std::is_sorted(reports.begin(), reports.end()));
    EXPECT_FALSE(isElsewhere);
}

TEST_F(Snapshot, ACancelBeforehandDrawsNothing)
{
    SnapshotOptions options = fullOptions();
    const std::atomic<bool> cancel = true;
    options.cancel = &cancel;
    const Root root = cube();
    const SnapshotError error = errorOf(root, options);
    EXPECT_EQ(error.fault, SnapshotFault::Cancelled);
    EXPECT_EQ(error.message.toStdString(), "The picture was cancelled");
}

TEST_F(Snapshot, ACancelHalfWayEndsThePicture)
{
    SnapshotOptions options = fullOptions();
    options.threads = 1;
    std::atomic<bool> cancel = false;
    options.cancel = &cancel;
    int after = 0;
    options.progress = [&](double done) {
        after += cancel ? 1 : 0;
        cancel = done > 0.5;
    };
    const Root root = cube();
    EXPECT_EQ(errorOf(root, options).fault, SnapshotFault::Cancelled);
    EXPECT_TRUE(cancel);
    EXPECT_EQ(after, 0);
}

TEST_F(Snapshot, APictureIsWrittenAsPng)
{
    const QTemporaryDir folder(QDir::tempPath() + QString::fromUtf8("/Bild mit Ümläut XXXXXX"));
    const QString path = folder.filePath(QString::fromUtf8("größe 图.png"));
    const Root root = cube();
    EXPECT_FALSE(writeSnapshot(root, path, plainOptions()));
    const QImage written(path, "PNG");
    EXPECT_EQ(written.size(), QSize(200, 100));
    EXPECT_EQ(written.convertToFormat(QImage::Format_RGB32), draw(root, plainOptions()));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST_F(Snapshot, AFolderThatIsMissingIsAnErrorWithFileAndCause)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("missing/picture.png"));
    const Root root = cube();
    const SnapshotError error = writeSnapshot(root, path, plainOptions());
    EXPECT_EQ(error.fault, SnapshotFault::NotWritten);
    EXPECT_EQ(error.file, path);
    EXPECT_EQ(error.message.toStdString(),
              "The picture \"" + path.toStdString() + "\" could not be written: No such file or directory");
}

TEST_F(Snapshot, AFullDiskLeavesTheFormerPictureAndNothingElse)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("picture.png"));
    const Root root = cube();
    ASSERT_FALSE(writeSnapshot(root, path, plainOptions()));
    QFile former(path);
    ASSERT_TRUE(former.open(QIODevice::ReadOnly));
    const QByteArray before = former.readAll();
    {
        const SmallDisk disk(static_cast<rlim_t>(before.size() / 2));
        const SnapshotError error = writeSnapshot(root, path, plainOptions());
        EXPECT_EQ(error.fault, SnapshotFault::NotWritten);
        EXPECT_EQ(error.message.toStdString(),
                  "The picture \"" + path.toStdString() + "\" could not be written: File too large");
    }
    former.seek(0);
    EXPECT_EQ(former.readAll(), before);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST_F(Snapshot, AFormerPictureSurvivesAFailure)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("picture.png"));
    QFile former(path);
    ASSERT_TRUE(former.open(QIODevice::WriteOnly) && former.write("former") == 6);
    former.close();
    const Root root = group({});
    const SnapshotError error = writeSnapshot(root, path, plainOptions());
    EXPECT_EQ(error.fault, SnapshotFault::NothingToDraw);
    EXPECT_EQ(error.file, path);
    ASSERT_TRUE(former.open(QIODevice::ReadOnly));
    EXPECT_EQ(former.readAll(), QByteArray("former"));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

} // namespace render
