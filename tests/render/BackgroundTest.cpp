#include "render/Background.h"
#include "tests/render/StudioTest.h"

namespace render
{

namespace
{

class Background : public StudioTest
{
protected:
    static Backdrop backdropOf(const QString& text)
    {
        const BackgroundChoice choice = backgroundFromText(text);
        EXPECT_TRUE(choice.backdrop) << choice.error.toStdString();
        return choice.backdrop.value_or(Backdrop());
    }

    /// Without a shadow, as all other pictures here are.
    static SnapshotOptions optionsWith(const QString& text)
    {
        SnapshotOptions options = plainOptions();
        options.backdrop = backdropOf(text);
        return options;
    }

    static Root redWall() { return nodeOf(wall(0, 10), material({1, 0, 0})); }
};

} // namespace

TEST_F(Background, IsAColorByNumberOrName)
{
    const Root root = redWall();
    expectColor(draw(root, optionsWith(QStringLiteral("#204060"))).pixel(2, 2), 0x20, 0x40, 0x60, 1);
    expectColor(draw(root, optionsWith(QStringLiteral("SteelBlue"))).pixel(2, 97), 70, 130, 180, 1);
    EXPECT_EQ(draw(root, optionsWith(QStringLiteral("white"))).format(), QImage::Format_RGB32);
}

TEST_F(Background, OtherTextsAreRefused)
{
    for (const char* text : {"", "#12", "#1234", "#12345678", "no colour", "nowhere/picture.png"}) {
        const BackgroundChoice choice = backgroundFromText(QLatin1String(text));
        EXPECT_FALSE(choice.backdrop) << text;
        EXPECT_TRUE(choice.error.contains(QLatin1String(text)));
        EXPECT_TRUE(choice.error.contains(QStringLiteral("transparent")));
    }
}

TEST_F(Background, TransparentPicturesSayWhatIsCovered)
{
    for (const SnapshotLook look : {SnapshotLook::Plain, SnapshotLook::Studio}) {
        SnapshotOptions options = optionsWith(QStringLiteral("Transparent"));
        options.look = look;
        const QImage image = draw(Root(redWall()), options);
        EXPECT_EQ(image.format(), QImage::Format_ARGB32);
        EXPECT_EQ(image.pixel(2, 2), 0u);
        EXPECT_EQ(qAlpha(image.pixel(100, 50)), 255);
        EXPECT_GT(qRed(image.pixel(100, 50)), 180);
    }
}

TEST_F(Background, BordersAndClearThingsAreHalfThere)
{
    const Root root = nodeOf(wall(0, 10), material({1, 0, 0}, 0.5f));
    const QRgb pixel = draw(root, optionsWith(QStringLiteral("transparent"))).pixel(100, 50);
    EXPECT_NEAR(qAlpha(pixel), 128, 1);
    const Root red = redWall();
    const QRgb whole = draw(red, optionsWith(QStringLiteral("transparent"))).pixel(100, 50);
    EXPECT_NEAR(qRed(pixel), qRed(whole), 2) << "colours are not mixed with what is not there";
    const Root round = nodeOf(ball(10), material({1, 0, 0}));
    EXPECT_GT(count(draw(round, optionsWith(QStringLiteral("transparent"))),
                    [](QRgb p) { return qAlpha(p) > 20 && qAlpha(p) < 235; }),
              50);
}

TEST_F(Background, TheShadowOfTheModelIsDarkAndClear)
{
    SnapshotOptions options = optionsWith(QStringLiteral("transparent"));
    options.view = View::Iso;
    options.ambientSamples = 18;
    const Root root = nodeOf(box({0, 0, 0}, {10, 10, 10}), material({1, 1, 1}));
    const QImage image = draw(root, options);
    EXPECT_GT(count(image, [](QRgb p) { return qAlpha(p) > 10 && qAlpha(p) < 240 && qGray(p) < 5; }), 100);
    options.backdrop.contactShadow = false;
    const QImage without = draw(root, options);
    EXPECT_EQ(count(without, [](QRgb p) { return qAlpha(p) > 10 && qAlpha(p) < 240 && qGray(p) < 5; }), 0);
}

TEST_F(Background, LinesAreCoveredToo)
{
    SnapshotOptions options = optionsWith(QStringLiteral("transparent"));
    options.featureLines = true;
    const QImage image = draw(Root(redWall()), options);
    const int edge = qAlpha(image.pixel(60, 50)), outside = qAlpha(image.pixel(59, 50));
    EXPECT_GT(edge, 200);
    EXPECT_GT(outside, 0) << "half of the line lies beside the wall";
}

TEST_F(Background, APictureIsScaledToCover)
{
    // Three columns, of which the outer ones do not fit beside a picture twice as wide as high.
    QImage columns(40, 10, QImage::Format_RGB32);
    for (int x = 0; x < 40; ++x)
        for (int y = 0; y < 10; ++y)
            columns.setPixel(x, y, x < 10 || x >= 30 ? qRgb(255, 255, 0) : y < 5 ? qRgb(0, 255, 0) : qRgb(0, 0, 255));
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("back.png"));
    ASSERT_TRUE(columns.save(file));
    const QImage image = draw(Root(redWall()), optionsWith(file));
    expectColor(image.pixel(5, 5), 0, 255, 0, 2);
    expectColor(image.pixel(195, 95), 0, 0, 255, 2);
    EXPECT_EQ(count(image, [](QRgb p) { return qRed(p) > 200 && qGreen(p) > 200; }), 0);
    EXPECT_GT(qRed(image.pixel(100, 50)), 180);
}

TEST_F(Background, PicturesThatCannotBeReadAreRefused)
{
    const QTemporaryDir folder;
    const QString damaged = folder.filePath(QStringLiteral("damaged.png"));
    QFile file(damaged);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no picture");
    file.close();
    const BackgroundChoice choice = backgroundFromText(damaged);
    EXPECT_FALSE(choice.backdrop);
    EXPECT_TRUE(choice.error.contains(damaged));
    const QString large = folder.filePath(QStringLiteral("large.png"));
    ASSERT_TRUE(QImage(20, 20, QImage::Format_RGB32).save(large));
    EXPECT_FALSE(backgroundFromText(large, 399).backdrop);
    EXPECT_TRUE(backgroundFromText(large, 399).error.contains(QStringLiteral("20x20")));
    EXPECT_TRUE(backgroundFromText(large, 400).backdrop);
}

} // namespace render
