#include "tests/render/StudioTest.h"

namespace render
{

namespace
{

class StudioWarning : public StudioTest
{
protected:
    /// Of a white wall with these bytes for its base colour, whose factor is a grey.
    static SnapshotResult resultFor(std::vector<std::byte> bytes, const SnapshotLimits& limits = {})
    {
        osg::PhysicalSurface surface = dull();
        surface.textures[Slot::BaseColor].image = osg::EncodedImage::share(std::move(bytes), {}, "wood");
        const Root root = nodeOf(pictureWall(), surfaceMaterial(surface, {0.5f, 0.5f, 0.5f}));
        SnapshotOptions options = studioOptions(evenLight());
        options.limits = limits;
        return renderSnapshot(root, options);
    }

    static void expectLeftOut(const SnapshotResult& result, const char* cause)
    {
        ASSERT_FALSE(result.error) << result.error.message.toStdString();
        expectColor(middle(result.image), 128, 128, 128, 2);
        ASSERT_EQ(result.warnings.size(), 1);
        EXPECT_TRUE(result.warnings[0].contains(QStringLiteral("\"wood\""))) << result.warnings[0].toStdString();
        EXPECT_TRUE(result.warnings[0].contains(QLatin1String(cause))) << result.warnings[0].toStdString();
    }

    static std::vector<std::byte> png(int width, int height)
    {
        QImage image(width, height, QImage::Format_ARGB32);
        image.fill(Qt::white);
        return bytesOf(image);
    }

    /// The bytes of a small PNG file whose header says another size.
    static std::vector<std::byte> lying(std::uint32_t width, std::uint32_t height)
    {
        std::vector<std::byte> bytes = png(8, 8);
        for (int i = 0; i < 4; ++i) {
            bytes[std::size_t(16 + i)] = std::byte(width >> (24 - 8 * i));
            bytes[std::size_t(20 + i)] = std::byte(height >> (24 - 8 * i));
        }
        std::uint32_t checksum = 0xFFFFFFFF;
        for (std::size_t i = 12; i < 29; ++i) {
            checksum ^= std::uint32_t(bytes[i]);
            for (int bit = 0; bit < 8; ++bit)
                checksum = checksum & 1 ? checksum >> 1 ^ 0xEDB88320 : checksum >> 1;
        }
        for (int i = 0; i < 4; ++i)
            bytes[std::size_t(29 + i)] = std::byte(~checksum >> (24 - 8 * i));
        return bytes;
    }
};

} // namespace

TEST_F(StudioWarning, ThereIsNoneForATextureThatIsDrawn)
{
    const SnapshotResult result = resultFor(png(8, 8));
    EXPECT_TRUE(result.warnings.isEmpty()) << result.warnings.join(QLatin1Char('\n')).toStdString();
}

TEST_F(StudioWarning, PicturesOfOtherKindsAreToldAndTheFactorStays)
{
    const std::string ktx = "\xabKTX 20\xbb\r\n\x1a\n and more";
    const auto* first = reinterpret_cast<const std::byte*>(ktx.data());
    expectLeftOut(resultFor({first, first + ktx.size()}), "image/ktx2");
    expectLeftOut(resultFor({}), "unknown");
    const std::string svg = "<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'/>";
    first = reinterpret_cast<const std::byte*>(svg.data());
    expectLeftOut(resultFor({first, first + svg.size()}), "unknown");
}

TEST_F(StudioWarning, DamagedPicturesAreTold)
{
    std::vector<std::byte> cut = png(64, 64);
    cut.resize(20);
    expectLeftOut(resultFor(cut), "damaged");
    std::vector<std::byte> half = png(64, 64);
    half.resize(half.size() / 2);
    expectLeftOut(resultFor(half), "damaged");
}

TEST_F(StudioWarning, PicturesThatWouldBeTooLargeAreNotDecoded)
{
    SnapshotLimits limits;
    limits.maxTexturePixels = 63;
    expectLeftOut(resultFor(png(8, 8), limits), "8x8");
    limits.maxTexturePixels = 64;
    EXPECT_TRUE(resultFor(png(8, 8), limits).warnings.isEmpty());
    expectLeftOut(resultFor(lying(60000, 60000)), "60000x60000");
}

TEST_F(StudioWarning, AHeaderThatPromisesMoreThanTheBytesCanHoldIsDamage)
{
    expectLeftOut(resultFor(lying(16000, 16000)), "damaged");
}

TEST_F(StudioWarning, AllTexturesTogetherHaveTheLimit)
{
    osg::PhysicalSurface surface = dull();
    QImage red(8, 8, QImage::Format_ARGB32), blue(8, 8, QImage::Format_ARGB32);
    red.fill(Qt::red);
    blue.fill(Qt::blue);
    surface.textures[Slot::BaseColor] = textureOf(red);
    surface.textures[Slot::Emission] = textureOf(blue);
    surface.textures[Slot::Occlusion] = textureOf(red); // the same image counts once
    const Root root = nodeOf(pictureWall(), surfaceMaterial(surface));
    SnapshotOptions options = studioOptions(evenLight());
    options.limits.maxTexturePixels = 127;
    EXPECT_EQ(renderSnapshot(root, options).warnings.size(), 1);
    options.limits.maxTexturePixels = 128;
    EXPECT_EQ(renderSnapshot(root, options).warnings.size(), 0);
}

TEST_F(StudioWarning, SheenIsToldOnceForAllMaterials)
{
    osg::PhysicalSurface surface = dull();
    surface.sheenColor = {1, 0, 0};
    const Root root =
        group({nodeOf(pictureWall(0), surfaceMaterial(surface)), nodeOf(pictureWall(5), surfaceMaterial(surface))});
    const SnapshotResult result = renderSnapshot(root, studioOptions(evenLight()));
    ASSERT_EQ(result.warnings.size(), 1);
    EXPECT_TRUE(result.warnings[0].contains(QStringLiteral("2"))) << result.warnings[0].toStdString();
}

TEST_F(StudioWarning, PlacesWithoutFiniteValuesAreToldInEveryLook)
{
    osg::Matrix broken;
    broken[12] = std::numeric_limits<float>::infinity();
    const Root root = group({nodeOf(pictureWall(), {}), placed(broken, nodeOf(pictureWall(), {}))});
    EXPECT_EQ(renderSnapshot(root, plainOptions()).warnings.size(), 1);
    QTemporaryDir folder;
    QStringList warnings;
    EXPECT_FALSE(writeSnapshot(root, folder.filePath(QStringLiteral("a.png")), plainOptions(), &warnings));
    EXPECT_EQ(warnings.size(), 1);
}

TEST_F(StudioWarning, AnEnvironmentThatCannotBeReadIsAnErrorWithItsName)
{
    const studio::HdrTestFile cut(studio::hdrHeader(4, 4));
    const Root root = nodeOf(pictureWall(), {});
    SnapshotOptions options = studioOptions(cut);
    const SnapshotResult result = renderSnapshot(root, options);
    EXPECT_EQ(result.error.fault, SnapshotFault::Environment);
    EXPECT_EQ(result.error.file, cut.path());
    EXPECT_TRUE(result.error.message.contains(cut.path())) << result.error.message.toStdString();
    EXPECT_TRUE(environmentComplaint(cut.path()));
    EXPECT_FALSE(environmentComplaint(evenLight().path()));
    options.look = SnapshotLook::Plain;
    EXPECT_FALSE(renderSnapshot(root, options).error) << "the plain look has no environment";
}

TEST_F(StudioWarning, AnEnvironmentBeyondTheLimitIsRefused)
{
    SnapshotOptions options = studioOptions(evenLight());
    options.limits.maxEnvironmentPixels = 127;
    const Root root = nodeOf(pictureWall(), {});
    EXPECT_EQ(renderSnapshot(root, options).error.fault, SnapshotFault::Environment);
}

} // namespace render
